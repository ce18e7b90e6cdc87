#include "platform/linux/widgets/Painting.h"

#include "platform/linux/drawing/Conversions.h"
#include "platform/linux/drawing/ImageRenderer.h"
#include "platform/view/TableView.h"
#include "platform/view/TextSize.h"

#include <QFontMetricsF>
#include <QGuiApplication>

#include <cmath>

namespace quillbar::platform {

void drawLine(QPainter& painter, QRect const& rect, int horizontalAlignment, QString const& text)
{
    int const flags = horizontalAlignment | Qt::AlignAbsolute | Qt::AlignVCenter
        | Qt::TextSingleLine | Qt::TextDontClip;
    // The direction is the text's own, not that of the user interface.
    painter.setLayoutDirection(Qt::LayoutDirectionAuto);
    painter.drawText(rect, flags,
        painter.fontMetrics().elidedText(withoutTabs(text), Qt::ElideRight, rect.width()));
}

QColor textColor(View const& view, Color const& color, QPalette const& palette)
{
    auto const normal = toQColor(color, palette);
    if (!std::holds_alternative<SystemColor>(color) || !isInSelectedRow(view))
        return normal;
    return faded(palette.color(QPalette::HighlightedText), normal.alphaF());
}

QColor faded(QColor color, double share)
{
    color.setAlphaF(static_cast<float>(color.alphaF() * share));
    return color;
}

Size textSize(std::string_view text, Font const& font)
{
    QFontMetricsF const metrics(toQFont(font));
    return { std::ceil(metrics.horizontalAdvance(toQString(text))), std::ceil(metrics.height()) };
}

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
