#pragma once

#include <chrono>
#include <string>
#include <string_view>
#include <vector>

namespace quillbar::shortcuts {

/// One run that has ended.
struct EndedRun {
    std::string name;
    /// The shortcut's file; empty when there is none of this name.
    std::string file {};
    std::chrono::system_clock::time_point began;
    std::chrono::milliseconds duration {};
    /// As waitpid() tells it.
    int status = 0;
    std::string_view output {};
    /// Whether more was printed before `output`.
    bool isCut = false;
};

/// Where the log of this shortcut's newest run is, whether or not there is one: a plain file in the
/// person's state folder, whatever characters the name has.
[[nodiscard]] std::string logPath(std::string_view name);

/// Replaces the log of this shortcut, and removes the oldest logs when there are over 200. Returns
/// whether that succeeded; if not, the old log is as it was.
bool writeLog(EndedRun const& run);

/// Replaces the log of this shortcut, in a private folder; see writeLog().
bool writeLogText(std::string_view name, std::string_view text);

/// The first lines of all logs, the newest log first.
[[nodiscard]] std::vector<std::string> logHeads();

/// For example "2026-11-22 06:03:31", in the person's time zone.
[[nodiscard]] std::string timeText(std::chrono::system_clock::time_point time);

} // namespace quillbar::shortcuts
