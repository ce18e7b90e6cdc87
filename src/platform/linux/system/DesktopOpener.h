#pragma once

#include <string>

namespace quillbar::platform {

/// Hands an address to the desktop's own opener and returns at once. Main thread.
void openWithDesktop(std::string const& address);

} // namespace quillbar::platform
