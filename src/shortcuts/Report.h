#pragma once

#include <cstdio>
#include <string>

namespace quillbar::shortcuts {

/// The exit statuses besides those of the shortcuts themselves.
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
inline void report(std::string const& message)
{
    std::fprintf(stderr, "shortcuts: %s\n", message.c_str());
}

} // namespace quillbar::shortcuts
