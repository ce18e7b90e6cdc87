#pragma once

#include "platform/LoginEntry.h"

#include <string>
#include <string_view>

namespace quillbar::platform {

/// The value of a desktop entry's Exec key that starts exactly this program, without arguments,
/// whatever its path holds. A path with both `%` and `=` cannot be expressed for every reader; only
/// readers that undo `%%` before they look for the program start it.
[[nodiscard]] std::string execValue(std::string_view program);

/// The complete desktop entry. With LoginSwitch::Keep the off-switches in `previous`, the entry as
/// it stands now, go on to hold.
[[nodiscard]] std::string autostartEntry(
    LoginEntry const& entry, LoginSwitch loginSwitch, std::string_view previous);

} // namespace quillbar::platform
