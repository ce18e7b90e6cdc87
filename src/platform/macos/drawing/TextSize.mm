#include "platform/view/TextSize.h"

#include "platform/Text.h"
#include "platform/macos/drawing/Conversions.h"
#include "platform/macos/text/Strings.h"

#include <cmath>

namespace quillbar::platform {

Size textSize(std::string_view text, Font const& font)
{
    auto const size =
        [nsString(shortened(text)) sizeWithAttributes:@ { NSFontAttributeName : nsFont(font) }];
    return { std::ceil(size.width), std::ceil(size.height) };
}

} // namespace quillbar::platform
