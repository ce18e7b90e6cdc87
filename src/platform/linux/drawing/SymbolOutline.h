#pragma once

#include <QPainterPath>
#include <QRectF>

#include <optional>
#include <string_view>
#include <vector>

namespace quillbar::platform {

/// A symbol that is nothing but filled outlines, as all of the installed icon set are.
struct SymbolOutline {
    QRectF viewBox;
    std::vector<QPainterPath> paths;
};

/// Nothing for a symbol that is unknown or holds more than that; drawing one takes an SVG renderer,
/// which costs more memory and time than the rest of the menu.
[[nodiscard]] std::optional<SymbolOutline> symbolOutline(std::string_view name);

} // namespace quillbar::platform
