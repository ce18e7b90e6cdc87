#pragma once

#include <functional>
#include <string>

namespace quillbar::platform {

/// Where an absolute folder of PATH has the program; empty when it is not installed.
[[nodiscard]] std::string findProgram(std::string const& name);

/// Hands an address or a path to the program that the desktop has for it and returns at once.
/// `onFailure` is called later when there is none. Main thread.
void openWithDesktop(std::string const& address, std::function<void()> onFailure);

} // namespace quillbar::platform
