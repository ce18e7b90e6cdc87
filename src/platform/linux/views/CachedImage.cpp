#include "platform/linux/views/CachedImage.h"

#include "platform/linux/drawing/ImageRenderer.h"

#include <QGuiApplication>

namespace quillbar::platform {

void CachedImage::prepare(
    QPainter const& painter, Image const& image, QSizeF symbolSize, QColor const& foreground)
{
    double const ratio = painter.device()->devicePixelRatioF();
    if (!drawn_.isNull() && drawn_.devicePixelRatio() == ratio && symbolSize_ == symbolSize
        && foreground_ == foreground)
        return;
    symbolSize_ = symbolSize;
    foreground_ = foreground;
    drawn_ = renderImage(image,
        { .symbolSize = symbolSize,
            .devicePixelRatio = ratio,
            .foreground = foreground,
            .palette = QGuiApplication::palette() });
}

void CachedImage::draw(QPainter& painter, QRect const& rect, Image const& image, QSizeF symbolSize,
    QColor const& foreground)
{
    prepare(painter, image, symbolSize, foreground);
    QRectF place(QPointF(), drawn_.deviceIndependentSize());
    place.moveCenter(QRectF(rect).center());
    painter.drawImage(place.topLeft(), drawn_);
}

void CachedImage::drawScaled(
    QPainter& painter, QRect const& rect, Image const& image, QColor const& foreground, bool fills)
{
    QSizeF const size = rect.size();
    auto const side = std::min(size.width(), size.height());
    prepare(painter, image, { side, side }, foreground);
    auto natural = drawn_.deviceIndependentSize();
    if (fills || natural.width() > size.width() || natural.height() > size.height())
        natural.scale(size, Qt::KeepAspectRatio);
    QRectF place(QPointF(), natural);
    place.moveCenter(QRectF(rect).center());
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(place, drawn_);
}

} // namespace quillbar::platform
