#pragma once

#include <cstdint>
#include <string>

namespace quillbar::platform {

/// What people call a key that gives this keysym; empty for no keysym.
[[nodiscard]] std::string nameOfKey(std::uint32_t keysym);

} // namespace quillbar::platform
