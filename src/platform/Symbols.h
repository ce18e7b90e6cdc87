#pragma once

#include <string>
#include <string_view>

namespace quillbar::platform {

/// Whether the system can draw a symbol of that name, for example "heart.fill".
[[nodiscard]] bool symbolExists(std::string_view name);

} // namespace quillbar::platform
