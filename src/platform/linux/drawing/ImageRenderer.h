#pragma once

#include "platform/view/Image.h"

#include <QColor>
#include <QImage>
#include <QPalette>
#include <QSizeF>

namespace quillbar::platform {

/// The place that an image is shown in.
struct ImageContext {
    /// In points; for symbols that name no size of their own.
    QSizeF symbolSize { 16, 16 };
    double devicePixelRatio = 1;
    /// For symbols that name no tint of their own.
    QColor foreground = Qt::black;
    /// For tints of the system.
    QPalette palette;
};

/// Draws the image at the context's pixel ratio, which the result carries. A symbol that is unknown
/// leaves it clear. SVG support is loaded only for symbols that are more than outlines.
[[nodiscard]] QImage renderImage(Image const& image, ImageContext const& context);

} // namespace quillbar::platform
