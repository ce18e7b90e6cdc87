#import "platform/macos/views/KeyFilter.h"

#import "platform/macos/input/KeyEvents.h"
#import "platform/macos/views/WindowEvents.h"

#include <optional>

namespace quillbar::platform {

namespace {

/// Whether an input method composes a text: then all keys are for it.
bool isComposing(NSWindow* window)
{
    id const responder = window.firstResponder;
    return [responder conformsToProtocol:@protocol(NSTextInputClient)] && [responder hasMarkedText];
}

bool isCloseCommand(NSEvent* event)
{
    auto const pressed = keyEvent(event);
    if (pressed.modifiers == commandKey)
        return [event.characters.lowercaseString isEqualToString:@"w"];
    return pressed.modifiers == 0 && pressed.keyCode == key::escape;
}

// While its key is held, such a command is carried out once only.
bool isDoneOnce(NSEvent* event)
{
    return isCloseCommand(event) || event.keyCode == key::returnKey
        || event.keyCode == key::keypadEnter;
}

/// The key of the last press if that was recorded: its repeats do nothing.
std::optional<std::uint32_t>& recordedKey()
{
    static std::optional<std::uint32_t> key;
    return key;
}

bool isUnwantedRepeat(NSEvent* event)
{
    bool const isRecording = isKeyboardGrabWanted();
    if ([event isARepeat])
        return isRecording || isDoneOnce(event) || event.keyCode == recordedKey();
    recordedKey() = isRecording ? std::optional<std::uint32_t>(event.keyCode) : std::nullopt;
    return false;
}

KeyEventResult keyPressed(NSEvent* event)
{
    NSWindow* const window = event.window;
    if (!portableWindowOf(window) || isComposing(window))
        return KeyEventResult::Pass;
    auto const pressed = keyEvent(event);
    if (isUnwantedRepeat(event) || runKeyDownMonitors(pressed) == KeyEventResult::Consume)
        return KeyEventResult::Consume;
    auto* const portable = portableWindowOf(window);
    if (!portable || portable->userPressedKey(pressed) == KeyEventResult::Consume)
        return KeyEventResult::Consume;
    if (!isCloseCommand(event) || (window.styleMask & NSWindowStyleMaskClosable) == 0)
        return KeyEventResult::Pass;
    [window performClose:nil];
    return KeyEventResult::Consume;
}

} // namespace

void installKeyFilter()
{
    static id const monitor = [NSEvent
        addLocalMonitorForEventsMatchingMask:NSEventMaskKeyDown
                                     handler:^NSEvent*(NSEvent* event) {
                                         return keyPressed(event) == KeyEventResult::Consume
                                             ? nil
                                             : event;
                                     }];
    static_cast<void>(monitor);
}

// The local monitor sees every combination before the main menu does: there is nothing to grab.
void syncKeyboardGrab() { }

} // namespace quillbar::platform
