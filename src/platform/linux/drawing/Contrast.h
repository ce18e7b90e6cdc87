#pragma once

#include <QColor>

namespace quillbar::platform {

/// The ratios of luminance between a thing and its background that the web's accessibility
/// guidelines ask for, 4.5 and 3, and what rounding and smoothed edges take away from them.
inline constexpr double textContrast = 4.7;
inline constexpr double outlineContrast = 3.1;

/// What is seen where the colour lies on an opaque background.
[[nodiscard]] QColor blended(QColor const& color, QColor const& background);

/// The colour if it has the contrast to the opaque background; else the nearest one to it, towards
/// black or white, that has. Up to 4.58 there is one on every background; beyond, black or white is
/// returned where none has it.
[[nodiscard]] QColor legible(QColor const& color, QColor const& background, double contrast);

} // namespace quillbar::platform
