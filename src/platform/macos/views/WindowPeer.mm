#import "platform/macos/views/WindowPeer.h"

#import "platform/macos/drawing/Conversions.h"
#import "platform/macos/text/Strings.h"
#import "platform/macos/views/KeyFilter.h"
#import "platform/macos/views/NativeView.h"
#import "platform/macos/views/WindowEvents.h"

#include <algorithm>
#include <cmath>

namespace quillbar::platform {

namespace {

NSWindow* makeWindow(Window const& window)
{
    NSWindowStyleMask const style = window.style() == WindowStyle::Borderless
        ? NSWindowStyleMaskBorderless
        : NSWindowStyleMaskTitled | NSWindowStyleMaskClosable;
    Class const kind
        = window.kind() == WindowKind::Panel ? QuillbarPanel.class : QuillbarWindow.class;
    NSWindow* const made = [[kind alloc] initWithContentRect:nsRect(window.contentView().frame())
                                                   styleMask:style
                                                     backing:NSBackingStoreBuffered
                                                       defer:NO];
    made.releasedWhenClosed = NO;
    made.hidesOnDeactivate = NO;
    made.autorecalculatesKeyViewLoop = YES;
    made.tabbingMode = NSWindowTabbingModeDisallowed;
    made.collectionBehavior = NSWindowCollectionBehaviorMoveToActiveSpace
        | NSWindowCollectionBehaviorFullScreenAuxiliary;
    return made;
}

/// On a screen that is too low the window is as high as the screen.
void centerOnScreen(NSWindow* native, Window const& window)
{
    NSRect const screen = NSScreen.mainScreen.visibleFrame;
    NSRect frame = [native frameRectForContentRect:nsRect(window.contentView().frame())];
    frame.size.height = std::min(NSHeight(frame), NSHeight(screen));
    frame.origin.x = std::round(NSMidX(screen) - NSWidth(frame) / 2);
    frame.origin.y = std::round(NSMidY(screen) - NSHeight(frame) / 2);
    [native setFrame:frame display:NO];
}

/// Scrolls where the window is lower than its content.
NSScrollView* makeScrollView(NSRect frame)
{
    NSScrollView* const scrollView = [[NSScrollView alloc] initWithFrame:frame];
    scrollView.drawsBackground = NO;
    scrollView.borderType = NSNoBorder;
    scrollView.hasVerticalScroller = YES;
    scrollView.autohidesScrollers = YES;
    scrollView.scrollerStyle = NSScrollerStyleOverlay;
    scrollView.horizontalScrollElasticity = NSScrollElasticityNone;
    scrollView.verticalScrollElasticity = NSScrollElasticityNone;
    return scrollView;
}

} // namespace

NativeWindow::NativeWindow(Window& shownWindow)
    : window(makeWindow(shownWindow))
    , delegate_([[QuillbarWindowDelegate alloc] init])
{
    installKeyFilter();
    delegate_.portable = &shownWindow;
    window.delegate = delegate_;
    centerOnScreen(window, shownWindow);
}

NativeWindow::~NativeWindow()
{
    delegate_.portable = nullptr;
    window.delegate = nil;
    [window close];
    // The window may be delivering the event: a delayed message keeps its receiver until it is
    // sent.
    [window performSelector:@selector(self) withObject:nil afterDelay:0];
}

void NativeWindow::adopt(NSView* content) const
{
    NSView* const place = window.contentView;
    if ((window.styleMask & NSWindowStyleMaskTitled) == 0) {
        [place addSubview:content];
        return;
    }
    NSScrollView* const scrollView = makeScrollView(place.frame);
    scrollView.documentView = content;
    window.contentView = scrollView;
}

NativeWindow* createNativeWindow(Window& window)
{
    return new NativeWindow(window);
}

void NativeWindowDeleter::operator()(NativeWindow* native) const
{
    delete native;
}

void syncWindow(Window const& window)
{
    NSWindow* const native = window.native()->window;
    bool const isClear = window.background() == WindowBackground::Clear;
    native.title = nsString(window.title());
    native.level
        = window.level() == WindowLevel::Floating ? NSFloatingWindowLevel : NSNormalWindowLevel;
    native.opaque = !isClear;
    native.backgroundColor = isClear ? NSColor.clearColor : NSColor.windowBackgroundColor;
    native.hasShadow = window.hasShadow();
    native.movableByWindowBackground = window.isMovableByBackground();
    if (!window.isVisible())
        [native orderOut:nil];
}

void syncFirstResponder(Window const& window)
{
    NSWindow* const native = window.native()->window;
    auto const view = window.firstResponder();
    NSView* const wanted = view && view->native() ? view->native()->keyView() : nil;
    // Only a view in the window can have its keyboard. Giving it once more to a text field would
    // select all of its text.
    if (!wanted || (wanted.window == native && view != focusedView(native)))
        [native makeFirstResponder:wanted];
}

void centerNativeWindow(Window const& window)
{
    centerOnScreen(window.native()->window, window);
}

void raiseNativeWindow(Window const& window)
{
    NSWindow* const native = window.native()->window;
    if (window.canBecomeKeyWindow())
        [native makeKeyAndOrderFront:nil];
    else
        [native orderFrontRegardless];
}

} // namespace quillbar::platform
