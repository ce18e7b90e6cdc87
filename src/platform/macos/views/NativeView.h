#pragma once

#include "platform/view/View.h"

#import <AppKit/AppKit.h>

namespace quillbar::platform {

/// The AppKit side of a view, deleted with the view. Its NSView is retained until the current event
/// has been handled, since it may be the receiver of that event. Main thread.
struct NativeView {
    NativeView(View& shownView, NSView* nativeView)
        : portable(&shownView)
        , view(nativeView)
    {
    }
    NativeView(NativeView const&) = delete;
    NativeView& operator=(NativeView const&) = delete;
    virtual ~NativeView() = default;

    /// Shows the state that is particular to the view's kind.
    virtual void sync() { }
    /// Takes a subview's NSView, on top of the others.
    virtual void adopt(NSView* subview) { [view addSubview:subview]; }
    /// What takes the keyboard for the view.
    [[nodiscard]] virtual NSView* keyView() { return view; }

    View* const portable;
    NSView* const view;
};

/// A plain container whose coordinates run top-down.
NSView* makeFlippedView();

[[nodiscard]] NativeView* makeButtonPeer(View& view);
[[nodiscard]] NativeView* makeEffectPeer(View& view);
[[nodiscard]] NativeView* makeImagePeer(View& view);
[[nodiscard]] NativeView* makeLabelPeer(View& view);
[[nodiscard]] NativeView* makePopUpPeer(View& view);
[[nodiscard]] NativeView* makeScrollPeer(View& view);
[[nodiscard]] NativeView* makeSeparatorPeer(View& view);
[[nodiscard]] NativeView* makeTablePeer(View& view);
[[nodiscard]] NativeView* makeTextFieldPeer(View& view);

/// The view whose NSView, or one inside it, this is; null for any other.
[[nodiscard]] View* portableViewOf(NSView* view);

} // namespace quillbar::platform
