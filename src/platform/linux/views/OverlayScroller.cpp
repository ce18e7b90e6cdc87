#include "platform/linux/views/OverlayScroller.h"

#include "platform/linux/views/TextDrawing.h"

#include <QMouseEvent>
#include <QPainter>

#include <algorithm>

namespace quillbar::platform {

namespace {

constexpr double shortestThumb = 24;
constexpr double restingWidth = 4;
constexpr double margin = 1;
constexpr double restingShare = 0.35;
constexpr double hoverShare = 0.6;

} // namespace

void OverlayScroller::setRange(double offset, double maximum)
{
    if (offset == offset_ && maximum == maximum_)
        return;
    offset_ = offset;
    maximum_ = maximum;
    update();
}

double OverlayScroller::thumbLength() const
{
    double const share = height() / (height() + maximum_);
    return std::min<double>(height(), std::max(shortestThumb, height() * share));
}

double OverlayScroller::thumbTop() const
{
    return maximum_ > 0 ? (height() - thumbLength()) * offset_ / maximum_ : 0;
}

void OverlayScroller::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    bool const isBusy = underMouse();
    painter.setBrush(
        faded(palette().color(QPalette::WindowText), isBusy ? hoverShare : restingShare));
    double const thumb = isBusy ? width() - 2 * margin : restingWidth;
    painter.drawRoundedRect(
        QRectF(width() - margin - thumb, thumbTop() + margin, thumb, thumbLength() - 2 * margin),
        thumb / 2, thumb / 2);
}

void OverlayScroller::mousePressEvent(QMouseEvent* event)
{
    double const y = event->position().y();
    bool const isOnThumb = y >= thumbTop() && y < thumbTop() + thumbLength();
    grip_ = isOnThumb ? y - thumbTop() : thumbLength() / 2;
    mouseMoveEvent(event);
}

void OverlayScroller::mouseMoveEvent(QMouseEvent* event)
{
    double const space = height() - thumbLength();
    if (space > 0)
        onScroll_((event->position().y() - grip_) / space * maximum_);
}

} // namespace quillbar::platform
