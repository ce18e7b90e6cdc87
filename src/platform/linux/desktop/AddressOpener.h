#pragma once

#include <string>

namespace quillbar::platform {

/// As openAddress(address). The program that opens it gets the activation token of the click that
/// asked for it, so that its window may come to the front; empty where there is none.
void openAddress(std::string const& address, std::string const& activationToken);

} // namespace quillbar::platform
