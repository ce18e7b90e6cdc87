#include "platform/Text.h"

#include "platform/macos/text/Strings.h"

#include <algorithm>

namespace quillbar::platform {

namespace {

bool isAscii(std::string_view text)
{
    return std::ranges::all_of(text, [](unsigned char byte) { return byte < 0x80; });
}

enum class BidiRole { None, Turning, IsolateStart, IsolateEnd };

struct UnitRange {
    unichar first;
    unichar last;
};

// The letters' blocks, the marks, embeddings and overrides. Beyond the basic plane a block is told
// by its high surrogates: U+10800 to U+10FFF and U+1E800 to U+1EFFF.
constexpr UnitRange turningUnits[] = {
    { 0x0590, 0x08FF },
    { 0x200F, 0x200F },
    { 0x202A, 0x202B },
    { 0x202D, 0x202E },
    { 0xD802, 0xD803 },
    { 0xD83A, 0xD83B },
    { 0xFB1D, 0xFDFF },
    { 0xFE70, 0xFEFC },
};

constexpr unichar firstStrongIsolate = 0x2068;
constexpr unichar popIsolate = 0x2069;

// Foundation does not tell the bidirectional classes of characters.
BidiRole bidiRole(unichar unit)
{
    if (unit == popIsolate)
        return BidiRole::IsolateEnd;
    if (unit >= 0x2066 && unit <= firstStrongIsolate)
        return BidiRole::IsolateStart;
    auto const isTurning = std::ranges::any_of(turningUnits,
        [unit](UnitRange const& range) { return unit >= range.first && unit <= range.last; });
    return isTurning ? BidiRole::Turning : BidiRole::None;
}

NSString* stringOf(unichar unit)
{
    return [NSString stringWithCharacters:&unit length:1];
}

/// The text in NFC, as UTF-8, whose bytes are ordered like the scalar values.
std::string composed(NSString* text)
{
    return utf8(text.precomposedStringWithCanonicalMapping);
}

// Turkic languages pair I with ı and İ with i.
bool hasDottedCapitalI()
{
    static bool const result = [] {
        NSString* const language = NSLocale.currentLocale.languageCode;
        return [language isEqualToString:@"tr"] || [language isEqualToString:@"az"];
    }();
    return result;
}

bool needsUnicode(char character)
{
    return (static_cast<unsigned char>(character) & 0x80U) != 0
        || (character == 'I' && hasDottedCapitalI());
}

char lowerCasedAscii(char character)
{
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a')
                                                : character;
}

bool startsWithMark(std::string_view text)
{
    constexpr std::size_t longestCharacter = 4;
    if (text.empty() || (static_cast<unsigned char>(text.front()) & 0x80U) == 0)
        return false;
    auto const mark = [nsString(text.substr(0, longestCharacter))
        rangeOfCharacterFromSet:NSCharacterSet.nonBaseCharacterSet
                        options:NSAnchoredSearch];
    return mark.location == 0;
}

} // namespace

bool isValidUtf8(std::string_view text)
{
    return isAscii(text) || utf8(nsString(text)) == text;
}

std::string trimmed(std::string_view text)
{
    return utf8([nsString(text)
        stringByTrimmingCharactersInSet:NSCharacterSet.whitespaceAndNewlineCharacterSet]);
}

std::string upperCased(std::string_view text)
{
    return utf8([nsString(text) uppercaseStringWithLocale:NSLocale.currentLocale]);
}

std::string isolated(std::string_view whole)
{
    auto text = shortened(whole);
    if (isAscii(text))
        return text;
    NSString* const characters = nsString(text);
    NSMutableString* const result = [NSMutableString stringWithString:stringOf(firstStrongIsolate)];
    bool isNeeded = false;
    int open = 1;
    for (NSUInteger index = 0; index < characters.length; ++index) {
        auto const unit = [characters characterAtIndex:index];
        auto const role = bidiRole(unit);
        // One end more than starts would let out what follows.
        if (role == BidiRole::IsolateEnd && open == 1)
            continue;
        open += role == BidiRole::IsolateStart ? 1 : role == BidiRole::IsolateEnd ? -1 : 0;
        isNeeded = isNeeded || role == BidiRole::IsolateStart || role == BidiRole::Turning;
        [result appendString:stringOf(unit)];
    }
    for (; open > 0; --open)
        [result appendString:stringOf(popIsolate)];
    return isNeeded ? utf8(result) : text;
}

bool isOrderedBefore(std::string_view left, std::string_view right)
{
    if (isAscii(left) && isAscii(right))
        return left < right;
    return composed(nsString(left)) < composed(nsString(right));
}

std::string searchForm(std::string_view text)
{
    if (std::none_of(text.begin(), text.end(), needsUnicode)) {
        std::string form(text);
        std::ranges::transform(form, form.begin(), lowerCasedAscii);
        return form;
    }
    return composed([nsString(text) stringByFoldingWithOptions:NSCaseInsensitiveSearch
                                                        locale:NSLocale.currentLocale]);
}

bool searchFormContains(std::string_view text, std::string_view query)
{
    for (auto found = text.find(query); found != std::string_view::npos;
         found = text.find(query, found + 1)) {
        if (!startsWithMark(text.substr(found + query.size())))
            return true;
    }
    return false;
}

} // namespace quillbar::platform
