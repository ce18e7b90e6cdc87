#include "platform/Text.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace quillbar::platform {

TEST(TextLanguageDeathTest, UpperCased_followsTheLanguage)
{
    // The language is read once per process, so each gets one of its own.
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    auto check = [](char const* language, std::string const& expected) {
        setenv("LC_ALL", language, 1);
        std::exit(upperCased("istanbul") == expected ? 0 : 1);
    };
    auto const succeeds = testing::ExitedWithCode(0);
    EXPECT_EXIT(check("de_DE.UTF-8", "ISTANBUL"), succeeds, "");
    EXPECT_EXIT(check("tr_TR.UTF-8", "İSTANBUL"), succeeds, "");
}

} // namespace quillbar::platform
