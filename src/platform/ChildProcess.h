#pragma once

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

/// Runs the program like runChild(), but returns only when it has exited: what it wrote to its
/// standard output, which is empty when it could not be started; standard error is this program's
/// own. What a grandchild writes after the child's exit is not waited for.
///
/// While a child takes more than a moment, other events are carried out: whoever calls this finds
/// the program changed, and may be called again meanwhile.
///
/// Nothing when there is no whole output: a child that has not exited after 10 seconds or has
/// written more than 64 MB is killed, and so is any child when terminate() ends the program. Main
/// thread.
[[nodiscard]] std::optional<std::string> readChildOutput(std::vector<std::string> const& arguments);

} // namespace quillbar::platform
