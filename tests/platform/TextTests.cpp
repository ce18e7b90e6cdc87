#include "platform/Text.h"

#include <gtest/gtest.h>

#include <cstdlib>
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

TEST(TextDeathTest, UpperCased_followsTheLanguage)
{
    // The language is read once per process, so each gets one of its own.
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    auto check = [](char const* language, std::string const& text, std::string const& expected) {
        setenv("LC_ALL", language, 1);
        std::exit(upperCased(text) == expected ? 0 : 1);
    };
    auto const succeeds = testing::ExitedWithCode(0);
    EXPECT_EXIT(check("C", "work straße ø", "WORK STRASSE Ø"), succeeds, "");
    EXPECT_EXIT(check("de_DE.UTF-8", "istanbul", "ISTANBUL"), succeeds, "");
    EXPECT_EXIT(check("tr_TR.UTF-8", "istanbul", "İSTANBUL"), succeeds, "");
}

TEST(Text, IsOrderedBefore_goesByScalarValues)
{
    std::vector<std::string> const ordered
        = { "", "10", "9", "Zap", "apple", "apple pie", "zoo", "été", "日本", "\uFFFD", "👍" };
    for (std::size_t left = 0; left < ordered.size(); ++left) {
        for (std::size_t right = 0; right < ordered.size(); ++right)
            EXPECT_EQ(isOrderedBefore(ordered[left], ordered[right]), left < right)
                << ordered[left] << " / " << ordered[right];
    }
}

} // namespace quillbar::platform
