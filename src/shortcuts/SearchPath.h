#pragma once

#include <string>
#include <string_view>

namespace quillbar::shortcuts {

/// Where the program lies: itself when it is a path, else in the first folder of the search path
/// that has it. Empty when there is no such executable file.
[[nodiscard]] std::string findProgram(std::string_view program, std::string_view searchPath);

} // namespace quillbar::shortcuts
