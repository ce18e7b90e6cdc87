#import "platform/macos/menus/NativeMenu.h"

#import "platform/macos/drawing/Conversions.h"
#import "platform/macos/drawing/Images.h"
#import "platform/macos/input/Action.h"
#import "platform/macos/input/KeyEvents.h"
#import "platform/macos/text/Strings.h"

#import <objc/runtime.h>

#include <memory>

namespace quillbar::platform {

namespace {

// What the first responder or the application itself carries out.
SEL selectorOf(StandardCommand command)
{
    switch (command) {
    case StandardCommand::None:
        return nil;
    case StandardCommand::Terminate:
        return @selector(terminate:);
    case StandardCommand::Undo:
        return @selector(undo:);
    case StandardCommand::Redo:
        return @selector(redo:);
    case StandardCommand::Cut:
        return @selector(cut:);
    case StandardCommand::Copy:
        return @selector(copy:);
    case StandardCommand::Paste:
        return @selector(paste:);
    case StandardCommand::SelectAll:
        return @selector(selectAll:);
    }
    return nil;
}

void setAction(NSMenuItem* native, MenuItem const& item)
{
    auto const kept = std::make_shared<MenuItem const>(item);
    QuillbarAction* const action =
        [[QuillbarAction alloc] initWithBody:^(id) { performAction(*kept); }];
    native.target = action;
    native.action = QuillbarAction.selector;
    static char const key = 0;
    objc_setAssociatedObject(native, &key, action, OBJC_ASSOCIATION_RETAIN);
}

} // namespace

NSMenu* nsMenu(Menu const& menu)
{
    NSMenu* const result = [[NSMenu alloc] initWithTitle:nsString(menu.title)];
    result.autoenablesItems = NO;
    for (auto const& item : menu.items)
        [result addItem:nsMenuItem(item)];
    return result;
}

NSMenuItem* nsMenuItem(MenuItem const& item)
{
    if (item.kind == MenuItemKind::Separator)
        return [NSMenuItem separatorItem];
    NSMenuItem* const result = [[NSMenuItem alloc] initWithTitle:nsString(item.title)
                                                          action:selectorOf(item.command)
                                                   keyEquivalent:nsString(item.keyEquivalent.key)];
    result.keyEquivalentModifierMask = modifierFlags(item.keyEquivalent.modifiers);
    if (item.attributedTitle)
        result.attributedTitle = attributedString(*item.attributedTitle);
    if (item.image)
        result.image = nsImage(*item.image);
    if (item.representedObject)
        result.representedObject = nsString(*item.representedObject);
    result.enabled = item.isEnabled;
    if (!item.submenu.empty())
        result.submenu = nsMenu({ .title = item.title, .items = item.submenu });
    else if (item.action)
        setAction(result, item);
    return result;
}

} // namespace quillbar::platform
