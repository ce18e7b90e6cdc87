#include "platform/Text.h"

#include <cstddef>

namespace quillbar::platform {

std::string shortened(std::string_view text)
{
    // Four times as long as a name can be. The layout of joined characters takes square time.
    constexpr std::size_t longest = 1024;
    if (text.size() <= longest)
        return std::string(text);
    auto end = longest;
    while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80)
        --end;
    return std::string(text.substr(0, end)) + "…";
}

} // namespace quillbar::platform
