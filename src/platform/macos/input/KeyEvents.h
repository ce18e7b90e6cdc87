#pragma once

#include "platform/KeyMonitor.h"

#import <AppKit/AppKit.h>

namespace quillbar::platform {

/// The press as the portable side knows it. AppKit's key codes are the portable ones.
[[nodiscard]] KeyEvent keyEvent(NSEvent* event);

/// The modifiers of a key equivalent.
[[nodiscard]] NSEventModifierFlags modifierFlags(KeyModifiers modifiers);

} // namespace quillbar::platform
