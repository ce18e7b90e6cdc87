#include "platform/view/StatusItem.h"

#include "platform/headless/Headless.h"
#include "platform/headless/State.h"

namespace quillbar::platform {

struct NativeStatusItem {
    StatusItem& item;
};

namespace {

struct StatusArea {
    bool itemsHaveButtons = true;
    int buttonSyncCount = 0;
    int menuSyncCount = 0;
};
headless::State<StatusArea> area;

// Not part of the state that a reset forgets: the item is there as long as its owner keeps it.
StatusItem* current = nullptr;

} // namespace

void NativeStatusItemDeleter::operator()(NativeStatusItem* native) const
{
    if (current == &native->item)
        current = nullptr;
    delete native;
}

NativeStatusItem* createNativeStatusItem(StatusItem& item)
{
    headless::note("createStatusItem");
    current = &item;
    return new NativeStatusItem { item };
}

bool statusItemsHaveButtons()
{
    return area->itemsHaveButtons;
}

void syncStatusButton(StatusItem const& /*item*/)
{
    headless::note("syncStatusButton");
    ++area->buttonSyncCount;
}

void syncStatusMenu(StatusItem const& /*item*/)
{
    headless::note("syncStatusMenu");
    ++area->menuSyncCount;
}

namespace headless {

StatusItem* statusItem()
{
    return current;
}

int statusButtonSyncCount()
{
    return area->buttonSyncCount;
}

int statusMenuSyncCount()
{
    return area->menuSyncCount;
}

void setStatusItemsHaveButtons(bool haveButtons)
{
    area->itemsHaveButtons = haveButtons;
}

} // namespace headless

} // namespace quillbar::platform
