#include "platform/Text.h"

#include <unicode/bytestream.h>
#include <unicode/locid.h>
#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>
#include <unicode/ustring.h>

#include <algorithm>

namespace quillbar::platform {

namespace {

icu::StringPiece piece(std::string_view text)
{
    return { text.data(), static_cast<std::int32_t>(text.size()) };
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

/// In UTF-8, so that bytes compare like scalar values.
std::string composed(std::string_view text)
{
    auto status = U_ZERO_ERROR;
    auto const* normalizer = icu::Normalizer2::getNFCInstance(status);
    auto const unicode = icu::UnicodeString::fromUTF8(piece(text));
    if (U_FAILURE(status))
        return utf8(unicode);
    return utf8(normalizer->normalize(unicode, status));
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
    auto const unicode = icu::UnicodeString::fromUTF8(piece(text));
    std::int32_t begin = 0;
    std::int32_t end = unicode.length();
    // All white space lies in the basic plane, so single units decide.
    while (begin < end && u_isUWhiteSpace(unicode[begin]))
        ++begin;
    while (begin < end && u_isUWhiteSpace(unicode[end - 1]))
        --end;
    return utf8(unicode.tempSubStringBetween(begin, end));
}

std::string upperCased(std::string_view text)
{
    return utf8(icu::UnicodeString::fromUTF8(piece(text)).toUpper(icu::Locale::getDefault()));
}

std::string isolated(std::string_view text)
{
    if (isAscii(text))
        return std::string(text);
    constexpr char16_t firstStrongIsolate = 0x2068;
    constexpr char16_t popIsolate = 0x2069;
    auto const unicode = icu::UnicodeString::fromUTF8(piece(text));
    icu::UnicodeString result(firstStrongIsolate);
    bool isNeeded = false;
    int open = 1;
    for (std::int32_t index = 0; index < unicode.length(); index = unicode.moveIndex32(index, 1)) {
        auto const character = unicode.char32At(index);
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
    return isNeeded ? utf8(result) : std::string(text);
}

bool isOrderedBefore(std::string_view left, std::string_view right)
{
    if (isAscii(left) && isAscii(right))
        return left < right;
    return composed(left) < composed(right);
}

} // namespace quillbar::platform
