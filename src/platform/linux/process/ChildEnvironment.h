#pragma once

#include <glib.h>

namespace quillbar::platform {

/// What a child starts with: this process's variables without those that are its own.
/// The caller frees it with g_strfreev().
[[nodiscard]] GStrv childEnvironment();

/// Sets a variable for this process alone: children get what it was before. Only before the first
/// thread starts.
void setOwnVariable(char const* name, char const* value);

} // namespace quillbar::platform
