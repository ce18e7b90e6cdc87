#include "platform/linux/drawing/Conversions.h"
#include "platform/linux/views/NativeView.h"
#include "platform/linux/views/Painting.h"
#include "platform/view/Button.h"

#include <QPainter>
#include <QPushButton>
#include <QStyleOptionButton>

#include <algorithm>

namespace quillbar::platform {

namespace {

constexpr int titleGap = 4;

/// A checkable QPushButton, because Qt tells assistive technology the indicator's rectangle for a
/// QCheckBox that draws its own text.
class CheckBoxPeer final : public Peer<QPushButton, Button> {
public:
    CheckBoxPeer(View& view, QWidget& parent)
        : Peer(view, parent)
    {
        setAutoDefault(false);
        setCheckable(true);
        connect(this, &QPushButton::clicked, this, [this] {
            if (auto* const button = portableView())
                button->userClicked();
        });
    }

    void sync() override
    {
        text_ = toQString(portableView()->visibleText());
        font_ = toQFont(portableView()->font());
        setChecked(portableView()->state() == ButtonState::On);
        update();
    }

protected:
    // The state changes in the portable button, which brings it here.
    void nextCheckState() override { }

    bool hitButton(QPoint const& position) const override { return rect().contains(position); }

    void paintEvent(QPaintEvent*) override
    {
        if (!portable)
            return;
        QPainter painter(this);
        QStyleOptionButton option;
        initStyleOption(&option);
        option.state.setFlag(QStyle::State_Off, !isChecked());
        auto const box = indicatorRect(option);
        auto const title = QRect(QPoint(box.right() + 1 + titleGap, 0), rect().bottomRight());
        option.rect = box;
        style()->drawPrimitive(QStyle::PE_IndicatorCheckBox, &option, &painter, this);
        drawOutline(painter, box);
        painter.setFont(font_);
        auto const color = textColor(*portable, SystemColor::Label, palette());
        painter.setPen(isEnabled() ? color : faded(color, 0.4));
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

    // Styles draw the outline darker than the ground, which leaves none on a dark one.
    void drawOutline(QPainter& painter, QRect const& box)
    {
        if (!isDark(palette()))
            return;
        painter.save();
        // The line's middle, so that all four sides stay inside at every scale.
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(faded(palette().color(QPalette::WindowText), 0.4));
        painter.drawRect(QRectF(box).adjusted(0.5, 0.5, -0.5, -0.5));
        painter.restore();
    }

    void drawFocus(QPainter& painter, QStyleOptionButton const& option, QRect const& title)
    {
        auto constexpr focused = QStyle::State_HasFocus | QStyle::State_KeyboardFocusChange;
        if ((option.state & focused) != focused || portable->focusRing() == FocusRing::None)
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

NativeView* makeCheckBoxPeer(View& view, QWidget& parent)
{
    return new CheckBoxPeer(view, parent);
}

} // namespace quillbar::platform
