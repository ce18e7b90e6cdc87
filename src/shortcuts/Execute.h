#pragma once

#include <string>
#include <vector>

namespace quillbar::shortcuts {

/// Becomes the program of this path, which is told these arguments, its own name first. Returns
/// only when that fails, with the status to exit with; the reason has been reported. A script
/// without an interpreter line goes to the system's shell, as in a terminal.
[[nodiscard]] int execute(std::string const& program, std::vector<std::string> const& arguments);

} // namespace quillbar::shortcuts
