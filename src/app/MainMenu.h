#pragma once

#include "platform/view/Menu.h"

namespace quillbar {

/// The menu that is never shown but gives the windows' text fields their editing keys.
[[nodiscard]] platform::Menu mainMenu();

} // namespace quillbar
