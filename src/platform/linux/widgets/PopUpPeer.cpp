#include "platform/linux/drawing/Contrast.h"
#include "platform/linux/drawing/Conversions.h"
#include "platform/linux/drawing/ImageRenderer.h"
#include "platform/linux/widgets/NativeView.h"
#include "platform/linux/widgets/Painting.h"
#include "platform/view/PopUpButton.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QComboBox>
#include <QKeyEvent>
#include <QPainter>
#include <QPixmap>
#include <QStandardItemModel>
#include <QStyleOptionComboBox>
#include <QWheelEvent>

#include <algorithm>

namespace quillbar::platform {

namespace {

constexpr int textMargin = 6;
constexpr int ringInset = 2;
constexpr double imageSide = 16;

int toIndex(std::optional<std::size_t> index)
{
    return index ? static_cast<int>(*index) : -1;
}

class PopUpPeer final : public Peer<QComboBox, PopUpButton> {
public:
    PopUpPeer(View& view, QWidget& parent)
        : Peer(view, parent)
    {
        connect(this, &QComboBox::activated, this, [this](int index) {
            auto* const button = portableView();
            if (!button || index < 0)
                return;
            button->userSelected(static_cast<std::size_t>(index));
            if (portable)
                selectPortableItem();
        });
    }

    void sync() override
    {
        font_ = toQFont(portableView()->font());
        image_.invalidate();
        if (itemsVersion_ == portableView()->itemsVersion())
            selectPortableItem();
        else
            fillLater();
        update();
    }

    void showPopup() override
    {
        if (!portable)
            return;
        fill();
        setFont(font_);
        setIconSize(QSize(static_cast<int>(imageSide), static_cast<int>(imageSide)));
        for (int index = 0; index < count(); ++index) {
            if (auto const& image = portableView()->items()[static_cast<std::size_t>(index)].image)
                setItemIcon(index, iconOf(*image));
        }
        setMaxVisibleItems(20);
        auto* const list = QComboBox::view();
        constexpr int widestList = 480;
        list->setTextElideMode(Qt::ElideRight);
        // Scrolled by whole entries, a list too long for the screen would have a gap at its end.
        list->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
        list->setMinimumWidth(
            std::clamp(list->sizeHintForColumn(0) + 24, width(), std::max(width(), widestList)));
        QComboBox::showPopup();
    }

protected:
    // The wheel scrolls the view around; QComboBox would choose another item.
    void wheelEvent(QWheelEvent* event) override { event->ignore(); }

    void keyPressEvent(QKeyEvent* event) override
    {
        switch (event->key()) {
        case Qt::Key_Space:
        case Qt::Key_Up:
        case Qt::Key_Down:
        case Qt::Key_F4:
            showPopup();
            break;
        default:
            event->ignore();
        }
    }

    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        QStyleOptionComboBox option;
        initStyleOption(&option);
        bool const isFocused
            = option.state.testFlags(QStyle::State_HasFocus | QStyle::State_KeyboardFocusChange);
        option.state &= ~QStyle::State_HasFocus;
        style()->drawComplexControl(QStyle::CC_ComboBox, &option, &painter, this);
        if (isFocused)
            drawFocus(painter, option);
        auto const* const item = portableView()->selectedItem();
        if (!item)
            return;
        auto const arrow
            = style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxArrow, this);
        QRect text(
            QPoint(textMargin, 0), QPoint(std::max(textMargin, arrow.left() - 1), height() - 1));
        auto const color = palette().color(
            isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::ButtonText);
        if (item->image) {
            auto const side = static_cast<int>(imageSide);
            image_.draw(painter, QRect(text.left(), 0, side, height()), *item->image,
                QSizeF(imageSide, imageSide), color);
            text.setLeft(text.left() + side + textMargin);
        }
        painter.setFont(font_);
        painter.setPen(color);
        drawLine(painter, text, Qt::AlignLeft, toQString(item->title));
    }

private:
    void drawFocus(QPainter& painter, QStyleOptionComboBox const& option)
    {
        auto const color = legibleOnBevel(palette().color(QPalette::Active, QPalette::Highlight),
            outlineContrast, size(), backgroundOf(*portable, palette()), [&](QPainter& bevel) {
                style()->drawComplexControl(QStyle::CC_ComboBox, &option, &bevel, this);
            });
        drawFocusRing(
            painter, rect().adjusted(ringInset, ringInset, -ringInset, -ringInset), color);
    }

    [[nodiscard]] QIcon iconOf(Image const& image) const
    {
        return QPixmap::fromImage(renderImage(image,
            { .symbolSize = QSizeF(imageSide, imageSide),
                .devicePixelRatio = devicePixelRatioF(),
                .foreground = palette().color(QPalette::Text),
                .palette = palette() }));
    }

    // Items are added one by one. Only the open list and assistive technology need them, so the
    // list is filled once.
    void fillLater()
    {
        if (!std::exchange(isFillPending_, true))
            QMetaObject::invokeMethod(
                this, [this] { fill(); }, Qt::QueuedConnection);
    }

    void fill()
    {
        isFillPending_ = false;
        if (!portable || itemsVersion_ == portableView()->itemsVersion())
            return;
        itemsVersion_ = portableView()->itemsVersion();
        clear();
        auto* const items = static_cast<QStandardItemModel*>(QComboBox::model());
        for (auto const& item : portableView()->items()) {
            if (item.kind == MenuItemKind::Separator) {
                insertSeparator(count());
                continue;
            }
            addItem(withoutTabs(toQString(item.title)));
            items->item(count() - 1)->setEnabled(item.isEnabled);
        }
        selectPortableItem();
    }

    void selectPortableItem()
    {
        auto const before = currentText();
        setCurrentIndex(toIndex(portableView()->selectedIndex()));
        if (currentText() == before)
            return;
        QAccessibleEvent event(this, QAccessible::DescriptionChanged);
        QAccessible::updateAccessibility(&event);
    }

    QFont font_;
    CachedImage image_;
    std::size_t itemsVersion_ = 0;
    bool isFillPending_ = false;
};

} // namespace

NativeView* makePopUpPeer(View& view, QWidget& parent)
{
    return new PopUpPeer(view, parent);
}

} // namespace quillbar::platform
