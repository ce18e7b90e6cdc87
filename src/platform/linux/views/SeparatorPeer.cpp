#include "platform/linux/drawing/Conversions.h"
#include "platform/linux/views/NativeView.h"
#include "platform/view/Separator.h"

#include <QPainter>

namespace quillbar::platform {

namespace {

class SeparatorPeer final : public Peer<QWidget, Separator> {
public:
    using Peer::Peer;

protected:
    void paintEvent(QPaintEvent*) override
    {
        QRect line = rect();
        if (line.width() >= line.height())
            line = QRect(line.left(), line.center().y(), line.width(), 1);
        else
            line = QRect(line.center().x(), line.top(), 1, line.height());
        QPainter(this).fillRect(line, toQColor(SystemColor::Separator, palette()));
    }
};

} // namespace

NativeView* makeSeparatorPeer(View& view, QWidget& parent)
{
    return new SeparatorPeer(view, parent);
}

} // namespace quillbar::platform
