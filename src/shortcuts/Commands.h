#pragma once

#include "shortcuts/Catalogue.h"
#include "shortcuts/Environment.h"

#include <optional>
#include <string>
#include <string_view>

namespace quillbar::shortcuts {

/// The exit statuses of this program; after a start that succeeded, the status is the shortcut's.
/// 64, 66 and 74 are those of <sysexits.h>, 126 and 127 those of shells.
namespace status {
inline constexpr int success = 0;
/// Or it has no log, or does not run.
inline constexpr int noSuchShortcut = 1;
inline constexpr int usage = 64;
inline constexpr int incompleteList = 66;
inline constexpr int outputFailed = 74;
inline constexpr int cannotExecute = 126;
inline constexpr int notFound = 127;
} // namespace status

/// Becomes the shortcut of this name, so that its signals and its status are its own. Returns only
/// when that fails, with the status to exit with; the reason has been reported.
[[nodiscard]] int runShortcut(Environment const& environment, std::string const& name);

/// Becomes the desktop's opener, showing the person's own folder, which is made when it is missing.
/// Returns only when that fails, with the status to exit with; the reason has been reported.
[[nodiscard]] int openShortcutsFolder(Environment const& environment);

/// The shortcut whose log the address asks to show; nothing for any other address.
[[nodiscard]] std::optional<std::string> shortcutToOpen(std::string_view address);

/// Becomes the desktop's opener, showing the log of this shortcut: one that says so when the
/// shortcut has not run yet. Returns only when that fails, like openShortcutsFolder().
[[nodiscard]] int openLog(Environment const& environment, std::string const& name);

/// Tells why no shortcut of this name can be run; returns the status to exit with.
[[nodiscard]] int reportMissing(Catalogue const& catalogue, std::string const& name);

/// Prints the text; returns the status to exit with.
[[nodiscard]] int print(std::string_view text);

/// Prints the log of the shortcut's last run that had no terminal.
[[nodiscard]] int printLog(std::string const& name);
/// Prints a line for each log, the newest first.
[[nodiscard]] int printLogs();
/// Prints a line for each shortcut that runs.
[[nodiscard]] int printRunning();
/// Ends all runs of this shortcut, and tells how.
[[nodiscard]] int stopShortcut(std::string const& name);

} // namespace quillbar::shortcuts
