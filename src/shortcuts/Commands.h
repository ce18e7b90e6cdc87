#pragma once

#include "shortcuts/Environment.h"

#include <string>

namespace quillbar::shortcuts {

/// The exit statuses of this program; after a start that succeeded, the status is the shortcut's.
/// 64, 66 and 74 are those of <sysexits.h>, 126 and 127 those of shells.
namespace status {
inline constexpr int success = 0;
inline constexpr int noSuchShortcut = 1;
inline constexpr int usage = 64;
inline constexpr int incompleteList = 66;
inline constexpr int outputFailed = 74;
inline constexpr int cannotExecute = 126;
inline constexpr int notFound = 127;
} // namespace status

/// Writes one line to standard error.
void report(std::string const& message);

/// Becomes the shortcut of this name, so that its signals and its status are its own. Returns only
/// when that fails, with the status to exit with; the reason has been reported.
[[nodiscard]] int runShortcut(Environment const& environment, std::string const& name);

/// Becomes the desktop's opener, showing the person's own folder, which is made when it is missing.
/// Returns only when that fails, with the status to exit with; the reason has been reported.
[[nodiscard]] int openShortcutsFolder(Environment const& environment);

} // namespace quillbar::shortcuts
