#pragma once

#include "platform/view/Image.h"

#include <QByteArray>
#include <QColor>
#include <QImage>
#include <QPalette>
#include <QSizeF>

namespace quillbar::platform {

/// What the drawing of an image depends on besides the image.
struct ImageContext {
    /// In points; for symbols that name no size of their own.
    QSizeF symbolSize { 16, 16 };
    double devicePixelRatio = 1;
    /// For symbols that name no tint of their own.
    QColor foreground = Qt::black;
    /// For system colours.
    QPalette palette;
};

/// Draws the image at the context's pixel ratio, which the result carries. A symbol that is unknown
/// leaves it clear.
[[nodiscard]] QImage renderImage(Image const& image, ImageContext const& context);

/// The image as a PNG file. Qt's own writer would load every image plug-in first, which takes more
/// memory than all images of the menu together.
[[nodiscard]] QByteArray encodePng(QImage const& image);

} // namespace quillbar::platform
