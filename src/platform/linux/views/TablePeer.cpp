#include "platform/linux/views/NativeView.h"
#include "platform/linux/views/RowDrag.h"
#include "platform/view/TableView.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>
#include <QStyleHints>

namespace quillbar::platform {

namespace {

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
        if (!portable || !portableView()->selectedRow())
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
