#include "platform/Text.h"

#include <unicode/bytestream.h>
#include <unicode/locid.h>
#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>
#include <unicode/ustring.h>

#include <algorithm>
#include <cstring>

namespace quillbar::platform {

namespace {

icu::StringPiece piece(std::string_view text)
{
    return { text.data(), static_cast<std::int32_t>(text.size()) };
}

icu::UnicodeString unicode(std::string_view text)
{
    return icu::UnicodeString::fromUTF8(piece(text));
}

std::string utf8(icu::UnicodeString const& text)
{
    std::string result;
    return text.toUTF8String(result);
}

bool isAscii(std::string_view text)
{
    return std::ranges::all_of(text, [](unsigned char byte) { return byte < 0x80; });
}

enum class BidiRole { None, Turning, IsolateStart, IsolateEnd };

BidiRole bidiRole(UChar32 character)
{
    switch (u_charDirection(character)) {
    case U_RIGHT_TO_LEFT:
    case U_RIGHT_TO_LEFT_ARABIC:
    case U_ARABIC_NUMBER:
    case U_LEFT_TO_RIGHT_EMBEDDING:
    case U_LEFT_TO_RIGHT_OVERRIDE:
    case U_RIGHT_TO_LEFT_EMBEDDING:
    case U_RIGHT_TO_LEFT_OVERRIDE:
        return BidiRole::Turning;
    case U_LEFT_TO_RIGHT_ISOLATE:
    case U_RIGHT_TO_LEFT_ISOLATE:
    case U_FIRST_STRONG_ISOLATE:
        return BidiRole::IsolateStart;
    case U_POP_DIRECTIONAL_ISOLATE:
        return BidiRole::IsolateEnd;
    default:
        return BidiRole::None;
    }
}

/// The text in NFC, as UTF-8, whose bytes are ordered like the scalar values.
std::string composed(icu::UnicodeString const& text)
{
    auto status = U_ZERO_ERROR;
    auto const* normalizer = icu::Normalizer2::getNFCInstance(status);
    return utf8(U_SUCCESS(status) ? normalizer->normalize(text, status) : text);
}

// Turkic languages pair I with ı and İ with i.
bool hasDottedCapitalI()
{
    static bool const result = [] {
        auto const* const language = icu::Locale::getDefault().getLanguage();
        return std::strcmp(language, "tr") == 0 || std::strcmp(language, "az") == 0;
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
    auto const first = unicode(text.substr(0, longestCharacter)).char32At(0);
    return (U_GET_GC_MASK(first) & U_GC_M_MASK) != 0;
}

} // namespace

bool isValidUtf8(std::string_view text)
{
    // Without a target the conversion only checks and counts.
    auto status = U_ZERO_ERROR;
    auto const source = piece(text);
    u_strFromUTF8(nullptr, 0, nullptr, source.data(), source.size(), &status);
    return status != U_INVALID_CHAR_FOUND;
}

std::string trimmed(std::string_view text)
{
    auto const characters = unicode(text);
    std::int32_t begin = 0;
    std::int32_t end = characters.length();
    // All white space lies in the basic plane, so single units decide.
    while (begin < end && u_isUWhiteSpace(characters[begin]))
        ++begin;
    while (begin < end && u_isUWhiteSpace(characters[end - 1]))
        --end;
    return utf8(characters.tempSubStringBetween(begin, end));
}

std::string upperCased(std::string_view text)
{
    return utf8(unicode(text).toUpper(icu::Locale::getDefault()));
}

std::string isolated(std::string_view whole)
{
    auto text = shortened(whole);
    if (isAscii(text))
        return text;
    constexpr char16_t firstStrongIsolate = 0x2068;
    constexpr char16_t popIsolate = 0x2069;
    auto const characters = unicode(text);
    icu::UnicodeString result(firstStrongIsolate);
    bool isNeeded = false;
    int open = 1;
    for (std::int32_t index = 0; index < characters.length();
         index = characters.moveIndex32(index, 1)) {
        auto const character = characters.char32At(index);
        auto const role = bidiRole(character);
        // One end more than starts would let out what follows.
        if (role == BidiRole::IsolateEnd && open == 1)
            continue;
        open += role == BidiRole::IsolateStart ? 1 : role == BidiRole::IsolateEnd ? -1 : 0;
        isNeeded = isNeeded || role == BidiRole::IsolateStart || role == BidiRole::Turning;
        result.append(character);
    }
    for (; open > 0; --open)
        result.append(popIsolate);
    return isNeeded ? utf8(result) : text;
}

bool isOrderedBefore(std::string_view left, std::string_view right)
{
    if (isAscii(left) && isAscii(right))
        return left < right;
    return composed(unicode(left)) < composed(unicode(right));
}

std::string searchForm(std::string_view text)
{
    if (std::none_of(text.begin(), text.end(), needsUnicode)) {
        std::string form(text);
        std::ranges::transform(form, form.begin(), lowerCasedAscii);
        return form;
    }
    return composed(unicode(text).foldCase(
        hasDottedCapitalI() ? U_FOLD_CASE_EXCLUDE_SPECIAL_I : U_FOLD_CASE_DEFAULT));
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
