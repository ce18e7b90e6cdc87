#import "platform/macos/views/NativeView.h"

#import "platform/macos/drawing/Conversions.h"
#import "platform/macos/text/Strings.h"
#import "platform/macos/views/WindowPeer.h"
#include "platform/view/Control.h"
#include "platform/view/Window.h"

#import <objc/runtime.h>

/// Counts its coordinates from the top, as portable views do.
@interface QuillbarFlippedView : NSView
@end

@implementation QuillbarFlippedView

- (BOOL)isFlipped
{
    return YES;
}

// In a window that its background moves, a press in a list is the list's.
- (BOOL)mouseDownCanMoveWindow
{
    return self.enclosingScrollView == nil;
}

@end

namespace quillbar::platform {

namespace {

// Its address is the key of an NSView's portable view.
char portableViewKey = 0;

NativeView* makePeer(View& view)
{
    switch (view.kind()) {
    case ViewKind::View:
        return new NativeView(view, makeFlippedView());
    case ViewKind::Label:
        return makeLabelPeer(view);
    case ViewKind::Button:
        return makeButtonPeer(view);
    case ViewKind::PopUpButton:
        return makePopUpPeer(view);
    case ViewKind::TextField:
        return makeTextFieldPeer(view);
    case ViewKind::ImageView:
        return makeImagePeer(view);
    case ViewKind::Separator:
        return makeSeparatorPeer(view);
    case ViewKind::ScrollView:
        return makeScrollPeer(view);
    case ViewKind::TableView:
        return makeTablePeer(view);
    case ViewKind::EffectView:
        return makeEffectPeer(view);
    }
    return nullptr;
}

/// A scroll view places its document.
void syncFrame(View const& view, NSView* native)
{
    NSRect frame = nsRect(view.frame());
    if (view.superview() && view.superview()->kind() == ViewKind::ScrollView)
        frame.origin = native.frame.origin;
    if (!NSEqualRects(native.frame, frame))
        native.frame = frame;
}

/// AppKit itself names a view by the text that it shows, and helps with its tool tip.
void syncAccessibility(View const& view, NSView* native)
{
    if (!view.accessibilityLabel().empty())
        native.accessibilityLabel = nsString(view.accessibilityLabel());
    if (!view.accessibilityDescription().empty())
        native.accessibilityHelp = nsString(view.accessibilityDescription());
}

} // namespace

NSView* makeFlippedView()
{
    return [[QuillbarFlippedView alloc] init];
}

NativeView* createNativeView(View& view)
{
    auto* const native = makePeer(view);
    objc_setAssociatedObject(native->view, &portableViewKey, [NSValue valueWithPointer:&view],
        OBJC_ASSOCIATION_RETAIN_NONATOMIC);
    if (auto* const superview = view.superview())
        superview->native()->adopt(native->view);
    else
        view.window()->native()->adopt(native->view);
    return native;
}

void syncView(View const& view)
{
    auto& native = *view.native();
    NSView* const shown = native.view;
    syncFrame(view, shown);
    native.sync();
    if (auto const* const control = dynamic_cast<Control const*>(&view);
        control && static_cast<NSControl*>(shown).enabled != control->isEnabled())
        static_cast<NSControl*>(shown).enabled = control->isEnabled();
    NSString* const toolTip = view.toolTip().empty() ? nil : nsString(view.toolTip());
    if (toolTip != shown.toolTip && ![toolTip isEqualToString:shown.toolTip])
        shown.toolTip = toolTip;
    syncAccessibility(view, shown);
    native.keyView().focusRingType
        = view.focusRing() == FocusRing::None ? NSFocusRingTypeNone : NSFocusRingTypeDefault;
    shown.hidden = view.isHidden();
    // The focus may have been given to the view before it had a peer.
    if (auto const* const window = view.window(); window && window->firstResponder().get() == &view)
        syncFirstResponder(*window);
}

void NativeViewDeleter::operator()(NativeView* native) const
{
    NSView* const view = native->view;
    objc_setAssociatedObject(view, &portableViewKey, nil, OBJC_ASSOCIATION_RETAIN_NONATOMIC);
    delete native;
    [view removeFromSuperview];
    // The view may be delivering the event: a delayed message keeps its receiver until it is sent.
    [view performSelector:@selector(self) withObject:nil afterDelay:0];
}

View* portableViewOf(NSView* view)
{
    for (NSView* around = view; around; around = around.superview) {
        if (NSValue* const portable = objc_getAssociatedObject(around, &portableViewKey))
            return static_cast<View*>(portable.pointerValue);
    }
    return nullptr;
}

} // namespace quillbar::platform
