#pragma once

#include <QRegion>
#include <QWidget>

#include <cstdint>

namespace quillbar::platform {

/// Whether what is clear in a window lets the screen behind it through: always but under an X
/// server without a compositor.
[[nodiscard]] bool isTranslucencyPossible();

/// Asks the window manager for the keyboard in the name of the person, whose last act was at
/// `userTime`; window managers grant this also to a program that was not in front.
void requestActivation(QWidget const& window, std::uint32_t userTime);

/// Asks the compositor to blur what lies behind that part of the window.
void requestBlur(QWidget const& window, QRegion const& region);

} // namespace quillbar::platform
