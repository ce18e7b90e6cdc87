#pragma once

#include "platform/view/Window.h"

#import <AppKit/AppKit.h>

@class QuillbarWindowDelegate;

namespace quillbar::platform {

/// The AppKit side of a window. It is deleted with the window; its NSWindow lives on until the
/// event that is being delivered is over. Main thread.
struct NativeWindow {
    explicit NativeWindow(Window& shownWindow);
    NativeWindow(NativeWindow const&) = delete;
    NativeWindow& operator=(NativeWindow const&) = delete;
    ~NativeWindow();

    /// Takes the NSView of the window's content view.
    void adopt(NSView* content) const;

    NSWindow* const window;

private:
    // The NSWindow does not own it.
    QuillbarWindowDelegate* const delegate_;
};

} // namespace quillbar::platform
