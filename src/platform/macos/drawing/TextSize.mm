#include "platform/view/TextSize.h"

#include "platform/Text.h"
#include "platform/macos/drawing/Conversions.h"
#include "platform/macos/text/Strings.h"

#include <cmath>

namespace quillbar::platform {

// A label leaves some room on both sides of its text.
Size textSize(std::string_view text, Font const& font)
{
    NSTextFieldCell* const label = [[NSTextFieldCell alloc] initTextCell:nsString(shortened(text))];
    label.font = nsFont(font);
    NSSize const size = label.cellSize;
    return { std::ceil(size.width), std::ceil(size.height) };
}

} // namespace quillbar::platform
