#pragma once

#include "platform/view/Image.h"

#include <optional>
#include <string>
#include <string_view>

namespace quillbar::platform {

/// Whether the system can draw a symbol of that name, for example "heart.fill".
[[nodiscard]] bool symbolExists(std::string_view name);

/// The image that the program's bundle carries under that name, in that size; nothing when it
/// carries none or it cannot be read.
[[nodiscard]] std::optional<Image> bundleImage(std::string_view name, Size size);

} // namespace quillbar::platform
