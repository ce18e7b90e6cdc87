#include "platform/linux/widgets/StatusMenuStyle.h"

#include "platform/linux/drawing/Contrast.h"
#include "platform/linux/drawing/Conversions.h"

#include <QFontMetrics>
#include <QPainter>
#include <QStyleOptionMenuItem>

#include <algorithm>

namespace quillbar::platform {

using namespace Qt::StringLiterals;

namespace {

constexpr int iconSide = 16;
constexpr int sidePadding = 8;
constexpr int iconGap = 8;
constexpr int textLeft = sidePadding + iconSide + iconGap;
constexpr int keyGap = 28;
constexpr int rowPadding = 4;
constexpr int separatorHeight = 9;
constexpr int widestText = 480;

struct Texts {
    QString title;
    /// Follows the title, which is cut where both together are too wide.
    QString ending;
    QString keys;
};

Texts textsOf(QStyleOptionMenuItem const& item)
{
    auto const plain = [](QString text) { return text.replace("&&"_L1, "&"_L1); };
    auto const parts = item.text.split('\t'_L1);
    return { plain(parts.value(0)), plain(parts.value(1)), parts.value(2) };
}

void drawSeparator(QStyleOptionMenuItem const& item, QPainter& painter)
{
    auto const middle = item.rect.center().y();
    painter.fillRect(
        QRect(item.rect.left() + sidePadding, middle, item.rect.width() - 2 * sidePadding, 1),
        toQColor(SystemColor::Separator, item.palette));
}

void drawIcon(QStyleOptionMenuItem const& item, QIcon::Mode mode, QPainter& painter)
{
    QRect const place(item.rect.left() + sidePadding,
        item.rect.top() + (item.rect.height() - iconSide) / 2, iconSide, iconSide);
    item.icon.paint(
        &painter, QStyle::visualRect(item.direction, item.rect, place), Qt::AlignCenter, mode);
}

void drawTexts(QStyleOptionMenuItem const& item, QColor const& color, QColor const& keyColor,
    QPainter& painter)
{
    auto const texts = textsOf(item);
    auto const place = item.rect.adjusted(textLeft, 0, -sidePadding - 2, 0);
    auto const isMirrored = item.direction == Qt::RightToLeft;
    auto const vertical = Qt::AlignAbsolute | Qt::AlignVCenter;
    auto const leading = (isMirrored ? Qt::AlignRight : Qt::AlignLeft) | vertical;
    auto const trailing = (isMirrored ? Qt::AlignLeft : Qt::AlignRight) | vertical;
    QFontMetrics const metrics(item.font);
    auto const keyWidth
        = texts.keys.isEmpty() ? 0 : metrics.horizontalAdvance(texts.keys) + iconGap;
    auto const titleWidth = place.width() - keyWidth - metrics.horizontalAdvance(texts.ending);
    auto const title = metrics.elidedText(texts.title, Qt::ElideRight, titleWidth) + texts.ending;
    painter.setFont(item.font);
    // A name reads from the side on which its script begins.
    painter.setLayoutDirection(Qt::LayoutDirectionAuto);
    painter.setPen(color);
    painter.drawText(QStyle::visualRect(item.direction, item.rect, place),
        static_cast<int>(leading) | Qt::TextSingleLine, title);
    painter.setPen(keyColor);
    painter.drawText(QStyle::visualRect(item.direction, item.rect, place),
        static_cast<int>(trailing) | Qt::TextSingleLine, texts.keys);
}

void drawRow(QStyleOptionMenuItem const& item, QPainter& painter)
{
    auto const isEnabled = item.state.testFlag(QStyle::State_Enabled);
    auto const isSelected = isEnabled && item.state.testFlag(QStyle::State_Selected);
    auto const group = isEnabled ? QPalette::Active : QPalette::Disabled;
    auto background = item.palette.color(QPalette::Active, QPalette::Base);
    auto color = item.palette.color(group, QPalette::WindowText);
    auto keyColor = toQColor(SystemColor::SecondaryLabel, item.palette);
    if (isSelected) {
        constexpr int cornerRadius = 4;
        background = item.palette.color(QPalette::Active, QPalette::Highlight);
        painter.setPen(Qt::NoPen);
        painter.setBrush(background);
        painter.drawRoundedRect(item.rect, cornerRadius, cornerRadius);
        color = item.palette.color(QPalette::Active, QPalette::HighlightedText);
        keyColor = color;
    }
    auto const mode = isSelected ? QIcon::Active : (isEnabled ? QIcon::Normal : QIcon::Disabled);
    drawIcon(item, mode, painter);
    drawTexts(item, legible(color, background, textContrast),
        legible(keyColor, background, textContrast), painter);
}

} // namespace

void StatusMenuStyle::drawControl(ControlElement element, QStyleOption const* option,
    QPainter* painter, QWidget const* widget) const
{
    auto const* item
        = element == CE_MenuItem ? qstyleoption_cast<QStyleOptionMenuItem const*>(option) : nullptr;
    if (item == nullptr || item->menuItemType == QStyleOptionMenuItem::SubMenu) {
        QProxyStyle::drawControl(element, option, painter, widget);
        return;
    }
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    if (item->menuItemType == QStyleOptionMenuItem::Separator)
        drawSeparator(*item, *painter);
    else
        drawRow(*item, *painter);
    painter->restore();
}

QSize StatusMenuStyle::sizeFromContents(
    ContentsType type, QStyleOption const* option, QSize const& size, QWidget const* widget) const
{
    auto const* item
        = type == CT_MenuItem ? qstyleoption_cast<QStyleOptionMenuItem const*>(option) : nullptr;
    if (item == nullptr)
        return QProxyStyle::sizeFromContents(type, option, size, widget);
    if (item->menuItemType == QStyleOptionMenuItem::Separator)
        return { size.width(), separatorHeight };
    QFontMetrics const metrics(item->font);
    auto const height = std::max(metrics.height(), iconSide) + 2 * rowPadding;
    auto const keyWidth = metrics.horizontalAdvance(textsOf(*item).keys);
    return { textLeft + std::min(size.width(), widestText) + keyGap + keyWidth + sidePadding,
        height };
}

int StatusMenuStyle::pixelMetric(
    PixelMetric metric, QStyleOption const* option, QWidget const* widget) const
{
    constexpr int panelPadding = 4;
    if (metric == PM_MenuHMargin || metric == PM_MenuVMargin)
        return panelPadding;
    return QProxyStyle::pixelMetric(metric, option, widget);
}

int StatusMenuStyle::styleHint(StyleHint hint, QStyleOption const* option, QWidget const* widget,
    QStyleHintReturn* returnData) const
{
    if (hint == SH_Menu_Scrollable)
        return 1;
    return QProxyStyle::styleHint(hint, option, widget, returnData);
}

} // namespace quillbar::platform
