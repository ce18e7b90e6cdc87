#pragma once

#include "platform/view/Image.h"

#include <QColor>
#include <QImage>
#include <QPainter>
#include <QSizeF>

namespace quillbar::platform {

/// Keeps the last drawing of an image, as symbols are slow to draw.
class CachedImage {
public:
    /// Call it when the image is another one.
    void invalidate() { drawn_ = {}; }

    /// Draws the image in the middle of the rectangle. A symbol without a size gets `symbolSize`,
    /// one without a tint `foreground`.
    void draw(QPainter& painter, QRect const& rect, Image const& image, QSizeF symbolSize,
        QColor const& foreground);

    /// The same, scaled by its proportions so that it fits, and fills the rectangle if `fills`.
    void drawScaled(QPainter& painter, QRect const& rect, Image const& image,
        QColor const& foreground, bool fills);

private:
    void prepare(
        QPainter const& painter, Image const& image, QSizeF symbolSize, QColor const& foreground);

    QImage drawn_;
    QSizeF symbolSize_;
    QColor foreground_;
};

} // namespace quillbar::platform
