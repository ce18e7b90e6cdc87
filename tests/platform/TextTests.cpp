#include "platform/Text.h"

#include <gtest/gtest.h>

#include <vector>

namespace quillbar::platform {

TEST(Text, Isolated_closesInWhatTurnsLinesAround)
{
    struct {
        char const* text;
        char const* expected;
    } const cases[] = {
        { "", "" },
        { "plain “é” 日本", "plain “é” 日本" },
        { "a\u202C\u2069b", "a\u202C\u2069b" },
        { "שלום abc", "\u2068שלום abc\u2069" },
        { "a\u202Eb", "\u2068a\u202Eb\u2069" },
        { "a\u2067b", "\u2068a\u2067b\u2069\u2069" },
        { "a\u2066b\u2069c", "\u2068a\u2066b\u2069c\u2069" },
        // Ends of nothing, which would end what closes the text in.
        { "a\u2069\u2069\u202Eb\u2069", "\u2068a\u202Eb\u2069" },
    };
    for (auto const& [text, expected] : cases)
        EXPECT_EQ(isolated(text), expected);
    EXPECT_EQ(isolated(std::string(1023, 'a') + "é"), std::string(1023, 'a') + "…");
}

TEST(Text, SearchForm_ignoresCaseAndHowAccentsAreEncoded)
{
    struct {
        char const* text;
        char const* query;
        bool isFound;
    } const cases[] = {
        { "STRASSE", "straße", true },
        { "Groß", "GROSS", true },
        { "ΣΑΣ", "σας", true },
        { "caf\u00E9", "CAFE\u0301", true },
        { "caf\u00E9", "cafe", false },
        { "cafe\u0301s", "cafe", false },
        { "e\u0301e", "E", true },
        { "\U00010400", "\U00010428", true },
        { "a\xC3", "A\uFFFD", true },
    };
    for (auto const& [text, query, isFound] : cases)
        EXPECT_EQ(searchFormContains(searchForm(text), searchForm(query)), isFound) << text;
}

TEST(Text, Trimmed_leavesNoUnicodeWhiteSpaceAtTheEnds)
{
    EXPECT_EQ(trimmed(" \t\r\n\v\f\u0085\u00A0\u2003\u2028\u2029\u3000a b\u1680"), "a b");
    EXPECT_EQ(trimmed(" \u202F"), "");
}

TEST(Text, IsValidUtf8_refusesWhatIsNoScalarValue)
{
    for (auto const* valid : { "", "a", "é", "\uFFFD\uFFFF", "\U0010FFFF" })
        EXPECT_TRUE(isValidUtf8(valid)) << valid;
    for (auto const* invalid : { "\x80", "\xC3", "\xC0\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80",
             "\xE2\x82", "\xF8\x88\x80\x80\x80" })
        EXPECT_FALSE(isValidUtf8(invalid)) << invalid;
}

TEST(Text, UpperCased_changesEveryLetter)
{
    EXPECT_EQ(upperCased("work straße ø"), "WORK STRASSE Ø");
}

TEST(Text, IsOrderedBefore_goesByScalarValues)
{
    EXPECT_FALSE(isOrderedBefore("e\u0301a", "\u00E9a") || isOrderedBefore("\u00E9a", "e\u0301a"));
    std::vector<std::string> const ordered
        = { "", "10", "9", "Zap", "apple", "apple pie", "zoo", "été", "日本", "\uFFFD", "👍" };
    for (std::size_t left = 0; left < ordered.size(); ++left) {
        for (std::size_t right = 0; right < ordered.size(); ++right)
            EXPECT_EQ(isOrderedBefore(ordered[left], ordered[right]), left < right)
                << ordered[left] << " / " << ordered[right];
    }
}

} // namespace quillbar::platform
