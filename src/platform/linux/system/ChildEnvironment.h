#pragma once

#include <vector>

namespace quillbar::platform {

/// Sets a variable for this process alone: children get what it was before. Only before the first
/// thread starts.
void setOwnVariable(char const* name, char const* value);

/// This process's environment without what concerns this process alone, null-terminated. Valid
/// until the environment changes.
[[nodiscard]] std::vector<char*> childEnvironment();

} // namespace quillbar::platform
