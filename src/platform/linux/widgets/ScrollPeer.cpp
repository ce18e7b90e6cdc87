#include "platform/linux/widgets/NativeView.h"
#include "platform/linux/widgets/OverlayScroller.h"
#include "platform/linux/widgets/Painting.h"
#include "platform/view/ScrollView.h"

#include <QPainter>
#include <QWheelEvent>

namespace quillbar::platform {

namespace {

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
        bool const hasScroller = view.verticalScroller() == VerticalScroller::AutoHiding;
        scroller_->setRange(inside, view.offset(), hasScroller ? view.maximumOffset() : 0);
        update();
    }

protected:
    void wheelEvent(QWheelEvent* event) override
    {
        if (!portable)
            return;
        double const before = portableView()->offset();
        portableView()->userScrolled(before + scrollDistance(*event));
        // At an end the turn is for what is around.
        event->setAccepted(portableView()->offset() != before);
    }

    void paintEvent(QPaintEvent*) override
    {
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
