#include "shortcuts/Names.h"

#include <gtest/gtest.h>

#include <vector>

namespace quillbar::shortcuts {

TEST(Names, WhatWouldBreakAList_isRefused)
{
    for (auto const& name : std::vector<std::string> {
             " ", "-n", "a b", "日本", "👩‍👩‍👧", "<&_>", std::string(255, 'a') })
        EXPECT_TRUE(isListable(name)) << name;
    for (auto const& name : std::vector<std::string> { "", "a\nb", "\t", "\x1B[2J", "\x7F",
             "\u0085", "\u2028", "\u2029", "a\xC3", "\xFF", std::string(256, 'a') })
        EXPECT_FALSE(isListable(name)) << printable(name);
    EXPECT_FALSE(isListable({ "a\0b", 3 }));
}

TEST(Names, InMessages_areHarmless)
{
    EXPECT_EQ(printable("a é\x1B[2J\n\xFF"), "a é\\x1B[2J\\x0A\\xFF");
    EXPECT_EQ(shellQuoted("it's $HOME"), R"('it'\''s $HOME')");
}

} // namespace quillbar::shortcuts
