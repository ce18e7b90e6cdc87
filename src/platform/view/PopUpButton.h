#pragma once

#include "platform/view/Control.h"
#include "platform/view/Menu.h"

#include <cstddef>
#include <functional>
#include <optional>

namespace quillbar::platform {

/// A button that shows the chosen one of its items and opens the others as a menu. Items show
/// title, image and enabled state; what they carry is their represented object. As soon as there
/// are items one of them is selected, the first unless another is chosen; separators cannot be.
class PopUpButton : public Control {
public:
    PopUpButton()
        : Control(ViewKind::PopUpButton)
    {
    }

    void removeAllItems();
    void addItem(MenuItem item);
    /// Ignores an index that names no item.
    void selectItem(std::size_t index);

    [[nodiscard]] std::vector<MenuItem> const& items() const { return items_; }
    [[nodiscard]] std::optional<std::size_t> selectedIndex() const { return selectedIndex_; }
    /// Null when there are no items; valid until the items change.
    [[nodiscard]] MenuItem const* selectedItem() const;
    /// Grows with every change of the items.
    [[nodiscard]] std::size_t itemsVersion() const { return itemsVersion_; }

    [[nodiscard]] std::string visibleText() const override;

    /// A person chose the item: it is selected, then its action runs, or else the callback. A
    /// separator or a disabled item is ignored.
    void userSelected(std::size_t index);

    /// May destroy the button.
    std::function<void()> onSelect;

private:
    std::vector<MenuItem> items_;
    std::optional<std::size_t> selectedIndex_;
    std::size_t itemsVersion_ = 0;
};

} // namespace quillbar::platform
