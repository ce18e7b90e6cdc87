#pragma once

#include "platform/view/Window.h"

#import <AppKit/AppKit.h>

/// Tells the portable window, while there is one, what a person did.
@interface QuillbarWindowDelegate : NSObject <NSWindowDelegate>
@property quillbar::platform::Window* portable;
@end

/// A window that asks the portable window of its delegate whether it can become key, and tells it
/// where the keyboard focus went.
@interface QuillbarWindow : NSWindow
@end

/// The same as a panel.
@interface QuillbarPanel : NSPanel
@end

namespace quillbar::platform {

/// Null for other windows, and once the portable window is gone.
[[nodiscard]] Window* portableWindowOf(NSWindow* window);

/// The view that has the keyboard while the window is key; null when none has it.
[[nodiscard]] std::shared_ptr<View> focusedView(NSWindow* window);

} // namespace quillbar::platform
