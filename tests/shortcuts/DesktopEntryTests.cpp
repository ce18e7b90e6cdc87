#include "shortcuts/DesktopEntry.h"

#include <gtest/gtest.h>

namespace quillbar::shortcuts {

namespace {

constexpr auto full = R"(# A comment
[Desktop Entry]
Type = Application
Name=Editor
Name[de]=Bearbeiter
Name[de_AT]=Schreiber
Name[sr@latin]=Urednik
Exec="/opt/an editor" --new\swindow %F
TryExec=/opt/editor
Path=/srv/work
Terminal=true
Actions=second;first;missing;

[Other Group]
Name=not this one

[Desktop Action first]
Name=First
Exec=editor --first
[Desktop Action second]
Name=Second
Name[de]=Zweite
Exec=editor --second
[Desktop Action unlisted]
Name=Unlisted
Exec=editor --unlisted
)";

std::vector<std::string> actionNames(DesktopEntry const& entry)
{
    std::vector<std::string> names;
    for (auto const& action : entry.actions)
        names.push_back(action.name);
    return names;
}

} // namespace

TEST(DesktopEntry, ItsKeys_areRead)
{
    auto const entry = parseDesktopEntry(full, {});
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->name, "Editor");
    EXPECT_EQ(entry->exec, R"("/opt/an editor" --new window %F)");
    EXPECT_EQ(entry->tryExec, "/opt/editor");
    EXPECT_EQ(entry->path, "/srv/work");
    EXPECT_TRUE(entry->runsInTerminal);
    EXPECT_FALSE(entry->isHidden);
    ASSERT_EQ(actionNames(*entry), (std::vector<std::string> { "Second", "First" }));
    EXPECT_EQ(entry->actions[0].exec, "editor --second");
}

TEST(DesktopEntry, WithoutAList_allActionsCount)
{
    std::string const text = "[Desktop Entry]\nType=Application\nName=N\n"
                             "[Desktop Action b]\nName=B\n[Desktop Action a]\nName=A\n";
    EXPECT_EQ(actionNames(*parseDesktopEntry(text, {})), (std::vector<std::string> { "B", "A" }));
}

TEST(DesktopEntry, TheName_isInTheFirstLanguageThereIs)
{
    auto name = [](std::vector<std::string> const& locales) {
        return parseDesktopEntry(full, locales)->name;
    };
    EXPECT_EQ(name({ "de_AT", "de" }), "Schreiber");
    EXPECT_EQ(name({ "de_CH", "de" }), "Bearbeiter");
    EXPECT_EQ(name({ "sr_RS@latin", "sr_RS", "sr@latin", "sr" }), "Urednik");
    EXPECT_EQ(name({ "fr_FR", "fr" }), "Editor");
    EXPECT_EQ(actionNames(*parseDesktopEntry(full, { "de" })),
        (std::vector<std::string> { "Zweite", "First" }));
}

TEST(DesktopEntry, Values_areUnescapedOnce)
{
    auto const entry = parseDesktopEntry("[Desktop Entry]\r\nType=Application\r\n"
                                         "Name=\\sa\\tb\\nc\\\\n\r\nExec=p \"\\\\\\\\\" \\\"q\\",
        {});
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->name, " a\tb\nc\\n");
    EXPECT_EQ(entry->exec, R"(p "\\" \"q\)");
}

TEST(DesktopEntry, OtherTexts_areNone)
{
    for (auto const* text : { "", "\n", "no entry", "[", "[]", "=", "[Desktop Entry]",
             "Type=Application", "[Desktop Entry]\nType=Link\nURL=x", "[Desktop Entry\n",
             "[Other]\nType=Application", "[Desktop Entry]\n#Type=Application" })
        EXPECT_FALSE(parseDesktopEntry(text, {})) << text;
}

} // namespace quillbar::shortcuts
