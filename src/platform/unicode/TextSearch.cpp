#include "platform/TextSearch.h"

#include <unicode/locid.h>
#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include <algorithm>
#include <cstring>

namespace quillbar::platform {

namespace {

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
    auto const length = static_cast<int32_t>(std::min(text.size(), longestCharacter));
    auto const start = icu::UnicodeString::fromUTF8(icu::StringPiece(text.data(), length));
    return (U_GET_GC_MASK(start.char32At(0)) & U_GC_M_MASK) != 0;
}

} // namespace

std::string searchForm(std::string_view text)
{
    std::string form;
    if (std::none_of(text.begin(), text.end(), needsUnicode)) {
        form.resize(text.size());
        std::transform(text.begin(), text.end(), form.begin(), lowerCasedAscii);
        return form;
    }
    auto const piece = icu::StringPiece(text.data(), static_cast<int32_t>(text.size()));
    auto folded = icu::UnicodeString::fromUTF8(piece).foldCase(
        hasDottedCapitalI() ? U_FOLD_CASE_EXCLUDE_SPECIAL_I : U_FOLD_CASE_DEFAULT);
    auto status = U_ZERO_ERROR;
    auto const* const composer = icu::Normalizer2::getNFCInstance(status);
    auto const composed = U_SUCCESS(status) ? composer->normalize(folded, status) : folded;
    (U_SUCCESS(status) ? composed : folded).toUTF8String(form);
    return form;
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
