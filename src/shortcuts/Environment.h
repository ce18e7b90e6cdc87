#pragma once

#include <string>
#include <vector>

namespace quillbar::shortcuts {

/// The person's folders.
struct Environment {
    std::string home;
    /// Where shortcuts lie, the person's own folder first. None need exist.
    std::vector<std::string> folders;
};

/// Reads the person's environment, and sets PATH for what this program looks up and starts: the
/// folders for programs in the home first, and no relative ones.
[[nodiscard]] Environment prepareEnvironment();

/// Where the program lies: itself when it is a path, else in the first folder of PATH that has it.
/// Empty when there is no such executable file.
[[nodiscard]] std::string findProgram(std::string const& program);

} // namespace quillbar::shortcuts
