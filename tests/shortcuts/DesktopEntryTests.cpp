#include "shortcuts/DesktopEntry.h"

#include <gtest/gtest.h>

namespace quillbar::shortcuts {

TEST(DesktopEntry, OtherTexts_areNone)
{
    for (std::string const text : { "", "no entry", "[Desktop Entry]", "Type=Application",
             "[Desktop Entry]\nType=Link\nURL=x", "[Other]\nType=Application" })
        EXPECT_FALSE(parseDesktopEntry(text)) << text;
    std::string const entry = "[Desktop Entry]\nType=Application\nExec=rm file";
    EXPECT_TRUE(parseDesktopEntry(entry));
    EXPECT_FALSE(parseDesktopEntry(entry + '\0' + "-in-trash"));
}

TEST(CommandLine, Arguments_areSplitAndUnquotedWithoutFieldCodes)
{
    struct {
        std::string exec;
        std::vector<std::string> arguments;
    } const cases[] = {
        { R"("/opt/a b/prog" "x \"y\" \$HOME \`z\` \\")",
            { "/opt/a b/prog", R"(x "y" $HOME `z` \)" } },
        { R"(a\ b "" c'd'"e")", { "a b", "", "cde" } },
        { "prog %U --name=%c 100%% \"%f\" %i%k end", { "prog", "--name=", "100%", "", "end" } },
        { "prog %", { "prog", "%" } },
    };
    for (auto const& [exec, arguments] : cases)
        EXPECT_EQ(splitCommandLine(exec), arguments) << exec;
    for (auto const* none : { "", "  ", "%u", "\"\" x", "\"open", "p \\" })
        EXPECT_EQ(splitCommandLine(none), std::nullopt) << none;
}

} // namespace quillbar::shortcuts
