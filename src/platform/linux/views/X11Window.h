#pragma once

#include <QRegion>
#include <QWidget>

namespace quillbar::platform {

/// Whether what is clear in a window lets the screen behind it through: always but under an X
/// server without a compositor.
[[nodiscard]] bool isTranslucencyPossible();

/// Keeps a window that is not shown yet out of task bars and window switchers.
void skipTaskbar(QWidget const& window);

/// Asks the compositor to blur what lies behind that part of the window.
void requestBlur(QWidget const& window, QRegion const& region);

/// Gives the mouse to a window that is shown; false where there is no X server, or while another
/// client holds the mouse.
[[nodiscard]] bool takeMouse(QWidget const& window);

} // namespace quillbar::platform
