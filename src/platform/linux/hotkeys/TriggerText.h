#pragma once

#include "platform/SystemHotkeys.h"

#include <QString>

#include <optional>

namespace quillbar::platform {

/// A combination as desktops write it, "CTRL+ALT+t" or "LOGO+F5"; the key by what it types on a US
/// keyboard. Nothing for a key that no keyboard has.
[[nodiscard]] std::optional<QString> triggerText(KeyCombination const& combination);

} // namespace quillbar::platform
