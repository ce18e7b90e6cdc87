#include "platform/linux/views/RowDrag.h"

#include "platform/KeyMonitor.h"
#include "platform/linux/views/NativeView.h"
#include "platform/view/ScrollView.h"
#include "platform/view/TableView.h"

#include <QPainter>
#include <QTimerEvent>

#include <algorithm>
#include <utility>

namespace quillbar::platform {

namespace {

constexpr double edge = 14;
constexpr double slowest = 2;
constexpr double fastest = 12;
constexpr int tick = 16;
constexpr double rowOpacity = 0.75;
constexpr double lineWidth = 2;
constexpr double knobRadius = 3;

} // namespace

RowDrag::RowDrag(
    QWidget& tableWidget, TableView& table, std::size_t row, std::string text, double grip)
    : QWidget(&tableWidget)
    , table_(table)
    , text_(std::move(text))
    , grip_(grip)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    if (auto const view = table.viewAtRow(row); view && view->native())
        image_ = view->native()->widget().grab();
    escape_ = addKeyDownMonitor([this](KeyEvent const& event) {
        if (event.keyCode != key::escape)
            return KeyEventResult::Pass;
        isGivenUp_ = true;
        scrolling_.stop();
        hide();
        return KeyEventResult::Consume;
    });
    placeOver();
    show();
}

void RowDrag::moveTo(QPointF position)
{
    position_ = position;
    if (isGivenUp_)
        return;
    if (scrollSpeed() == 0)
        scrolling_.stop();
    else if (!scrolling_.isActive())
        scrolling_.start(tick, this);
    placeOver();
}

std::optional<std::size_t> RowDrag::gap() const
{
    if (isGivenUp_ || !contains(visibleRect(), { position_.x(), position_.y() }))
        return std::nullopt;
    return table_.gapAt(position_.y());
}

ScrollView* RowDrag::scrollView() const
{
    auto* const around = table_.superview();
    return around && around->kind() == ViewKind::ScrollView ? static_cast<ScrollView*>(around)
                                                            : nullptr;
}

Rect RowDrag::visibleRect() const
{
    return scrollView() ? scrollView()->visibleRect()
                        : Rect { 0, 0, table_.frame().width, table_.frame().height };
}

// In points a tick, faster the farther out the pointer is.
double RowDrag::scrollSpeed() const
{
    auto const* const scroll = scrollView();
    if (!scroll)
        return 0;
    Rect const visible = scroll->visibleRect();
    double const above = visible.y + edge - position_.y();
    double const below = position_.y() - (visible.y + visible.height - edge);
    if (above > 0)
        return -std::clamp(above / 4, slowest, fastest);
    return below > 0 ? std::clamp(below / 4, slowest, fastest) : 0;
}

void RowDrag::timerEvent(QTimerEvent* event)
{
    auto* const scroll = scrollView();
    if (event->timerId() != scrolling_.timerId() || !scroll)
        return;
    double const before = scroll->offset();
    scroll->setOffset(before + scrollSpeed());
    // The table moved under a pointer that stayed.
    position_.ry() += scroll->offset() - before;
    if (scroll->offset() == before)
        scrolling_.stop();
    placeOver();
}

void RowDrag::placeOver()
{
    setGeometry(roundedRect(visibleRect()));
    raise();
    update();
}

void RowDrag::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(-x(), -y());
    painter.setOpacity(rowOpacity);
    painter.drawPixmap(QPointF(0, position_.y() - grip_), image_);
    painter.setOpacity(1);
    auto const target = gap();
    if (!target)
        return;
    double const top = std::clamp(static_cast<double>(*target) * table_.rowHeight(),
        y() + knobRadius + 1, y() + height() - knobRadius - 1);
    auto const color = palette().color(QPalette::Highlight);
    painter.setPen(QPen(color, lineWidth));
    painter.drawLine(QPointF(2 * knobRadius + 2, top), QPointF(width() - 2, top));
    painter.setBrush(palette().color(QPalette::Base));
    painter.drawEllipse(QPointF(knobRadius + 2, top), knobRadius, knobRadius);
}

} // namespace quillbar::platform
