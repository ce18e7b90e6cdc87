#include "platform/linux/widgets/NativeView.h"
#include "platform/linux/widgets/Painting.h"
#include "platform/view/ScrollView.h"

#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

#include <algorithm>
#include <functional>

namespace quillbar::platform {

namespace {

constexpr double shortestThumb = 24;
constexpr double restingShare = 0.35;
constexpr double hoverShare = 0.6;

constexpr double wheelStep = 20;
constexpr int linesPerNotch = 3;
constexpr double unitsPerNotch = 120;
constexpr double bezelShare = 0.2;

/// A slim vertical scroller over the content, so that the content keeps its whole width.
class OverlayScroller final : public QWidget {
public:
    /// No wider: the controls of the rows end this close to the edge.
    static constexpr int thickness = 4;

    OverlayScroller(QWidget& parent, std::function<void(double)> onScroll)
        : QWidget(&parent)
        , onScroll_(std::move(onScroll))
    {
    }

    /// The offset now, and the largest there is, both in points of content.
    void setRange(double offset, double maximum);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void enterEvent(QEnterEvent*) override { update(); }
    void leaveEvent(QEvent*) override { update(); }

private:
    [[nodiscard]] double thumbLength() const;
    [[nodiscard]] double thumbTop() const;

    std::function<void(double)> onScroll_;
    double offset_ = 0;
    double maximum_ = 0;
    double grip_ = 0;
};

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
