#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace quillbar::platform {

/// Told the child's exit status; nothing when it could not be started or a signal ended it.
using ChildCompletion = std::function<void(std::optional<int> exitStatus)>;

/// Starts the program `arguments[0]` (an absolute path; no shell, no search) with the whole vector
/// as its arguments and its output discarded, and returns at once. `completion`, which may be
/// empty, is called exactly once on the main thread, never from within this call; never while the
/// child runs. Main thread.
void runChild(std::vector<std::string> const& arguments, ChildCompletion completion);

/// Runs the program like runChild(), but returns only when it has exited, and carries out no event
/// meanwhile: what it wrote to its standard output; standard error is this program's own. What a
/// grandchild writes after the child's exit is not waited for.
///
/// Nothing when there is no whole output: the child could not be started or a signal ended it, or
/// it was killed, with what it had started, because it had not exited after `limit` or had written
/// more than 64 MB. Main thread.
[[nodiscard]] std::optional<std::string> readChildOutput(std::vector<std::string> const& arguments,
    std::chrono::milliseconds limit = std::chrono::seconds(10));

} // namespace quillbar::platform
