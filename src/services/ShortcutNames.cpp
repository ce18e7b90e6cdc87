#include "services/ShortcutNames.h"

#include "platform/Text.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace quillbar {

namespace {

/// File systems allow no more, and neither does this project's tool.
constexpr std::size_t longestName = 255;

/// U+0085, U+2028 and U+2029.
constexpr std::array<std::string_view, 3> multiByteNewlines { "\xC2\x85", "\xE2\x80\xA8",
    "\xE2\x80\xA9" };

/// Length in bytes of the newline that the text starts with; 0 when it starts with another
/// character. A CR LF may count as two newlines, for the empty line between them is left out.
std::size_t newlineLength(std::string_view text)
{
    if (text.front() >= '\n' && text.front() <= '\r')
        return 1;
    // Most characters, of which there may be 64 million.
    if (text.front() != '\xC2' && text.front() != '\xE2')
        return 0;
    auto const newline = std::ranges::find_if(
        multiByteNewlines, [&](std::string_view candidate) { return text.starts_with(candidate); });
    return newline == multiByteNewlines.end() ? 0 : newline->size();
}

std::vector<std::string> nonEmptyLines(std::string_view text)
{
    std::vector<std::string> lines;
    std::size_t begin = 0;
    for (std::size_t at = 0; at < text.size();) {
        auto const length = newlineLength(text.substr(at));
        if (length > 0 && at > begin)
            lines.emplace_back(text.substr(begin, at - begin));
        at += std::max<std::size_t>(length, 1);
        if (length > 0)
            begin = at;
    }
    if (begin < text.size())
        lines.emplace_back(text.substr(begin));
    return lines;
}

} // namespace

std::vector<std::string> shortcutNames(std::string_view listing)
{
    if (!platform::isValidUtf8(listing))
        return {};
    auto names = nonEmptyLines(listing);
    auto const isTooLong = [](auto const& name) { return name.size() > longestName; };
    if (auto const count = std::erase_if(names, isTooLong))
        std::fprintf(stderr, "quillbar: %zu shortcuts have names over 255 bytes\n", count);
    std::ranges::stable_sort(names, platform::isOrderedBefore);
    return names;
}

} // namespace quillbar
