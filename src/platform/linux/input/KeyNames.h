#pragma once

#include "platform/HotkeyObstacles.h"

#include <QString>

#include <cstdint>
#include <optional>
#include <string>

namespace quillbar::platform {

/// What people call a key that gives this keysym; empty for no keysym.
[[nodiscard]] std::string nameOfKey(std::uint32_t keysym);

/// What a key gives on a US keyboard without modifiers, as an X keysym; 0 when no keyboard has it.
[[nodiscard]] std::uint32_t usKeysym(std::uint32_t keyCode);

/// A combination as desktops write it, "ALT+CTRL+t" or "LOGO+F5"; the key by what it types on a US
/// keyboard. Nothing for a key that no keyboard has.
[[nodiscard]] std::optional<QString> triggerText(KeyCombination const& combination);

} // namespace quillbar::platform
