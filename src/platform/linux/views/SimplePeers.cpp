#include "platform/linux/drawing/Conversions.h"
#include "platform/linux/views/NativeView.h"
#include "platform/linux/views/Painting.h"
#include "platform/linux/views/WindowPeer.h"
#include "platform/view/EffectView.h"
#include "platform/view/ImageView.h"
#include "platform/view/Separator.h"
#include "platform/view/TextField.h"

#include <QLineEdit>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>

namespace quillbar::platform {

namespace {

class ImagePeer final : public Peer<QWidget, ImageView> {
public:
    using Peer::Peer;

    void sync() override
    {
        image_.invalidate();
        update();
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        if (!portable || !portableView()->image())
            return;
        QPainter painter(this);
        auto const tint = portableView()->contentTintColor().value_or(SystemColor::Label);
        image_.drawScaled(painter, rect(), *portableView()->image(),
            textColor(*portable, tint, palette()),
            portableView()->scaling() == ImageScaling::ProportionallyUpOrDown);
    }

private:
    CachedImage image_;
};

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

/// The ground of a clear window. It is opaque, because few compositors blur what shines through.
class EffectPeer final : public Peer<QWidget, EffectView> {
public:
    using Peer::Peer;

    void sync() override
    {
        if (auto const* const window = portable->window())
            window->native()->setGround(outline(0));
        update();
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        if (!portable)
            return;
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.fillPath(outline(0), palette().color(QPalette::Window));
        auto edge = toQColor(portableView()->borderColor(), palette());
        double width = std::max(portableView()->borderWidth(), 1 / devicePixelRatioF());
        // Compositors draw no shadow around a clear window: the edge alone sets it apart.
        if (auto const* const window = portable->window(); window && window->hasShadow()) {
            edge = faded(palette().color(QPalette::WindowText), shadowShare);
            width = std::max(width, 1.0);
        }
        // Half of a line on the outline would be cut off.
        painter.strokePath(outline(width / 2), QPen(edge, width));
    }

private:
    static constexpr double shadowShare = 0.4;

    [[nodiscard]] QPainterPath outline(double inset) const
    {
        QPainterPath path;
        double const radius = portableView()->cornerRadius() - inset;
        path.addRoundedRect(QRectF(QPointF(), toQRectF(portable->frame()).size())
                                .adjusted(inset, inset, -inset, -inset),
            radius, radius);
        return path;
    }
};

class TextFieldPeer final : public Peer<QLineEdit, TextField> {
public:
    TextFieldPeer(View& view, QWidget& parent)
        : Peer(view, parent)
    {
        if (portableView()->style() == TextFieldStyle::Plain) {
            setFrame(false);
            auto clear = palette();
            clear.setColor(QPalette::Base, Qt::transparent);
            setPalette(clear);
        }
        connect(this, &QLineEdit::textEdited, this, [this](QString const& text) {
            if (auto* const field = portableView())
                field->userTyped(text.toStdString());
        });
    }

    void sync() override
    {
        if (auto const font = toQFont(portableView()->font()); font != QWidget::font())
            setFont(font);
        if (auto const placeholder = toQString(portableView()->placeholder());
            placeholder != placeholderText())
            setPlaceholderText(placeholder);
        // Setting the same text would move the cursor and end a composition.
        if (auto const text = toQString(portableView()->text()); text != QLineEdit::text())
            setText(text);
    }
};

} // namespace

NativeView* makeImagePeer(View& view, QWidget& parent)
{
    return new ImagePeer(view, parent);
}

NativeView* makeSeparatorPeer(View& view, QWidget& parent)
{
    return new SeparatorPeer(view, parent);
}

NativeView* makeEffectPeer(View& view, QWidget& parent)
{
    return new EffectPeer(view, parent);
}

NativeView* makeTextFieldPeer(View& view, QWidget& parent)
{
    return new TextFieldPeer(view, parent);
}

} // namespace quillbar::platform
