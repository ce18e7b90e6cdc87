#include "platform/linux/views/TextDrawing.h"

#include "platform/linux/drawing/Conversions.h"
#include "platform/view/TableView.h"
#include "platform/view/TextSize.h"

#include <QFontMetricsF>

#include <cmath>

namespace quillbar::platform {

namespace {

// The frames were made for a narrow typeface: what just fails to fit in a wider one is drawn
// narrower.
constexpr int narrowestStretch = 82;

} // namespace

void drawLine(QPainter& painter, QRect const& rect, int horizontalAlignment, QString const& line)
{
    auto const text = withoutTabs(line);
    int const flags = horizontalAlignment | Qt::AlignAbsolute | Qt::AlignVCenter
        | Qt::TextSingleLine | Qt::TextDontClip;
    // A name reads from the side on which its script begins, wherever it stands.
    painter.setLayoutDirection(Qt::LayoutDirectionAuto);
    int const width = painter.fontMetrics().horizontalAdvance(text);
    if (width <= rect.width()) {
        painter.drawText(rect, flags, text);
        return;
    }
    auto const font = painter.font();
    // What is cut anyway keeps the width of the lines around it.
    if (int const stretch = rect.width() * 100 / width - 1; stretch >= narrowestStretch) {
        auto narrow = font;
        narrow.setStretch(stretch);
        painter.setFont(narrow);
    }
    painter.drawText(
        rect, flags, painter.fontMetrics().elidedText(text, Qt::ElideRight, rect.width()));
    painter.setFont(font);
}

void drawParagraph(
    QPainter& painter, QRect const& rect, int horizontalAlignment, QString const& text)
{
    constexpr int widthStep = 6;
    constexpr int mostPixelsLess = 2;
    int const flags = horizontalAlignment | Qt::AlignTop | Qt::TextWordWrap;
    auto const font = painter.font();
    auto const fits
        = [&] { return painter.boundingRect(rect, flags, text).height() <= rect.height(); };
    for (int less = 0; less <= mostPixelsLess && !fits(); ++less) {
        auto smaller = font;
        smaller.setPixelSize(font.pixelSize() - less);
        for (int stretch = 100; stretch >= narrowestStretch; stretch -= widthStep) {
            smaller.setStretch(stretch);
            painter.setFont(smaller);
            if (fits())
                break;
        }
    }
    painter.drawText(rect, flags, text);
    painter.setFont(font);
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

} // namespace quillbar::platform
