#include "shortcuts/Names.h"

#include <algorithm>
#include <cstdint>
#include <glib.h>
#include <iterator>
#include <numeric>
#include <vector>

namespace quillbar::shortcuts {

namespace {

/// The limit of file systems, which bounds what a listing can become.
constexpr std::size_t longestName = 255;

constexpr std::string_view scriptExtensions[]
    = { ".sh", ".bash", ".zsh", ".fish", ".py", ".pl", ".rb", ".js", ".lua", ".php" };

/// The length in bytes of the first character when a terminal shows it as a character; 0 for
/// control characters, line breaks and malformed bytes.
std::size_t leadingCharacter(std::string_view text)
{
    auto const character = g_utf8_get_char_validated(text.data(), static_cast<gssize>(text.size()));
    // Both of the function's error codes are above the last character.
    if (character > 0x10FFFF)
        return 0;
    auto const type = g_unichar_type(character);
    if (type == G_UNICODE_CONTROL || type == G_UNICODE_LINE_SEPARATOR
        || type == G_UNICODE_PARAGRAPH_SEPARATOR)
        return 0;
    return static_cast<std::size_t>(g_utf8_next_char(text.data()) - text.data());
}

} // namespace

bool isListable(std::string_view name)
{
    if (name.empty() || name.size() > longestName)
        return false;
    while (!name.empty()) {
        auto const length = leadingCharacter(name);
        if (length == 0)
            return false;
        name.remove_prefix(length);
    }
    return true;
}

std::string_view withoutScriptExtension(std::string_view fileName)
{
    auto const dot = fileName.rfind('.');
    if (dot == std::string_view::npos || dot == 0)
        return fileName;
    auto const isScript
        = std::ranges::find(scriptExtensions, fileName.substr(dot)) != std::end(scriptExtensions);
    return isScript ? fileName.substr(0, dot) : fileName;
}

std::size_t editDistance(std::string_view left, std::string_view right, std::size_t limit)
{
    auto const gap
        = left.size() > right.size() ? left.size() - right.size() : right.size() - left.size();
    if (gap >= limit)
        return limit;
    // Of the beginning of `left` that has been looked at, to each beginning of `right`.
    std::vector<std::size_t> row(right.size() + 1);
    std::iota(row.begin(), row.end(), 0U);
    for (auto const character : left) {
        auto diagonal = row.front()++;
        for (std::size_t index = 0; index < right.size(); ++index) {
            auto const changed = diagonal + (character == right[index] ? 0 : 1);
            diagonal = row[index + 1];
            row[index + 1] = std::min({ changed, diagonal + 1, row[index] + 1 });
        }
    }
    return std::min(row.back(), limit);
}

std::string printable(std::string_view text)
{
    constexpr auto digits = "0123456789ABCDEF";
    std::string result;
    while (!text.empty()) {
        auto const length = leadingCharacter(text);
        if (length > 0) {
            result += text.substr(0, length);
        } else {
            auto const byte = static_cast<std::uint8_t>(text.front());
            result.append("\\x").append(1, digits[byte >> 4]).append(1, digits[byte & 0xF]);
        }
        text.remove_prefix(std::max<std::size_t>(length, 1));
    }
    return result;
}

std::string shellQuoted(std::string const& text)
{
    g_autofree char* quoted = g_shell_quote(text.c_str());
    return quoted;
}

} // namespace quillbar::shortcuts
