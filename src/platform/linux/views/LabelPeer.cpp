#include "platform/linux/drawing/Conversions.h"
#include "platform/linux/views/NativeView.h"
#include "platform/linux/views/TextDrawing.h"
#include "platform/view/Label.h"

#include <QPainter>

namespace quillbar::platform {

namespace {

int horizontalFlag(TextAlignment alignment)
{
    switch (alignment) {
    case TextAlignment::Left:
        return Qt::AlignLeft;
    case TextAlignment::Center:
        return Qt::AlignHCenter;
    case TextAlignment::Right:
        return Qt::AlignRight;
    }
    return Qt::AlignLeft;
}

class LabelPeer final : public Peer<QWidget, Label> {
public:
    using Peer::Peer;

    void sync() override
    {
        text_ = toQString(portableView()->text());
        font_ = toQFont(portableView()->font());
        update();
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        if (!portable)
            return;
        QPainter painter(this);
        painter.setFont(font_);
        painter.setPen(textColor(*portable, portableView()->color(), palette()));
        int const alignment = horizontalFlag(portableView()->alignment());
        if (portableView()->lineBreak() == LineBreak::WordWrap)
            drawParagraph(painter, rect(), alignment, text_);
        else
            drawLine(painter, rect(), alignment, text_);
    }

private:
    QString text_;
    QFont font_;
};

} // namespace

NativeView* makeLabelPeer(View& view, QWidget& parent)
{
    return new LabelPeer(view, parent);
}

} // namespace quillbar::platform
