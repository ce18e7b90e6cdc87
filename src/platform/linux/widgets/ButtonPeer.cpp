#include "platform/linux/drawing/Contrast.h"
#include "platform/linux/drawing/Conversions.h"
#include "platform/linux/widgets/NativeView.h"
#include "platform/linux/widgets/Painting.h"
#include "platform/view/Button.h"

#include <QKeyEvent>
#include <QPainter>
#include <QPushButton>
#include <QStyleOptionButton>

#include <algorithm>

namespace quillbar::platform {

namespace {

constexpr int checkBoxGap = 4;
constexpr int pushMargin = 8;
constexpr int symbolMargin = 2;
constexpr int ringInset = 3;
constexpr int textInset = 4;
constexpr int cueHeight = 2;
constexpr int imageSide = 14;
constexpr int imageGap = 4;
constexpr double hoverShare = 0.08;
constexpr double pressedShare = 0.16;
constexpr double hoverRadius = 4;
constexpr double disabledShare = 0.4;
constexpr double outlineShare = 0.4;

/// What a push button and a check box have in common.
class ClickablePeer : public Peer<QPushButton, Button> {
public:
    ClickablePeer(View& view, QWidget& parent)
        : Peer(view, parent)
    {
        setAutoDefault(false);
        connect(this, &QPushButton::clicked, this, [this] {
            if (auto* const button = portableView())
                button->userClicked();
        });
    }

protected:
    void keyPressEvent(QKeyEvent* event) override
    {
        // QPushButton would move the focus, which is the portable window's part.
        switch (event->key()) {
        case Qt::Key_Left:
        case Qt::Key_Right:
        case Qt::Key_Up:
        case Qt::Key_Down:
            event->ignore();
            break;
        default:
            QPushButton::keyPressEvent(event);
        }
    }

    /// The peers draw the focus themselves, for styles draw none on a default button. Returns
    /// whether there is one to show.
    [[nodiscard]] bool takeFocus(QStyleOptionButton& option) const
    {
        auto constexpr focused = QStyle::State_HasFocus | QStyle::State_KeyboardFocusChange;
        bool const isShown = (option.state & focused) == focused;
        option.state &= ~QStyle::State_HasFocus;
        return isShown;
    }

    [[nodiscard]] QColor focusColor() const
    {
        return legible(palette().color(QPalette::Active, QPalette::Highlight),
            backgroundOf(*portable, palette()), outlineContrast);
    }
};

/// A push button, or a borderless one: the style draws the bevel, the content is drawn here, as
/// the style's own margins would not fit the frames.
class ButtonPeer final : public ClickablePeer {
public:
    using ClickablePeer::ClickablePeer;

    void sync() override
    {
        auto const& attributed = portableView()->attributedTitle();
        text_ = toQString(portableView()->visibleText());
        font_ = toQFont(attributed ? attributed->font : portableView()->font());
        font_.setUnderline(attributed && attributed->isUnderlined);
        image_.invalidate();
        update();
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        QStyleOptionButton option;
        initStyleOption(&option);
        painter.setFont(font_);
        bool const isFocused = takeFocus(option);
        if (isPush())
            drawBevel(painter, option);
        else
            drawHover(painter, option);
        drawContent(painter, option);
        if (isFocused)
            drawFocus(painter, option);
    }

private:
    [[nodiscard]] bool isPush() const { return portableView()->style() == ButtonStyle::Push; }

    void drawBevel(QPainter& painter, QStyleOptionButton& option)
    {
        if (portableView()->keyEquivalent() == ButtonKey::Return)
            option.features |= QStyleOptionButton::DefaultButton;
        style()->drawControl(QStyle::CE_PushButtonBevel, &option, &painter, this);
    }

    [[nodiscard]] QColor onBevel(
        QColor const& color, double contrast, QStyleOptionButton const& option) const
    {
        return legibleOnBevel(
            color, contrast, size(), backgroundOf(*portable, palette()), [&](QPainter& painter) {
                style()->drawControl(QStyle::CE_PushButtonBevel, &option, &painter, this);
            });
    }

    void drawHover(QPainter& painter, QStyleOptionButton const& option)
    {
        bool const isPressed = option.state & QStyle::State_Sunken;
        if (isPressed || ((option.state & QStyle::State_MouseOver) && isEnabled())) {
            painter.setPen(Qt::NoPen);
            painter.setBrush(faded(
                palette().color(QPalette::WindowText), isPressed ? pressedShare : hoverShare));
            painter.drawRoundedRect(contentRect(painter), hoverRadius, hoverRadius);
        }
    }

    void drawFocus(QPainter& painter, QStyleOptionButton const& option)
    {
        if (!isPush()) {
            drawFocusRing(painter, contentRect(painter), focusColor());
            return;
        }
        auto const color = onBevel(
            palette().color(QPalette::Active, QPalette::Highlight), outlineContrast, option);
        auto const inside = rect().adjusted(ringInset, ringInset, -ringInset, -ringInset);
        if (portable->focusRing() == FocusRing::Default) {
            drawFocusRing(painter, inside, color);
            return;
        }
        // Without a ring the text is underlined.
        auto const text = contentRect(painter);
        painter.fillRect(text.left(), inside.bottom() - cueHeight, text.width(), cueHeight, color);
    }

    /// What is seen of a borderless button: a long one may have a short title.
    [[nodiscard]] QRect contentRect(QPainter const& painter) const
    {
        if (showsImageAlone())
            return rect();
        auto const width = painter.fontMetrics().horizontalAdvance(text_) + 2 * textInset;
        QRect content(0, 0, std::min(width, this->width()), height());
        content.moveCenter(rect().center());
        return content;
    }

