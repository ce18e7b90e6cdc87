#include "contract/Backend.h"
#include "platform/Application.h"
#import "platform/macos/input/KeyEvents.h"
#import "platform/macos/text/Strings.h"
#import "platform/macos/views/NativeView.h"
#include "platform/view/Window.h"

#import <Carbon/Carbon.h>
#include <gtest/gtest.h>

/// A drag as the table's data source is told of it.
@interface QuillbarTestDrag : NSObject
@property (strong) id draggingSource;
@property (strong) NSPasteboard* draggingPasteboard;
@end

@implementation QuillbarTestDrag
@end

namespace quillbar::test {

using namespace platform;

namespace {

/// Whether there was one.
bool sendEvent()
{
    @autoreleasepool {
        NSEvent* const event =
            [NSApp nextEventMatchingMask:NSEventMaskAny
                               untilDate:[NSDate dateWithTimeIntervalSinceNow:0.01]
                                  inMode:NSDefaultRunLoopMode
                                 dequeue:YES];
        if (event)
            [NSApp sendEvent:event];
        return event != nil;
    }
}

/// What the key types where that is no letter.
NSString* functionOf(KeyEvent const& event)
{
    auto const character = [&]() -> unichar {
        switch (event.keyCode) {
        case key::returnKey:
            return NSCarriageReturnCharacter;
        case key::tab:
            return event.modifiers == shiftKey ? NSBackTabCharacter : NSTabCharacter;
        case key::leftArrow:
            return NSLeftArrowFunctionKey;
        case key::rightArrow:
            return NSRightArrowFunctionKey;
        case key::downArrow:
            return NSDownArrowFunctionKey;
        case key::upArrow:
            return NSUpArrowFunctionKey;
        default:
            return 0x1B;
        }
    }();
    return [NSString stringWithCharacters:&character length:1];
}

NSEvent* mouseEvent(NSEventType type, NSView* view, NSPoint place, NSInteger clickCount)
{
    return [NSEvent
        mouseEventWithType:type
                  location:[view convertPoint:place toView:nil]
             modifierFlags:0
                 timestamp:static_cast<NSTimeInterval>(NSProcessInfo.processInfo.systemUptime)
              windowNumber:view.window.windowNumber
                   context:nil
               eventNumber:0
                clickCount:clickCount
                  pressure:1];
}

void clickAt(NSView* view, NSPoint place, NSInteger clickCount)
{
    runUntil([&] { return view.window.keyWindow; });
    for (NSEventType const type : { NSEventTypeLeftMouseDown, NSEventTypeLeftMouseUp })
        [NSApp postEvent:mouseEvent(type, view, place, clickCount) atStart:NO];
    settle();
}

void forEachView(NSView* root, void (^visit)(NSView* view))
{
    visit(root);
    for (NSView* view in [root.subviews copy])
        forEachView(view, visit);
}

/// Ends the wait of an event loop that has been told to stop.
void postEmptyEvent()
{
    [NSApp postEvent:[NSEvent otherEventWithType:NSEventTypeApplicationDefined
                                        location:NSZeroPoint
                                   modifierFlags:0
                                       timestamp:0
                                    windowNumber:0
                                         context:nil
                                         subtype:0
                                           data1:0
                                           data2:0]
             atStart:NO];
}

} // namespace

void settle()
{
    while (sendEvent()) { }
}

void runUntil(std::function<bool()> const& isDone)
{
    while (!isDone())
        sendEvent();
}

void press(KeyEvent const& event, std::string const& text)
{
    runUntil([] { return NSApp.keyWindow != nil; });
    // A table has its rows, which may hold the focus, only when it has been drawn.
    settle();
    NSString* const characters = text.empty() ? functionOf(event) : nsString(text);
    [NSApp postEvent:[NSEvent keyEventWithType:NSEventTypeKeyDown
                                            location:NSZeroPoint
                                       modifierFlags:modifierFlags(event.modifiers)
                                           timestamp:static_cast<NSTimeInterval>(
                                                         NSProcessInfo.processInfo.systemUptime)
                                        windowNumber:NSApp.keyWindow.windowNumber
                                             context:nil
                                          characters:characters
                         charactersIgnoringModifiers:characters
                                           isARepeat:NO
                                             keyCode:static_cast<unsigned short>(event.keyCode)]
             atStart:NO];
    settle();
}

// AppKit does, and leaves out what only full keyboard access reaches.
bool movesFocusItself()
{
    return false;
}

void click(View& view)
{
    NSView* const shown = view.native()->view;
    clickAt(shown, NSMakePoint(NSMidX(shown.bounds), NSMidY(shown.bounds)), 1);
}

void doubleClick(TableView& table, std::size_t row)
{
    NSView* const shown = table.native()->view;
    NSPoint const place = NSMakePoint(30, table.rectOfRow(row).y + 1);
    clickAt(shown, place, 1);
    clickAt(shown, place, 2);
}

void choose(PopUpButton& popUp, std::size_t index)
{
    NSPopUpButton* const shown = static_cast<NSPopUpButton*>(popUp.native()->view);
    [shown.menu performActionForItemAtIndex:static_cast<NSInteger>(index)];
}

void drag(TableView& table, std::size_t row, std::size_t gap)
{
    NSTableView* const shown = static_cast<NSTableView*>(table.native()->view);
    id const item = [shown.dataSource tableView:shown
                         pasteboardWriterForRow:static_cast<NSInteger>(row)];
    if (!item)
        return;
    QuillbarTestDrag* const info = [[QuillbarTestDrag alloc] init];
    info.draggingSource = shown;
    info.draggingPasteboard = [NSPasteboard pasteboardWithUniqueName];
    [info.draggingPasteboard declareTypes:@[ NSPasteboardTypeString ] owner:nil];
    [info.draggingPasteboard setString:[item stringForType:NSPasteboardTypeString]
                               forType:NSPasteboardTypeString];
    auto const place = static_cast<NSInteger>(gap);
    if ([shown.dataSource tableView:shown
                       validateDrop:(id)info
                        proposedRow:place
              proposedDropOperation:NSTableViewDropAbove]
        != NSDragOperationNone)
        [shown.dataSource tableView:shown
                         acceptDrop:(id)info
                                row:place
                      dropOperation:NSTableViewDropAbove];
}

std::optional<Rect> shownFrame(View const& view)
{
    NSView* const shown = view.native() ? view.native()->view : nil;
    if (!shown.window || [shown isHiddenOrHasHiddenAncestor])
        return std::nullopt;
    NSRect const frame = [shown convertRect:shown.bounds
                                     toView:view.window()->contentView().native()->view];
    return Rect { frame.origin.x, frame.origin.y, frame.size.width, frame.size.height };
}

void answerAlert(std::string const& button, std::string const& text)
{
    forEachView(NSApp.modalWindow.contentView, ^(NSView* view) {
        if ([view isKindOfClass:NSTextField.class] && static_cast<NSTextField*>(view).editable)
            static_cast<NSTextField*>(view).stringValue = nsString(text);
    });
    forEachView(NSApp.modalWindow.contentView, ^(NSView* view) {
        if ([view isKindOfClass:NSButton.class] &&
            [static_cast<NSButton*>(view).title isEqualToString:nsString(button)])
            [static_cast<NSButton*>(view) performClick:nil];
    });
    postEmptyEvent();
}

struct StatusArea::Native {
    Native()
    {
        observer = [NSNotificationCenter.defaultCenter
            addObserverForName:NSMenuDidBeginTrackingNotification
                        object:nil
                         queue:nil
                    usingBlock:^(NSNotification* notification) { openMenu = notification.object; }];
    }
    Native(Native const&) = delete;
    Native& operator=(Native const&) = delete;
    ~Native() { [NSNotificationCenter.defaultCenter removeObserver:observer]; }

