#pragma once

#include <QPainterPath>

#include <optional>
#include <string_view>

namespace quillbar::platform {

/// The outline that the data of an SVG path describes; nothing when it is not such data.
[[nodiscard]] std::optional<QPainterPath> parsePathData(std::string_view data);

} // namespace quillbar::platform
