#include "platform/linux/drawing/Conversions.h"
#include "platform/linux/views/NativeView.h"
#include "platform/linux/views/Painting.h"
#include "platform/view/Label.h"

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

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

/// A text; one that is cut shows its whole in a tool tip, unless the view has its own.
class LabelPeer final : public Peer<QWidget, Label> {
public:
    using Peer::Peer;

    void sync() override
    {
        text_ = toQString(portableView()->text());
        auto font = toQFont(portableView()->font());
        double const width = QFontMetricsF(font).horizontalAdvance(text_);
        double const room = portable->frame().width;
        if (portableView()->lineBreak() == LineBreak::Tighten && width > room)
            font.setLetterSpacing(QFont::PercentageSpacing, 100 * (room - 1) / width);
        setFont(font);
        update();
    }

protected:
    bool event(QEvent* event) override
    {
        if (event->type() != QEvent::ToolTip || !toolTip().isEmpty() || !isCut())
            return QWidget::event(event);
        QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), plainToolTip(text_), this);
        return true;
    }

    void paintEvent(QPaintEvent*) override
    {
        if (!portable)
            return;
        QPainter painter(this);
        painter.setPen(textColor(*portable, portableView()->color(), palette()));
        int const alignment = horizontalFlag(portableView()->alignment());
        if (portableView()->lineBreak() == LineBreak::WordWrap)
            painter.drawText(rect(), alignment | Qt::AlignTop | Qt::TextWordWrap, text_);
        else
            drawLine(painter, rect(), alignment, text_);
    }

private:
    [[nodiscard]] bool isCut() const
    {
        return portable && portableView()->lineBreak() == LineBreak::TruncateTail
            && fontMetrics().horizontalAdvance(text_) > width();
    }

    QString text_;
};

} // namespace

NativeView* makeLabelPeer(View& view, QWidget& parent)
{
    return new LabelPeer(view, parent);
}

} // namespace quillbar::platform
