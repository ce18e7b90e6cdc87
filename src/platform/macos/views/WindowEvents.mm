#import "platform/macos/views/WindowEvents.h"

#import "platform/macos/views/NativeView.h"

namespace quillbar::platform {

namespace {

/// A field editor has the keyboard on behalf of its delegate, the text field.
id keyboardOwner(NSWindow* window)
{
    id const responder = window.firstResponder;
    if ([responder isKindOfClass:NSText.class] && [responder isFieldEditor])
        return static_cast<NSText*>(responder).delegate;
    return responder;
}

void reportFocus(NSWindow* window)
{
    auto* const portable = portableWindowOf(window);
    auto const view = focusedView(window);
    if (!portable || portable->firstResponder() == view)
        return;
    portable->userFocused(view);
    if (view && view->native()) {
        NSView* const shown = view->native()->view;
        [shown scrollRectToVisible:shown.bounds];
    }
}

bool canBecomeKey(NSWindow* window)
{
    auto const* const portable = portableWindowOf(window);
    return portable && portable->canBecomeKeyWindow();
}

} // namespace

Window* portableWindowOf(NSWindow* window)
{
    id const delegate = window.delegate;
    return [delegate isKindOfClass:QuillbarWindowDelegate.class]
        ? static_cast<QuillbarWindowDelegate*>(delegate).portable
        : nullptr;
}

std::shared_ptr<View> focusedView(NSWindow* window)
{
    id const owner = keyboardOwner(window);
    auto* const view = [owner isKindOfClass:NSView.class] ? portableViewOf(owner) : nullptr;
    return view && view->acceptsFirstResponder() ? view->weak_from_this().lock() : nullptr;
}

} // namespace quillbar::platform

using namespace quillbar::platform;

@implementation QuillbarWindowDelegate

- (BOOL)windowShouldClose:(NSWindow*)sender
{
    (void)sender;
    if (self.portable)
        self.portable->userClosed();
    return NO;
}

- (void)windowDidBecomeKey:(NSNotification*)notification
{
    (void)notification;
    if (self.portable)
        self.portable->userChangedKey(true);
}

- (void)windowDidResignKey:(NSNotification*)notification
{
    (void)notification;
    if (self.portable)
        self.portable->userChangedKey(false);
}

@end

@implementation QuillbarWindow

- (BOOL)canBecomeKeyWindow
{
    return canBecomeKey(self);
}

- (BOOL)canBecomeMainWindow
{
    return canBecomeKey(self);
}

- (BOOL)makeFirstResponder:(NSResponder*)responder
{
    BOOL const isDone = [super makeFirstResponder:responder];
    reportFocus(self);
    return isDone;
}

@end

@implementation QuillbarPanel

- (BOOL)canBecomeKeyWindow
{
    return canBecomeKey(self);
}

- (BOOL)canBecomeMainWindow
{
    return canBecomeKey(self);
}

- (BOOL)makeFirstResponder:(NSResponder*)responder
{
    BOOL const isDone = [super makeFirstResponder:responder];
    reportFocus(self);
    return isDone;
}

@end
