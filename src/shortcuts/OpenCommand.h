#pragma once

#include "shortcuts/Environment.h"

#include <string>

namespace quillbar::shortcuts {

/// Makes the folder with an explanation and a sample in it. Returns whether it is there; one that
/// is there already stays as it is.
[[nodiscard]] bool createShortcutsFolder(std::string const& folder);

/// Becomes the desktop's opener, showing the person's own folder, which is made when it is missing.
/// Returns only when that fails, with the status to exit with; the reason has been reported.
[[nodiscard]] int openShortcutsFolder(Environment const& environment);

} // namespace quillbar::shortcuts
