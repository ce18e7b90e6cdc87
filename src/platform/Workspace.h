#pragma once

#include <string>

namespace quillbar::platform {

/// Hands an address to the program that the desktop has for its scheme. Never blocks; reports
/// nothing. Main thread.
void openAddress(std::string const& address);

} // namespace quillbar::platform
