#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quillbar::shortcuts {

/// Writes one line to standard error.
void report(std::string const& message);

/// The name in quotation marks, for messages.
[[nodiscard]] std::string quoted(std::string_view name);

/// The first kilobyte of a file; empty when it cannot be read.
[[nodiscard]] std::string beginningOf(std::string const& path);

/// Becomes the program of this path, which is told these arguments, its own name first. Returns
/// only when that fails, with the status to exit with; the reason has been reported. A script
/// without an interpreter line goes to the system's shell, as in a terminal.
[[nodiscard]] int execute(std::string const& program, std::vector<std::string> const& arguments);

} // namespace quillbar::shortcuts
