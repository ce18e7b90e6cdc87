#pragma once

#include <optional>
#include <string>
#include <sys/types.h>
#include <vector>

namespace quillbar::platform {

/// Where a child's output goes.
struct ChildOutput {
    /// Takes the standard output while standard error stays this program's; -1 discards both.
    int descriptor = -1;
};

/// Starts `arguments[0]`, an absolute path, in a session of its own with the default signal mask
/// and handlers, the person's home as working directory and no descriptor but the standard three.
/// Nothing when it could not be started: no such file, no permission, no format the kernel knows.
[[nodiscard]] std::optional<pid_t> spawnChild(
    std::vector<std::string> const& arguments, ChildOutput output);

/// Sets a variable for this process alone: children get what it was before. Only before the first
/// thread starts.
void setOwnVariable(char const* name, char const* value);

} // namespace quillbar::platform
