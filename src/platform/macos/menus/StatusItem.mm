#include "platform/view/StatusItem.h"

#import "platform/macos/drawing/Conversions.h"
#import "platform/macos/drawing/Images.h"
#import "platform/macos/menus/NativeMenu.h"
#import "platform/macos/text/Strings.h"

#include <utility>

/// Fills the menu when it is about to open; an open menu never changes.
@interface QuillbarStatusMenu : NSObject <NSMenuDelegate>
- (instancetype)initWithItem:(quillbar::platform::StatusItem&)item;
@end

@implementation QuillbarStatusMenu {
    quillbar::platform::StatusItem* _item;
    std::shared_ptr<quillbar::platform::Menu const> _filledFrom;
    BOOL _isOpen;
}

- (instancetype)initWithItem:(quillbar::platform::StatusItem&)item
{
    if ((self = [super init]))
        _item = &item;
    return self;
}

- (void)menuNeedsUpdate:(NSMenu*)menu
{
    // AppKit also asks when a key is pressed in the open menu.
    if (_isOpen || _filledFrom == _item->menu())
        return;
    _filledFrom = _item->menu();
    [menu removeAllItems];
    for (auto const& item : _filledFrom->items)
        [menu addItem:quillbar::platform::nsMenuItem(item)];
}

- (void)menuWillOpen:(NSMenu*)menu
{
    (void)menu;
    _isOpen = YES;
    _item->userOpenedMenu();
}

- (void)menuDidClose:(NSMenu*)menu
{
    (void)menu;
    _isOpen = NO;
}
@end

namespace quillbar::platform {

struct NativeStatusItem {
    explicit NativeStatusItem(StatusItem& item)
        : menuDelegate([[QuillbarStatusMenu alloc] initWithItem:item])
    {
        shown.menu = nsMenu({});
        shown.menu.delegate = menuDelegate;
    }
    NativeStatusItem(NativeStatusItem const&) = delete;
    NativeStatusItem& operator=(NativeStatusItem const&) = delete;
    ~NativeStatusItem()
    {
        shown.menu.delegate = nil;
        [NSStatusBar.systemStatusBar removeStatusItem:shown];
    }

    NSStatusItem* const shown =
        [NSStatusBar.systemStatusBar statusItemWithLength:NSSquareStatusItemLength];
    QuillbarStatusMenu* const menuDelegate;
    double alpha = 1;
};

void NativeStatusItemDeleter::operator()(NativeStatusItem* native) const
{
    delete native;
}

NativeStatusItem* createNativeStatusItem(StatusItem& item)
{
    return new NativeStatusItem(item);
}

void syncStatusButton(StatusItem const& item)
{
    auto const& state = item.button();
    NSStatusBarButton* const button = item.native()->shown.button;
    Font const font { .size = [NSFont menuBarFontOfSize:0].pointSize };
    button.image = state.image() ? nsImage(*state.image(), font) : nil;
    button.accessibilityLabel = button.image.accessibilityDescription;
    button.toolTip = nsString(state.toolTip());
    auto const& tint = state.contentTintColor();
    button.contentTintColor = tint ? nsColor(*tint) : nil;
    // A fade under way goes on.
    if (std::exchange(item.native()->alpha, state.alpha()) != state.alpha())
        button.animator.alphaValue = state.alpha();
}

// The menu is filled when it opens.
void syncStatusMenu(StatusItem const&) { }

} // namespace quillbar::platform
