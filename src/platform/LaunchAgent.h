#pragma once

#include "platform/LoginEntry.h"

#include <string>

namespace quillbar::platform {

/// The entry as the text of a launch agent's property list, in the form in which macOS itself
/// writes it.
[[nodiscard]] std::string launchAgentPropertyList(LoginEntry const& entry);

} // namespace quillbar::platform
