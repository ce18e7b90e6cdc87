#pragma once

#include "shortcuts/Environment.h"

#include <string>
#include <vector>

namespace quillbar::shortcuts {

/// Becomes the shortcut of this name, so that its signals and its status are its own. Returns only
/// when that fails, with the status to exit with; the reason has been reported.
[[nodiscard]] int runShortcut(Environment const& environment, std::string const& name);

} // namespace quillbar::shortcuts
