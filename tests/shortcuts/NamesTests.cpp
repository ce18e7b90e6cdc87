#include "shortcuts/Names.h"

#include <gtest/gtest.h>

namespace quillbar::shortcuts {

TEST(Names, WhatWouldBreakAList_isRefused)
{
    for (auto const* name :
        { "a", " ", "-n", "a b", "日本", "👩‍👩‍👧", "\u00A0", "<&_>", "\U0010FFFF" })
        EXPECT_TRUE(isListable(name)) << name;
    for (auto const* name : { "", "a\nb", "a\rb", "\t", "\x1B[2J", "\x7F", "\u0085", "\u009F",
             "\u2028", "\u2029", "\x80", "a\xC3", "\xC0\xAF", "\xE0\x80\x80", "\xED\xA0\x80",
             "\xF4\x90\x80\x80", "\xF8\x88\x80\x80\x80", "\xFF" })
        EXPECT_FALSE(isListable(name)) << printable(name);
}

TEST(Names, OnlyAScriptsExtension_isLeftOut)
{
    struct {
        char const* fileName;
        char const* name;
    } const cases[] = {
        { "backup.sh", "backup" },
        { "a.b.py", "a.b" },
        { "a.tar.gz", "a.tar.gz" },
        { "report.pdf", "report.pdf" },
        { "x.SH", "x.SH" },
        { "sh", "sh" },
        { "x.", "x." },
        { ".sh", ".sh" },
        { "two words.php", "two words" },
    };
    for (auto const& [fileName, name] : cases)
        EXPECT_EQ(withoutScriptExtension(fileName), name);
}

TEST(Names, InMessages_areHarmless)
{
    EXPECT_EQ(printable("a é\x1B[2J\n\xFF"), "a é\\x1B[2J\\x0A\\xFF");
    EXPECT_EQ(shellQuoted("it's $HOME"), R"('it'\''s $HOME')");
}

} // namespace quillbar::shortcuts
