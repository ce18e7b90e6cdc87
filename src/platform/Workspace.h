#pragma once

#include <string>

namespace quillbar::platform {

/// Hands an address to the program that the person has chosen for its scheme. Never blocks; reports
/// nothing. Main thread.
void openAddress(std::string const& address);

/// Whether the system has a place where a person grants the rights to watch the keyboard and to
/// show notifications, and the way there. Never blocks. Main thread.
[[nodiscard]] bool hasSecuritySettings();
void openSecuritySettings();

} // namespace quillbar::platform
