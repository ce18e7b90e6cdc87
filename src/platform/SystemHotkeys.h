#pragma once

#include "platform/Token.h"

#include <cstdint>
#include <functional>
#include <string>

namespace quillbar::platform {

/// Tells `onPressed` the id of every registered hotkey that is pressed, once a press however long
/// the keys are held. A later call replaces the handler. Main thread, both ways.
void installHotkeyHandler(std::function<void(std::uint32_t id)> onPressed);

/// Claims a key combination system-wide. `keyCode` is a macOS virtual key code, `modifiers` a mask
/// of the bits in KeyModifiers.h; `signature` and `id` name the registration. Systems that ask the
/// person show `title`, which tells what the hotkey is for; they may decide later, and the token is
/// not empty then. Empty when the combination is taken, has no key on this system, or the system
/// offers no hotkeys; destroying the token frees the combination for others. Main thread.
[[nodiscard]] Token registerSystemHotkey(std::uint32_t keyCode, std::uint32_t modifiers,
    std::uint32_t signature, std::uint32_t id, std::string const& title = {});

} // namespace quillbar::platform
