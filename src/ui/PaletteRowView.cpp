#include "ui/PaletteRowView.h"

#include "platform/view/TextSize.h"
#include "ui/Texts.h"

#include <algorithm>
#include <utility>

namespace quillbar {

using platform::Rect;
using platform::SystemColor;

namespace {

constexpr double inset = 12;
constexpr double gap = 8;
constexpr platform::Font nameFont { .size = 14 };
constexpr platform::Font groupFont { .size = 11 };

Rect centredVertically(double x, double width, double height, double rowHeight)
{
    return { x, (rowHeight - height) / 2, std::max(width, 0.0), height };
}

} // namespace

PaletteRowView::PaletteRowView()
    : nameLabel_(addText(*this, {}, "", { .font = nameFont }))
    , groupLabel_(addText(*this, {}, "",
          { .font = groupFont,
              .color = SystemColor::SecondaryLabel,
              .alignment = platform::TextAlignment::Right }))
{
}

void PaletteRowView::setRole(Role role, std::string name, std::string group)
{
    auto const isShortcut = role == Role::Shortcut;
    if (!isShortcut)
        group.clear();
    nameLabel_->setText(std::move(name));
    nameLabel_->setColor(isShortcut ? SystemColor::Label : SystemColor::SecondaryLabel);
    groupLabel_->setHidden(group.empty());
    groupLabel_->setText(std::move(group));
    layout();
}

void PaletteRowView::layout()
{
    auto const width = frame().width;
    auto const height = frame().height;
    auto nameEnd = width - inset;
    if (!groupLabel_->isHidden()) {
        auto const size = platform::textSize(groupLabel_->text(), groupFont);
        // A long group gets at most half of the row.
        auto const groupWidth = std::min(size.width, (width - 2 * inset - gap) / 2);
        groupLabel_->setFrame(
            centredVertically(width - inset - groupWidth, groupWidth, size.height, height));
        nameEnd -= groupWidth + gap;
    }
    auto const nameHeight = platform::textSize(nameLabel_->text(), nameFont).height;
    nameLabel_->setFrame(centredVertically(inset, nameEnd - inset, nameHeight, height));
}

} // namespace quillbar
