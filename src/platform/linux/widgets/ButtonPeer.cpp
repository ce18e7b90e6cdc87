#include "platform/linux/drawing/Conversions.h"
#include "platform/linux/widgets/NativeView.h"
#include "platform/linux/widgets/Painting.h"
#include "platform/view/Button.h"

#include <QPainter>
#include <QPushButton>
#include <QStyleOptionButton>

#include <algorithm>

namespace quillbar::platform {

namespace {

constexpr int checkBoxGap = 4;
constexpr int pushMargin = 8;
constexpr int symbolMargin = 2;
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
    static bool showsKeyboardFocus(QStyleOptionButton const& option)
    {
        auto constexpr focused = QStyle::State_HasFocus | QStyle::State_KeyboardFocusChange;
        return (option.state & focused) == focused;
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
        if (portable->focusRing() == FocusRing::None)
            option.state &= ~QStyle::State_HasFocus;
        if (isPush())
            drawBevel(painter, option);
        else
            drawHover(painter, option);
        drawContent(painter, option);
    }

private:
    [[nodiscard]] bool isPush() const { return portableView()->style() == ButtonStyle::Push; }

    void drawBevel(QPainter& painter, QStyleOptionButton& option)
    {
        if (portableView()->keyEquivalent() == ButtonKey::Return)
            option.features |= QStyleOptionButton::DefaultButton;
        style()->drawControl(QStyle::CE_PushButton, &option, &painter, this);
    }

    void drawHover(QPainter& painter, QStyleOptionButton const& option)
    {
        bool const isPressed = option.state & QStyle::State_Sunken;
        if (isPressed || ((option.state & QStyle::State_MouseOver) && isEnabled())) {
            painter.setPen(Qt::NoPen);
            painter.setBrush(faded(
                palette().color(QPalette::WindowText), isPressed ? pressedShare : hoverShare));
            painter.drawRoundedRect(rect(), hoverRadius, hoverRadius);
        }
        if (showsKeyboardFocus(option)) {
            painter.setPen(palette().color(QPalette::Highlight));
            painter.setBrush(Qt::NoBrush);
            painter.drawRoundedRect(
                QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), hoverRadius, hoverRadius);
        }
    }

    void drawContent(QPainter& painter, QStyleOptionButton const& option)
    {
        auto const color
            = isEnabled() ? contentColor(option) : faded(contentColor(option), disabledShare);
        bool const showsImage = portableView()->image() && portableView()->title().empty()
            && !portableView()->attributedTitle();
        if (showsImage) {
            auto const side = std::min(width(), height()) - 2 * symbolMargin;
            image_.draw(painter, rect(), *portableView()->image(), QSizeF(side, side), color);
            return;
        }
        painter.setFont(font_);
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
        if (auto const& attributed = portableView()->attributedTitle();
            attributed && attributed->color != Color(SystemColor::Label))
            return textColor(*portable, attributed->color, palette());
        if (isPush())
            return option.palette.color(QPalette::Active, QPalette::ButtonText);
        return textColor(
            *portable, portableView()->contentTintColor().value_or(SystemColor::Label), palette());
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
        font_ = toQFont(portableView()->font());
        setChecked(portableView()->state() == ButtonState::On);
        update();
    }

protected:
    // The portable button changes the state, which sync() sets; Qt must not change it as well.
    void nextCheckState() override { }

    bool hitButton(QPoint const& position) const override { return rect().contains(position); }

    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        QStyleOptionButton option;
        initStyleOption(&option);
        option.state.setFlag(QStyle::State_Off, !isChecked());
        auto const box = indicatorRect(option);
        auto const title = QRect(QPoint(box.right() + 1 + checkBoxGap, 0), rect().bottomRight());
        option.rect = box;
        style()->drawPrimitive(QStyle::PE_IndicatorCheckBox, &option, &painter, this);
        drawOutline(painter, box);
        painter.setFont(font_);
        auto const color = textColor(*portable, SystemColor::Label, palette());
        painter.setPen(isEnabled() ? color : faded(color, disabledShare));
        drawLine(painter, title, Qt::AlignLeft, text_);
        drawFocus(painter, option, title);
    }

private:
    [[nodiscard]] QRect indicatorRect(QStyleOptionButton const& option) const
    {
        auto const* const metrics = style();
        auto const side = std::min({ metrics->pixelMetric(QStyle::PM_IndicatorWidth, &option, this),
            metrics->pixelMetric(QStyle::PM_IndicatorHeight, &option, this), height() });
        return { 0, (height() - side) / 2, side, side };
    }

    // Styles draw the outline darker than the background; on a dark one it cannot be seen.
    void drawOutline(QPainter& painter, QRect const& box)
    {
        if (!isDark(palette()))
            return;
        painter.save();
        // The pen is centred on the rectangle; its outer half must stay inside at every scale.
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(faded(palette().color(QPalette::WindowText), outlineShare));
        painter.drawRect(QRectF(box).adjusted(0.5, 0.5, -0.5, -0.5));
        painter.restore();
    }

    void drawFocus(QPainter& painter, QStyleOptionButton const& option, QRect const& title)
    {
        if (!showsKeyboardFocus(option) || portable->focusRing() == FocusRing::None)
            return;
        QStyleOptionFocusRect ring;
        ring.QStyleOption::operator=(option);
        auto const textWidth = painter.fontMetrics().horizontalAdvance(text_);
        ring.rect = title.adjusted(-2, 0, 0, 0);
        ring.rect.setWidth(std::min(ring.rect.width(), textWidth + 4));
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &ring, &painter, this);
    }

    QString text_;
    QFont font_;
};

} // namespace

NativeView* makeButtonPeer(View& view, QWidget& parent)
{
    if (static_cast<Button&>(view).style() == ButtonStyle::CheckBox)
        return new CheckBoxPeer(view, parent);
    return new ButtonPeer(view, parent);
}

} // namespace quillbar::platform
