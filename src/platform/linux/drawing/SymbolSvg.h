#pragma once

#include <QByteArray>
#include <QRectF>
#include <QSizeF>

#include <optional>
#include <string_view>

namespace quillbar::platform {

/// How a symbol is drawn on the canvas of a new SVG document.
struct SymbolSvgStyle {
    QSizeF canvas { 16, 16 };
    /// The symbol fills this as far as its proportions allow.
    QRectF rect { 0, 0, 16, 16 };
    /// A colour as SVG writes it; empty leaves it to the panel that shows the document.
    QByteArray color;
    double opacity = 1;
};

/// The symbol as a document of its own, or nothing when it is unknown or its file is unreadable.
[[nodiscard]] std::optional<QByteArray> symbolSvg(
    std::string_view name, SymbolSvgStyle const& style = {});

} // namespace quillbar::platform
