#pragma once

#include <functional>
#include <string>
#include <vector>

namespace quillbar::shortcuts {

/// What the person's environment variables say, read once at start.
struct Environment {
    /// Looks a variable up; null when it is not set.
    using Lookup = std::function<char const*(char const* name)>;

    std::string home;
    /// Where shortcuts lie, the person's own folder first. None need exist.
    std::vector<std::string> folders;
    /// The value of PATH for everything that is started.
    std::string searchPath;
    /// The suffixes of translated keys that suit the person's language, best first.
    std::vector<std::string> locales;

    [[nodiscard]] static Environment read(Lookup const& lookup);
};

} // namespace quillbar::shortcuts
