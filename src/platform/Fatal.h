#pragma once

#include <string_view>

namespace quillbar::platform {

/// Ends the program at once, for conditions under which it cannot go on. The message is one line
/// for standard error.
[[noreturn]] void fatalError(std::string_view message);

} // namespace quillbar::platform
