#include "platform/Application.h"
#import "platform/macos/text/Strings.h"
#include "platform/view/Alert.h"

#import <AppKit/AppKit.h>

#include <algorithm>

namespace quillbar::platform {

namespace {

NSAlert* makeAlert(Alert const& alert)
{
    NSAlert* const made = [[NSAlert alloc] init];
    made.alertStyle
        = alert.style == AlertStyle::Warning ? NSAlertStyleWarning : NSAlertStyleInformational;
    made.messageText = nsString(alert.messageText);
    made.informativeText = nsString(alert.informativeText);
    for (auto const& title : alert.buttons)
        [made addButtonWithTitle:nsString(title)];
    // AppKit gives Escape only to a button that is called Cancel.
    NSButton* const last = made.buttons.lastObject;
    if (alert.buttons.size() > 1)
        last.keyEquivalent = @"\033";
    return made;
}

NSTextField* makeField(Alert const& alert)
{
    NSTextField* const field = [[NSTextField alloc] initWithFrame:NSMakeRect(0, 0, 220, 24)];
    field.stringValue = nsString(alert.accessory->text);
    field.placeholderString = nsString(alert.accessory->placeholder);
    field.accessibilityLabel = nsString(alert.messageText);
    NSTextFieldCell* const cell = field.cell;
    cell.usesSingleLineMode = YES;
    cell.scrollable = YES;
    return field;
}

} // namespace

AlertAnswer runModal(Alert const& alert)
{
    NSAlert* const shown = makeAlert(alert);
    NSTextField* const field = alert.accessory ? makeField(alert) : nil;
    if (field) {
        shown.accessoryView = field;
        [shown layout];
        NSWindow* const window = shown.window;
        window.initialFirstResponder = field;
    }
    activateIgnoringOtherApps();
    auto const button = static_cast<std::size_t>([shown runModal] - NSAlertFirstButtonReturn);
    return { .button = std::min(button, alert.buttons.size() - 1),
        .text = utf8(field.stringValue) };
}

} // namespace quillbar::platform
