#include "shortcuts/DesktopEntry.h"

#include <gtest/gtest.h>

namespace quillbar::shortcuts {

namespace {

std::vector<std::string> actionNames(std::string const& lines)
{
    auto const entry = parseDesktopEntry("[Desktop Entry]\nType=Application\n" + lines);
    std::vector<std::string> names;
    for (auto const& action : entry->actions)
        names.push_back(action.name);
    return names;
}

} // namespace

TEST(DesktopEntry, ItsActions_areThoseListedOrAllThereAre)
{
    using Names = std::vector<std::string>;
    std::string const groups = "[Desktop Action b]\nName=B\n[Desktop Action a]\nName=A\n";
    EXPECT_EQ(actionNames(groups), (Names { "B", "A" }));
    EXPECT_EQ(actionNames("Actions=a;missing;b;a;\n" + groups), (Names { "A", "B" }));
    EXPECT_EQ(actionNames("Actions=\n" + groups), Names {});
}

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
