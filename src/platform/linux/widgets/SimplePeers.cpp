#include "platform/linux/drawing/Contrast.h"
#include "platform/linux/drawing/Conversions.h"
#include "platform/linux/widgets/NativeView.h"
#include "platform/linux/widgets/Painting.h"
#include "platform/linux/widgets/WindowPeer.h"
#include "platform/view/EffectView.h"
#include "platform/view/ImageView.h"
#include "platform/view/Label.h"
#include "platform/view/Separator.h"
#include "platform/view/TextField.h"

#include <QLineEdit>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>

namespace quillbar::platform {

namespace {

QWidget& parentFor(View const& view)
{
    return view.superview() ? view.superview()->native()->host() : *view.window()->native();
}

class ContainerPeer final : public Peer<QWidget, View> {
public:
    using Peer::Peer;

    // A container draws nothing itself.
    void sync() override { }
};

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
        bool const mayBeCut = portable && portableView()->lineBreak() == LineBreak::TruncateTail;
        return (mayBeCut && showCutText(event, *this, text_, width())) || QWidget::event(event);
    }

    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.setPen(textColor(*portable, portableView()->color(), palette()));
        int const alignment = horizontalFlag(portableView()->alignment());
        if (portableView()->lineBreak() == LineBreak::WordWrap)
            painter.drawText(rect(), alignment | Qt::AlignTop | Qt::TextWordWrap, text_);
        else
            drawLine(painter, rect(), alignment, text_);
    }

private:
    QString text_;
};

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
        if (!portableView()->image())
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

/// The background of a clear window. It is opaque, because few compositors blur what is behind it.
class EffectPeer final : public Peer<QWidget, EffectView> {
public:
    using Peer::Peer;

    void sync() override
    {
        if (auto const* const window = portable->window())
            window->native()->setOutline(outline(0));
        update();
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.fillPath(outline(0), palette().color(QPalette::Window));
        auto edge = toQColor(portableView()->borderColor(), palette());
        double width = std::max(portableView()->borderWidth(), 1 / devicePixelRatioF());
        // Most compositors draw no shadow around a clear window: the edge alone sets it apart.
        if (auto const* const window = portable->window(); window && window->hasShadow()) {
            edge = legible(faded(palette().color(QPalette::WindowText), shadowShare),
                palette().color(QPalette::Window), outlineContrast);
            width = std::max(width, 1.0);
        }
        // Without a compositor the window's shape ends at whole pixels: each of its outermost ones
        // gets the full colour of the edge.
        QPainterPath ring;
        if (QWidget::window()->testAttribute(Qt::WA_TranslucentBackground))
            ring = outline(0);
        else
            ring.addRect(rect());
        ring.addPath(outline(width));
        painter.fillPath(ring, edge);
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
        if (auto const text = QString::fromStdString(portableView()->text());
            text != QLineEdit::text())
            setText(text);
    }
};

} // namespace

NativeView* createNativeView(View& view)
{
    auto& parent = parentFor(view);
    switch (view.kind()) {
    case ViewKind::View:
        return new ContainerPeer(view, parent);
    case ViewKind::Label:
        return new LabelPeer(view, parent);
    case ViewKind::Button:
        return makeButtonPeer(view, parent);
    case ViewKind::PopUpButton:
        return makePopUpPeer(view, parent);
    case ViewKind::TextField:
        return new TextFieldPeer(view, parent);
    case ViewKind::ImageView:
        return new ImagePeer(view, parent);
    case ViewKind::Separator:
        return new SeparatorPeer(view, parent);
    case ViewKind::ScrollView:
        return makeScrollPeer(view, parent);
    case ViewKind::TableView:
        return makeTablePeer(view, parent);
    case ViewKind::EffectView:
        return new EffectPeer(view, parent);
    }
    return nullptr;
}

} // namespace quillbar::platform
