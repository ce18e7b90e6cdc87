#include "shortcuts/Names.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <optional>

namespace quillbar::shortcuts {

namespace {

constexpr std::string_view scriptExtensions[]
    = { ".sh", ".bash", ".zsh", ".fish", ".py", ".pl", ".rb", ".js", ".lua", ".php" };

/// Takes the first character of a text that is not empty; nothing when it is malformed.
std::optional<char32_t> takeCharacter(std::string_view& text)
{
    auto const lead = static_cast<std::uint8_t>(text.front());
    text.remove_prefix(1);
    if (lead < 0x80)
        return lead;

    struct {
        std::uint8_t mask;
        std::uint8_t marker;
        std::size_t continuations;
        char32_t smallest;
    } const forms[] = {
        { 0xE0, 0xC0, 1, 0x80 },
        { 0xF0, 0xE0, 2, 0x800 },
        { 0xF8, 0xF0, 3, 0x10000 },
    };
    for (auto const& form : forms) {
        if ((lead & form.mask) != form.marker)
            continue;
        char32_t character = lead & static_cast<std::uint8_t>(~form.mask);
        for (std::size_t index = 0; index < form.continuations; ++index) {
            if (text.empty() || (static_cast<std::uint8_t>(text.front()) & 0xC0) != 0x80)
                return std::nullopt;
            character = character << 6 | (static_cast<std::uint8_t>(text.front()) & 0x3F);
            text.remove_prefix(1);
        }
        auto const isSurrogate = character >= 0xD800 && character <= 0xDFFF;
        if (character < form.smallest || character > 0x10FFFF || isSurrogate)
            return std::nullopt;
        return character;
    }
    return std::nullopt;
}

bool isControlOrLineBreak(char32_t character)
{
    return character < 0x20 || (character >= 0x7F && character < 0xA0) || character == 0x2028
        || character == 0x2029;
}

} // namespace

bool isListable(std::string_view name)
{
    if (name.empty())
        return false;
    while (!name.empty()) {
        auto const character = takeCharacter(name);
        if (!character || isControlOrLineBreak(*character))
            return false;
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

bool isLeftAside(std::string_view fileName)
{
    return fileName.starts_with('.') || fileName.ends_with('~');
}

std::string printable(std::string_view text)
{
    constexpr auto digits = "0123456789ABCDEF";
    std::string result;
    while (!text.empty()) {
        auto rest = text;
        auto const character = takeCharacter(rest);
        auto const bytes = text.substr(0, text.size() - rest.size());
        if (character && !isControlOrLineBreak(*character)) {
            result += bytes;
        } else {
            for (auto const byte : bytes) {
                result += "\\x";
                result += digits[static_cast<std::uint8_t>(byte) >> 4];
                result += digits[static_cast<std::uint8_t>(byte) & 0xF];
            }
        }
        text = rest;
    }
    return result;
}

std::string shellQuoted(std::string_view text)
{
    std::string result = "'";
    for (auto const character : text) {
        if (character == '\'')
            result += "'\\'";
        result += character;
    }
    return result + "'";
}

} // namespace quillbar::shortcuts
