#include "platform/linux/widgets/Painting.h"

#include "platform/linux/drawing/Contrast.h"
#include "platform/linux/drawing/Conversions.h"
#include "platform/linux/drawing/ImageRenderer.h"
#include "platform/linux/widgets/NativeView.h"
#include "platform/view/ScrollView.h"
#include "platform/view/TableView.h"
#include "platform/view/TextSize.h"

#include <QFontMetricsF>
#include <QGuiApplication>
#include <QHelpEvent>
#include <QToolTip>

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

bool showCutText(QEvent* event, QWidget& widget, QString const& text, int room)
{
    if (event->type() != QEvent::ToolTip || !widget.toolTip().isEmpty()
        || widget.fontMetrics().horizontalAdvance(text) <= room)
        return false;
    QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), plainToolTip(text), &widget);
    return true;
}

QColor backgroundOf(View const& view, QPalette const& palette)
{
    if (isInSelectedRow(view))
        return palette.color(QPalette::Active, QPalette::Highlight);
    for (auto const* around = view.superview(); around; around = around->superview()) {
        if (around->kind() == ViewKind::ScrollView
            && static_cast<ScrollView const*>(around)->drawsBackground())
            return palette.color(QPalette::Active, QPalette::Base);
    }
    return palette.color(QPalette::Active, QPalette::Window);
}

QColor textColor(View const& view, Color const& color, QPalette const& palette)
{
    auto text = toQColor(color, palette);
    if (std::holds_alternative<SystemColor>(color) && isInSelectedRow(view))
        text = faded(palette.color(QPalette::Active, QPalette::HighlightedText), text.alphaF());
    return legible(text, backgroundOf(view, palette), textContrast);
}

QColor legibleOnBevel(QColor color, double contrast, QSize size, QColor const& background,
    std::function<void(QPainter&)> const& draw)
{
    QImage bevel(size, QImage::Format_RGB32);
    bevel.fill(background);
    QPainter painter(&bevel);
    draw(painter);
    // Styles shade bevels from the top to the bottom.
    for (int const y : { size.height() / 4, size.height() * 3 / 4 })
        color = legible(color, bevel.pixelColor(size.width() / 2, y), contrast);
    return color;
}

void drawFocusRing(QPainter& painter, QRectF const& rect, QColor const& color)
{
    constexpr double width = 2;
    constexpr double radius = 3;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(color, width));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(
        rect.adjusted(width / 2, width / 2, -width / 2, -width / 2), radius, radius);
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
