#pragma once

#include <QString>

#include <optional>
#include <string_view>

namespace quillbar::platform {

/// The SVG file of a named symbol: from the installed icon set, by one of the names known here or
/// by the symbol's own words, else one of our own resources, else from the desktop's icon theme.
/// Looks only whether files exist.
[[nodiscard]] std::optional<QString> findSymbol(std::string_view name);

} // namespace quillbar::platform
