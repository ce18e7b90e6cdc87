#pragma once

#include <QString>

#include <optional>
#include <string_view>
#include <variant>

namespace quillbar::platform {

/// The data of an SVG path, 16 × 16, filled by the even-odd rule.
struct SymbolPath {
    std::string_view data;

    friend bool operator==(SymbolPath const&, SymbolPath const&) = default;
};

/// An SVG file.
struct SymbolFile {
    QString path;

    friend bool operator==(SymbolFile const&, SymbolFile const&) = default;
};

using SymbolSource = std::variant<SymbolPath, SymbolFile>;

/// Finds the drawing of a named symbol: among the names known here, the drawings of our own, the
/// installed icon set and at last the desktop's icon theme. Looks only whether files exist.
[[nodiscard]] std::optional<SymbolSource> findSymbol(std::string_view name);

} // namespace quillbar::platform
