#include "platform/linux/views/NativeView.h"
#include "platform/linux/views/OverlayScroller.h"
#include "platform/linux/views/TextDrawing.h"
#include "platform/view/ScrollView.h"

#include <QPainter>
#include <QWheelEvent>

namespace quillbar::platform {

namespace {

constexpr double wheelStep = 20;
constexpr int linesPerNotch = 3;
constexpr double unitsPerNotch = 120;
constexpr double bezelShare = 0.2;

/// Clips the document inside the border; the scroller lies on top.
class ScrollPeer final : public Peer<QWidget, ScrollView> {
public:
    ScrollPeer(View& view, QWidget& parent)
        : Peer(view, parent)
        , clip_(new QWidget(this))
        , scroller_(new OverlayScroller(*this, [this](double offset) {
            if (portable)
                portableView()->userScrolled(offset);
        }))
    {
    }

    [[nodiscard]] QWidget& host() override { return *clip_; }

    void sync() override
    {
        auto const& view = *portableView();
        int const border = view.border() == ScrollBorder::Bezel ? 1 : 0;
        auto const size = roundedRect(view.frame()).size();
        QRect const inside = QRect(QPoint(), size).adjusted(border, border, -border, -border);
        clip_->setGeometry(inside);
        scroller_->setGeometry(inside.right() + 1 - OverlayScroller::thickness, inside.top(),
            OverlayScroller::thickness, inside.height());
        scroller_->setRange(view.offset(), view.maximumOffset());
        scroller_->setVisible(
            view.verticalScroller() == VerticalScroller::AutoHiding && view.maximumOffset() > 0);
        scroller_->raise();
        update();
    }

protected:
    void wheelEvent(QWheelEvent* event) override
    {
        if (!portable)
            return;
        double const distance = event->pixelDelta().isNull()
            ? event->angleDelta().y() / unitsPerNotch * linesPerNotch * wheelStep
            : event->pixelDelta().y();
        portableView()->userScrolled(portableView()->offset() - distance);
        event->accept();
    }

    void paintEvent(QPaintEvent*) override
    {
        if (!portable)
            return;
        QPainter painter(this);
        if (portableView()->drawsBackground())
            painter.fillRect(rect(), palette().color(QPalette::Base));
        if (portableView()->border() == ScrollBorder::Bezel) {
            painter.setPen(faded(palette().color(QPalette::WindowText), bezelShare));
            painter.drawRect(rect().adjusted(0, 0, -1, -1));
        }
    }

private:
    QWidget* clip_;
    OverlayScroller* scroller_;
};

} // namespace

NativeView* makeScrollPeer(View& view, QWidget& parent)
{
    return new ScrollPeer(view, parent);
}

} // namespace quillbar::platform
