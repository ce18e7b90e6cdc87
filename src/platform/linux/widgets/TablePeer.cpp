#include "platform/KeyMonitor.h"
#include "platform/linux/drawing/Contrast.h"
#include "platform/linux/widgets/NativeView.h"
#include "platform/view/ScrollView.h"
#include "platform/view/TableView.h"

#include <QApplication>
#include <QBasicTimer>
#include <QMouseEvent>
#include <QPainter>
#include <QPixmap>
#include <QPointer>
#include <QStyleHints>
#include <QTimerEvent>

#include <algorithm>
#include <optional>
#include <string>
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

/// One row of a table under the mouse, from the first move of the drag to its end: shows the row
/// beside the pointer and a line in the gap where it would land, and scrolls at the edges. It
/// stays within its table, so nothing foreign can be dropped there. Escape ends it.
class RowDrag final : public QWidget {
public:
    RowDrag(QWidget& tableWidget, TableView& table, std::size_t row, std::string text, double grip);

    /// The pointer is at `y` of the table.
    void moveTo(QPointF position);
    /// Where the row would land; nothing when it is dropped outside or was given up.
    [[nodiscard]] std::optional<std::size_t> gap() const;
    [[nodiscard]] std::string const& text() const { return text_; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    [[nodiscard]] ScrollView* scrollView() const;
    [[nodiscard]] Rect visibleRect() const;
    [[nodiscard]] double scrollSpeed() const;
    void placeOver();

    TableView& table_;
    std::string text_;
    QPixmap image_;
    double grip_;
    QPointF position_;
    bool isGivenUp_ = false;
    QBasicTimer scrolling_;
    Token escape_;
};

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
    auto const color = legible(
        palette().color(QPalette::Highlight), palette().color(QPalette::Base), outlineContrast);
    painter.setPen(QPen(color, lineWidth));
    painter.drawLine(QPointF(2 * knobRadius + 2, top), QPointF(width() - 2, top));
    painter.setBrush(palette().color(QPalette::Base));
    painter.drawEllipse(QPointF(knobRadius + 2, top), knobRadius, knobRadius);
}

constexpr double highlightRadius = 6;

/// Draws the selection and turns the mouse into clicks and drags of rows. What the rows' controls
/// do not use arrives here.
class TablePeer final : public Peer<QWidget, TableView> {
public:
    using Peer::Peer;
    TablePeer(TablePeer const&) = delete;
    TablePeer& operator=(TablePeer const&) = delete;
    ~TablePeer() override { endDrag(); }

    void sync() override { update(); }

protected:
    void paintEvent(QPaintEvent*) override
    {
        if (!portableView()->selectedRow())
            return;
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(palette().color(QPalette::Active, QPalette::Highlight));
        painter.drawRoundedRect(
            roundedRect(portableView()->rectOfRow(*portableView()->selectedRow())), highlightRadius,
            highlightRadius);
    }

    void mousePressEvent(QMouseEvent* event) override
    {
        if (!portable || event->button() != Qt::LeftButton)
            return;
        pressed_ = event->position();
        pressedRow_ = portableView()->rowAt(pressed_.y());
        portableView()->userClicked(pressedRow_);
    }

    void mouseDoubleClickEvent(QMouseEvent* event) override
    {
        pressedRow_.reset();
        if (portable && event->button() == Qt::LeftButton)
            portableView()->userDoubleClicked(portableView()->rowAt(event->position().y()));
    }

    void mouseMoveEvent(QMouseEvent* event) override
    {
        if (!portable || !(event->buttons() & Qt::LeftButton))
            return;
        auto const distance = (event->position() - pressed_).manhattanLength();
        if (!drag_ && pressedRow_ && distance >= QApplication::startDragDistance())
            startDrag();
        if (drag_)
            drag_->moveTo(event->position());
    }

    void mouseReleaseEvent(QMouseEvent* event) override
    {
        pressedRow_.reset();
        if (drag_)
            drop(event->position());
    }

    /// The pressed widget may be reused for another row while the table scrolls, so that a drag
    /// takes the mouse before the window gives it to a widget. A Wayland client cannot grab it.
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (!drag_ || !portable || !watched->isWindowType())
            return false;
        auto const position = [&] {
            return mapFromGlobal(static_cast<QMouseEvent const&>(*event).globalPosition());
        };
        if (event->type() == QEvent::MouseMove)
            drag_->moveTo(position());
        else if (event->type() == QEvent::MouseButtonRelease)
            drop(position());
        return event->type() == QEvent::MouseMove;
    }

    void hideEvent(QHideEvent*) override { endDrag(); }

private:
    void startDrag()
    {
        auto const row = *std::exchange(pressedRow_, std::nullopt);
        auto text = portableView()->dragText(row);
        if (!text)
            return;
        double const grip = pressed_.y() - portableView()->rectOfRow(row).y;
        drag_ = new RowDrag(*this, *portableView(), row, *std::move(text), grip);
        qApp->installEventFilter(this);
        QApplication::setOverrideCursor(Qt::ClosedHandCursor);
    }

    void drop(QPointF position)
    {
        if (portable)
            drag_->moveTo(position);
        auto const text = drag_->text();
        auto const gap = portable ? drag_->gap() : std::nullopt;
        endDrag();
        if (gap)
            portableView()->userDropped(text, *gap);
    }

    void endDrag()
    {
        if (!drag_)
            return;
        qApp->removeEventFilter(this);
        QApplication::restoreOverrideCursor();
        delete drag_.data();
    }

    QPointF pressed_;
    std::optional<std::size_t> pressedRow_;
    QPointer<RowDrag> drag_;
};

} // namespace

NativeView* makeTablePeer(View& view, QWidget& parent)
{
    return new TablePeer(view, parent);
}

} // namespace quillbar::platform
