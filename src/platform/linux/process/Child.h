#pragma once

#include <optional>
#include <string>
#include <sys/types.h>
#include <vector>

namespace quillbar::platform {

/// Starts `arguments[0]`, an absolute path, in a session of its own with the default signal mask
/// and handlers, the person's home as working directory and no descriptor but the standard three.
/// `output` takes the standard output, while standard error stays this program's; -1 discards both.
/// Nothing when it could not be started: no such file, no permission, no format the kernel knows.
[[nodiscard]] std::optional<pid_t> spawnChild(
    std::vector<std::string> const& arguments, int output = -1);

struct ChildExit {
    /// Nothing when a signal ended the child or somebody else took its status.
    std::optional<int> status;
};

/// The exit of this child, which is then no zombie any more; nothing while it runs.
[[nodiscard]] std::optional<ChildExit> reapChild(pid_t child);

/// Kills a child of spawnChild() with what it started. Its exit is not waited for, as a process
/// that the kernel holds ends later. Main thread.
void killWithItsChildren(pid_t child);

} // namespace quillbar::platform
