#include "platform/macos/text/Strings.h"

#include <vector>

namespace quillbar::platform {

namespace {

constexpr char32_t replacement = 0xFFFD;

struct Character {
    char32_t scalar = replacement;
    std::size_t length = 1;
};

struct Lead {
    std::size_t length;
    unsigned char lowestSecond = 0x80;
    unsigned char highestSecond = 0xBF;
};

/// What may follow a first byte; a length of 0 for one that begins nothing.
Lead leadOf(unsigned char first)
{
    if (first < 0x80)
        return { 1 };
    if (first < 0xC2 || first > 0xF4)
        return { 0 };
    if (first < 0xE0)
        return { 2 };
    if (first < 0xF0)
        return { 3, static_cast<unsigned char>(first == 0xE0 ? 0xA0 : 0x80),
            static_cast<unsigned char>(first == 0xED ? 0x9F : 0xBF) };
    return { 4, static_cast<unsigned char>(first == 0xF0 ? 0x90 : 0x80),
        static_cast<unsigned char>(first == 0xF4 ? 0x8F : 0xBF) };
}

/// The first character; the bytes of one that breaks off count together as one U+FFFD.
Character firstCharacter(std::string_view text)
{
    auto const first = static_cast<unsigned char>(text.front());
    auto const lead = leadOf(first);
    if (lead.length < 2)
        return lead.length == 1 ? Character { first, 1 } : Character {};
    auto scalar = static_cast<char32_t>(first & (0x7FU >> lead.length));
    for (std::size_t index = 1; index < lead.length; ++index) {
        auto const byte = static_cast<unsigned char>(index < text.size() ? text[index] : 0);
        if (byte < (index == 1 ? lead.lowestSecond : 0x80)
            || byte > (index == 1 ? lead.highestSecond : 0xBF))
            return { replacement, index };
        scalar = (scalar << 6U) | (byte & 0x3FU);
    }
    return { scalar, lead.length };
}

void appendUtf8(std::string& text, char32_t scalar)
{
    auto const append = [&text](char32_t byte) { text += static_cast<char>(byte); };
    auto const appendRest = [&](unsigned shift) { append(0x80U | ((scalar >> shift) & 0x3FU)); };
    if (scalar < 0x80) {
        append(scalar);
    } else if (scalar < 0x800) {
        append(0xC0U | (scalar >> 6U));
        appendRest(0);
    } else if (scalar < 0x10000) {
        append(0xE0U | (scalar >> 12U));
        appendRest(6);
        appendRest(0);
    } else {
        append(0xF0U | (scalar >> 18U));
        appendRest(12);
        appendRest(6);
        appendRest(0);
    }
}

bool isHighSurrogate(unichar unit)
{
    return unit >= 0xD800 && unit < 0xDC00;
}

bool isLowSurrogate(unichar unit)
{
    return unit >= 0xDC00 && unit < 0xE000;
}

} // namespace

// Decoded here, as Foundation refuses a text with a malformed sequence as a whole.
NSString* nsString(std::string_view text)
{
    std::vector<unichar> units;
    units.reserve(text.size());
    while (!text.empty()) {
        auto const [scalar, length] = firstCharacter(text);
        if (scalar >= 0x10000) {
            units.push_back(static_cast<unichar>(0xD7C0 + (scalar >> 10U)));
            units.push_back(static_cast<unichar>(0xDC00 | (scalar & 0x3FFU)));
        } else {
            units.push_back(static_cast<unichar>(scalar));
        }
        text.remove_prefix(length);
    }
    return [NSString stringWithCharacters:units.data() length:units.size()];
}

std::string utf8(NSString* text)
{
    std::vector<unichar> units(text.length);
    [text getCharacters:units.data() range:NSMakeRange(0, units.size())];
    std::string result;
    result.reserve(units.size());
    for (std::size_t index = 0; index < units.size(); ++index) {
        char32_t const unit = units[index];
        if (isHighSurrogate(units[index]) && index + 1 < units.size()
            && isLowSurrogate(units[index + 1]))
            appendUtf8(result, ((unit - 0xD7C0) << 10U) + (units[++index] - 0xDC00U));
        else if (isHighSurrogate(units[index]) || isLowSurrogate(units[index]))
            appendUtf8(result, replacement);
        else
            appendUtf8(result, unit);
    }
    return result;
}

} // namespace quillbar::platform