    NSMenu* openMenu = nil;
    id observer = nil;
};

StatusArea::StatusArea()
    : native_(std::make_unique<Native>())
{
}

StatusArea::~StatusArea() = default;

void StatusArea::openMenu()
{
    __block NSButton* button = nil;
    for (NSWindow* window in NSApp.windows)
        forEachView(window.contentView, ^(NSView* view) {
            if ([view isKindOfClass:NSStatusBarButton.class])
                button = static_cast<NSButton*>(view);
        });
    [button performClick:nil];
}

void StatusArea::chooseRow(std::string const& title)
{
    NSMenu* const menu = native_->openMenu;
    [menu cancelTracking];
    [menu performActionForItemAtIndex:[menu indexOfItemWithTitle:nsString(title)]];
    postEmptyEvent();
}

// Nothing in here can press keys for all programs; this is what the system sends then.
void pressHotkey(KeyCombination const&, std::uint32_t id)
{
    EventHotKeyID const hotkey { 0, id };
    EventRef event = nullptr;
    CreateEvent(nullptr, kEventClassKeyboard, kEventHotKeyPressed, 0, kEventAttributeNone, &event);
    SetEventParameter(event, kEventParamDirectObject, typeEventHotKeyID, sizeof hotkey, &hotkey);
    SendEventToEventTarget(event, GetApplicationEventTarget());
    ReleaseEvent(event);
}

} // namespace quillbar::test

int main(int argumentCount, char** arguments)
{
    @autoreleasepool {
        testing::InitGoogleTest(&argumentCount, arguments);
        NSApplication* const application = NSApplication.sharedApplication;
        [application setActivationPolicy:NSApplicationActivationPolicyAccessory];
        [application finishLaunching];
        quillbar::platform::activateIgnoringOtherApps();
        return RUN_ALL_TESTS();
    }
}
