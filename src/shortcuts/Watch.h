#pragma once

#include <string>

namespace quillbar::shortcuts {

/// Whether this process was started from a terminal: it can show there what the shortcut prints.
[[nodiscard]] bool hasTerminal();

/// From here on, a copy of this process goes on, to become the shortcut. The process itself watches
/// over that one, keeps the end of the output that would be discarded, writes the log of the run
/// and ends as the shortcut did; it never returns from this call. It needs no memory that grows.
///
/// Returns false when there could be no copy; what is printed is not kept then.
bool continueWatched(std::string const& name);

/// For the log: the file of the shortcut.
void tellWatch(std::string const& file);

} // namespace quillbar::shortcuts