    [[nodiscard]] bool showsImageAlone() const
    {
        return portableView()->image() && portableView()->title().empty()
            && !portableView()->attributedTitle();
    }

    void drawContent(QPainter& painter, QStyleOptionButton const& option)
    {
        auto const color = contentColor(option);
        if (showsImageAlone()) {
            auto const side = std::min(width(), height()) - 2 * symbolMargin;
            image_.draw(painter, rect(), *portableView()->image(), QSizeF(side, side), color);
            return;
        }
        painter.setPen(color);
        drawLine(painter, titleRect(painter, color), Qt::AlignHCenter, text_);
    }

    /// Draws the image that stands before the title; returns what is left for that.
    [[nodiscard]] QRect titleRect(QPainter& painter, QColor const& color)
    {
        int const margin = isPush() ? pushMargin : 0;
        auto const content = rect().adjusted(margin, 0, -margin, 0);
        if (!portableView()->image())
            return content;
        auto const side = std::min(imageSide, height() - 2 * symbolMargin);
        QRect const place(content.left(), content.top(), side, content.height());
        image_.draw(painter, QStyle::visualRect(layoutDirection(), content, place),
            *portableView()->image(), QSizeF(side, side), color);
        // In the middle of the button as long as there is room on both sides.
        int const lead = side + imageGap;
        auto const middle = content.adjusted(lead, 0, -lead, 0);
        if (painter.fontMetrics().horizontalAdvance(text_) <= middle.width())
            return middle;
        return QStyle::visualRect(layoutDirection(), content, content.adjusted(lead, 0, 0, 0));
    }

    [[nodiscard]] QColor contentColor(QStyleOptionButton const& option) const
    {
        auto const& attributed = portableView()->attributedTitle();
        auto const tint = portableView()->contentTintColor().value_or(SystemColor::Label);
        auto const color = attributed ? attributed->color : tint;
        if (!isPush())
            return textColor(*portable, color, palette());
        bool const isPlain = color == Color(SystemColor::Label);
        auto const text = isPlain ? option.palette.color(QPalette::Active, QPalette::ButtonText)
                                  : toQColor(color, palette());
        if (isPlain && isEnabled())
            return text;
        return onBevel(isEnabled() ? text : faded(text, disabledShare), textContrast, option);
    }

    QString text_;
    QFont font_;
    CachedImage image_;
};

/// A checkable QPushButton, because Qt tells assistive technology the indicator's rectangle for a
/// QCheckBox that draws its own text.
class CheckBoxPeer final : public ClickablePeer {
public:
    CheckBoxPeer(View& view, QWidget& parent)
        : ClickablePeer(view, parent)
    {
        setCheckable(true);
    }

    void sync() override
    {
        text_ = toQString(portableView()->visibleText());
        setFont(toQFont(portableView()->font()));
        setChecked(portableView()->state() == ButtonState::On);
        update();
    }

protected:
    // The portable button changes the state, which sync() sets; Qt must not change it as well.
    void nextCheckState() override { }

    bool event(QEvent* event) override
    {
        return showCutText(event, *this, text_, titleRect().width()) || QPushButton::event(event);
    }

    bool hitButton(QPoint const& position) const override { return rect().contains(position); }

    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        QStyleOptionButton option;
        initStyleOption(&option);
        bool const isFocused = takeFocus(option);
        option.state.setFlag(QStyle::State_Off, !isChecked());
        auto const box = indicatorRect();
        auto const title = titleRect();
        option.rect = box;
        style()->drawPrimitive(QStyle::PE_IndicatorCheckBox, &option, &painter, this);
        drawOutline(painter, box);
        auto const color = textColor(*portable, SystemColor::Label, palette());
        painter.setPen(isEnabled() ? color : faded(color, disabledShare));
        drawLine(painter, title, Qt::AlignLeft, text_);
        if (isFocused && portable->focusRing() == FocusRing::Default)
            drawFocus(painter, title);
    }

private:
    [[nodiscard]] QRect indicatorRect() const
    {
        auto const* const metrics = style();
        auto const side = std::min({ metrics->pixelMetric(QStyle::PM_IndicatorWidth, nullptr, this),
            metrics->pixelMetric(QStyle::PM_IndicatorHeight, nullptr, this), height() });
        return { 0, (height() - side) / 2, side, side };
    }

    [[nodiscard]] QRect titleRect() const
    {
        return { QPoint(indicatorRect().right() + 1 + checkBoxGap, 0), rect().bottomRight() };
    }

    // Styles draw an outline that is faint on a light background and cannot be seen on a dark one.
    void drawOutline(QPainter& painter, QRect const& box)
    {
        painter.save();
        // The pen is centred on the rectangle; its outer half must stay inside at every scale.
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(legible(faded(palette().color(QPalette::WindowText), outlineShare),
            backgroundOf(*portable, palette()), outlineContrast));
        painter.drawRect(QRectF(box).adjusted(0.5, 0.5, -0.5, -0.5));
        painter.restore();
    }

    void drawFocus(QPainter& painter, QRect const& title)
    {
        auto ring = title.adjusted(1 - checkBoxGap, 0, 0, 0);
        auto const width = painter.fontMetrics().horizontalAdvance(text_) + 2 * (checkBoxGap - 1);
        ring.setWidth(std::min(ring.width(), width));
        drawFocusRing(painter, ring, focusColor());
    }

    QString text_;
};

} // namespace

NativeView* makeButtonPeer(View& view, QWidget& parent)
{
    if (static_cast<Button&>(view).style() == ButtonStyle::CheckBox)
        return new CheckBoxPeer(view, parent);
    return new ButtonPeer(view, parent);
}

} // namespace quillbar::platform
