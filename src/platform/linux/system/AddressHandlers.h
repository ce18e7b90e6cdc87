#pragma once

#include <string>

namespace quillbar::platform {

/// Whether the desktop has a program for addresses of this scheme, for example "shortcuts". Reads
/// a few small files.
[[nodiscard]] bool hasAddressHandler(std::string const& scheme);

} // namespace quillbar::platform
