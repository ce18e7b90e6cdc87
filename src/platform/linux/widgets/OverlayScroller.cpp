#include "platform/linux/widgets/OverlayScroller.h"

#include "platform/linux/widgets/Painting.h"

#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

#include <algorithm>
#include <utility>

namespace quillbar::platform {

namespace {

// No wider: the controls of the rows end this close to the edge.
constexpr int thickness = 4;
constexpr double shortestThumb = 24;
constexpr double restingShare = 0.35;
constexpr double hoverShare = 0.6;

constexpr double wheelStep = 20;
constexpr int linesPerNotch = 3;
constexpr double unitsPerNotch = 120;

} // namespace

OverlayScroller::OverlayScroller(QWidget& parent, std::function<void(double)> onScroll)
    : QWidget(&parent)
    , onScroll_(std::move(onScroll))
{
}

void OverlayScroller::setRange(QRect const& area, double offset, double maximum)
{
    offset_ = offset;
    maximum_ = maximum;
    setGeometry(area.right() + 1 - thickness, area.top(), thickness, area.height());
    setVisible(maximum > 0);
    raise();
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
    painter.setBrush(
        faded(palette().color(QPalette::WindowText), underMouse() ? hoverShare : restingShare));
    painter.drawRoundedRect(
        QRectF(0, thumbTop(), width(), thumbLength()), width() / 2.0, width() / 2.0);
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

double scrollDistance(QWheelEvent const& event)
{
    if (!event.pixelDelta().isNull())
        return -event.pixelDelta().y();
    return -event.angleDelta().y() / unitsPerNotch * linesPerNotch * wheelStep;
}

} // namespace quillbar::platform
