#pragma once

#include "platform/view/Font.h"
#include "platform/view/Geometry.h"

#include <string_view>

namespace quillbar::platform {

/// The size of one line of text, in points, rounded up. Main thread.
[[nodiscard]] Size textSize(std::string_view text, Font const& font);

} // namespace quillbar::platform
