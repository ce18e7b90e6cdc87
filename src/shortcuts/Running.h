#pragma once

#include <chrono>
#include <string>
#include <sys/types.h>
#include <vector>

namespace quillbar::shortcuts {

/// A shortcut that runs and is watched over.
struct RunningShortcut {
    std::string name;
    /// Leads the group of what the shortcut has started.
    pid_t process = 0;
    std::chrono::system_clock::time_point began;
};

/// The person's own, the oldest first.
[[nodiscard]] std::vector<RunningShortcut> runningShortcuts();

/// Asks the shortcut's whole group to end, and kills what is left after 5 seconds. Returns whether
/// that was necessary.
bool stopGroup(RunningShortcut const& shortcut);

} // namespace quillbar::shortcuts
