#pragma once

#include "platform/view/AttributedText.h"
#include "platform/view/Geometry.h"

#import <AppKit/AppKit.h>

/// The portable values in AppKit's types. Main thread.
namespace quillbar::platform {

[[nodiscard]] inline NSSize nsSize(Size const& size)
{
    return NSMakeSize(size.width, size.height);
}

[[nodiscard]] inline NSRect nsRect(Rect const& rect)
{
    return NSMakeRect(rect.x, rect.y, rect.width, rect.height);
}

/// System colours follow the appearance in which they are drawn.
[[nodiscard]] NSColor* nsColor(Color const& color);
[[nodiscard]] NSFont* nsFont(Font const& font);
[[nodiscard]] NSAttributedString* attributedString(AttributedText const& text);

} // namespace quillbar::platform
