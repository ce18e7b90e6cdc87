#pragma once

#include "platform/view/Window.h"

#include <vector>

namespace quillbar::platform::headless {

/// The visible windows, the front one first.
[[nodiscard]] std::vector<Window*> windows();

/// The window that has the keyboard, or null. A window gets it as soon as it asks.
[[nodiscard]] Window* keyWindow();

/// How often windows were brought forward.
[[nodiscard]] int raiseCount();

/// Whether the program holds the whole keyboard.
[[nodiscard]] bool isKeyboardGrabbed();

/// Forgets the counts; windows that still exist are not shown any more.
void resetWindows();

} // namespace quillbar::platform::headless
