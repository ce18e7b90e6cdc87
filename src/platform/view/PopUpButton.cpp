#include "platform/view/PopUpButton.h"

namespace quillbar::platform {

void PopUpButton::removeAllItems()
{
    items_.clear();
    selectedIndex_.reset();
    ++itemsVersion_;
    sync();
}

void PopUpButton::addItem(MenuItem item)
{
    items_.push_back(std::move(item));
    if (!selectedIndex_)
        selectedIndex_ = 0;
    ++itemsVersion_;
    sync();
}

void PopUpButton::selectItem(std::size_t index)
{
    if (index < items_.size())
        set(selectedIndex_, std::optional(index));
}

MenuItem const* PopUpButton::selectedItem() const
{
    return selectedIndex_ ? &items_[*selectedIndex_] : nullptr;
}

std::string PopUpButton::visibleText() const
{
    auto const* const item = selectedItem();
    return item ? item->title : std::string();
}

void PopUpButton::userSelected(std::size_t index)
{
    if (!isEnabled() || index >= items_.size() || !items_[index].isEnabled
        || items_[index].kind == MenuItemKind::Separator)
        return;
    selectItem(index);
    MenuItem const item = items_[index];
    if (item.action) {
        item.action(item);
        return;
    }
    if (auto const callback = onSelect)
        callback();
}

} // namespace quillbar::platform
