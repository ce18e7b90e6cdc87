#pragma once

#include "platform/view/Font.h"
#include "platform/view/Image.h"

#import <AppKit/AppKit.h>

#include <string_view>

namespace quillbar::platform {

/// The image for a view, a menu or the status bar. A symbol without a tint is a template, which
/// takes the colour of its place; one without a size suits a text of `font`. A drawing is drawn
/// anew in every resolution. Main thread.
[[nodiscard]] NSImage* nsImage(Image const& image, Font const& font = {});

/// Fills the symbol's shape, scaled into the rectangle, with the colour; for an unflipped context.
void drawSymbol(std::string_view name, NSRect rect, NSColor* color);

} // namespace quillbar::platform
