#import "platform/macos/drawing/Conversions.h"
#import "platform/macos/input/Action.h"
#import "platform/macos/menus/NativeMenu.h"
#import "platform/macos/views/NativeView.h"
#include "platform/view/PopUpButton.h"

namespace quillbar::platform {

namespace {

// What it carries and does is the portable button's.
NSMenuItem* shownItem(MenuItem item)
{
    item.action = nullptr;
    return nsMenuItem(item);
}

class PopUpPeer final : public NativeView {
public:
    explicit PopUpPeer(PopUpButton& shown)
        : NativeView(shown, [[NSPopUpButton alloc] initWithFrame:NSZeroRect pullsDown:NO])
        , popUp_(static_cast<NSPopUpButton*>(view))
        , shown_(shown)
        , action_([[QuillbarAction alloc] initWithBody:^(id) { selected(); }])
    {
        popUp_.autoenablesItems = NO;
        popUp_.target = action_;
        popUp_.action = QuillbarAction.selector;
    }
    PopUpPeer(PopUpPeer const&) = delete;
    PopUpPeer& operator=(PopUpPeer const&) = delete;
    ~PopUpPeer() override { action_.body = nil; }

    void sync() override
    {
        popUp_.font = nsFont(shown_.font());
        if (itemsVersion_ != shown_.itemsVersion())
            fill();
        showSelection();
    }

private:
    // Items come one by one: one more at the end leaves those before it as they are.
    void fill()
    {
        auto const& items = shown_.items();
        auto count = static_cast<std::size_t>(popUp_.numberOfItems);
        if (shown_.itemsVersion() != itemsVersion_ + 1 || items.size() != count + 1) {
            [popUp_ removeAllItems];
            count = 0;
        }
        for (; count < items.size(); ++count)
            [popUp_.menu addItem:shownItem(items[count])];
        itemsVersion_ = shown_.itemsVersion();
    }

    void showSelection()
    {
        auto const& index = shown_.selectedIndex();
        [popUp_ selectItemAtIndex:index ? static_cast<NSInteger>(*index) : -1];
    }

    void selected()
    {
        auto const index = static_cast<std::size_t>(popUp_.indexOfSelectedItem);
        // AppKit has selected the item by itself; the portable button decides.
        showSelection();
        shown_.userSelected(index);
    }

    NSPopUpButton* const popUp_;
    PopUpButton& shown_;
    QuillbarAction* const action_;
    std::size_t itemsVersion_ = 0;
};

} // namespace

NativeView* makePopUpPeer(View& view)
{
    return new PopUpPeer(static_cast<PopUpButton&>(view));
}

} // namespace quillbar::platform
