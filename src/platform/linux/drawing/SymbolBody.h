#pragma once

#include <QByteArray>
#include <QRectF>

#include <optional>
#include <string_view>

namespace quillbar::platform {

/// The inside of a symbol's SVG document.
struct SymbolBody {
    QRectF viewBox { 0, 0, 16, 16 };
    QByteArray content;
    QByteArray namespaces;
};

/// Nothing when the symbol is unknown or its file is unreadable.
[[nodiscard]] std::optional<SymbolBody> symbolBody(std::string_view name);

} // namespace quillbar::platform
