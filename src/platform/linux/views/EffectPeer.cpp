#include "platform/linux/drawing/Conversions.h"
#include "platform/linux/views/NativeView.h"
#include "platform/linux/views/TextDrawing.h"
#include "platform/linux/views/WindowPeer.h"
#include "platform/view/EffectView.h"

#include <QPainter>
#include <QPainterPath>

namespace quillbar::platform {

namespace {

// Not every compositor blurs, and text that shines through would disturb.
constexpr double translucency = 0.97;

class EffectPeer final : public Peer<QWidget, EffectView> {
public:
    using Peer::Peer;

    void sync() override
    {
        QRectF const area(QPointF(), toQRectF(portable->frame()).size());
        auto const radius = portableView()->cornerRadius();
        path_ = {};
        path_.addRoundedRect(area, radius, radius);
        if (auto const* const window = portable->window())
            window->native()->setGround(path_.toFillPolygon().toPolygon());
        update();
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        if (!portable)
            return;
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        auto const color = palette().color(QPalette::Window);
        bool const isTranslucent = window()->testAttribute(Qt::WA_TranslucentBackground);
        painter.fillPath(path_, isTranslucent ? faded(color, translucency) : color);
        // Half of a line on the path would be cut off.
        double const width = portableView()->borderWidth();
        QPainterPath border;
        border.addRoundedRect(QRectF(rect()).adjusted(width / 2, width / 2, -width / 2, -width / 2),
            portableView()->cornerRadius() - width / 2, portableView()->cornerRadius() - width / 2);
        painter.strokePath(border, QPen(toQColor(portableView()->borderColor(), palette()), width));
    }

private:
    QPainterPath path_;
};

} // namespace

NativeView* makeEffectPeer(View& view, QWidget& parent)
{
    return new EffectPeer(view, parent);
}

} // namespace quillbar::platform
