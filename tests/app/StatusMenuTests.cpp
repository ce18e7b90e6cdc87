#include "app/StatusMenu.h"
#include "support/HeadlessTest.h"

namespace quillbar {
namespace {

using platform::MenuItem;
using platform::MenuItemKind;
using testing::ElementsAre;
using Titles = std::vector<std::string>;

class StatusMenuTest : public test::HeadlessTest {
protected:
    [[nodiscard]] std::vector<MenuItem> items() const
    {
        return makeStatusMenu(config, actions).items;
    }

    /// One text per row: its title, "-" for a separator, in brackets when disabled.
    [[nodiscard]] Titles rows() const
    {
        Titles titles;
        for (auto const& item : items()) {
            if (item.kind == MenuItemKind::Separator)
                titles.emplace_back("-");
            else
                titles.push_back(item.isEnabled ? item.title : "[" + item.title + "]");
        }
        return titles;
    }

    /// The rows between the first heading and the fixed commands.
    [[nodiscard]] Titles pinnedRows() const
    {
        auto const all = rows();
        return { all.begin() + 1, all.end() - 9 };
    }

    Config config;
    StatusMenuActions actions;
};

constexpr auto const* footer = "[⌘⌥·17 · type to jump · 1–9 to run]";

TEST_F(StatusMenuTest, WithoutPins_saysSo)
{
    EXPECT_THAT(rows(),
        ElementsAre("[QUILLBAR]", "[No shortcuts pinned]", "-", "Edit in Shortcuts…",
            "Type to Jump…", "Settings…", "-", "Check for Updates…", "About Quillbar",
            "Quit Quillbar", footer));
    EXPECT_EQ(makeStatusMenu(config, actions).title, "");
}

TEST_F(StatusMenuTest, Headings_standWhereTheGroupChanges)
{
    struct Case {
        Titles pinned;
        std::map<std::string, std::string> groups;
        Titles rows;
    };
    std::vector<Case> const cases {
        { { "A", "B", "C" }, { { "A", "Work" }, { "C", "Work" } }, { "[WORK]", "A", "B", "C" } },
        { { "A", "B" }, { { "A", "Work" }, { "B", "work" } }, { "[WORK]", "A", "[WORK]", "B" } },
        { { "A", "B", "C" }, { { "A", "x" }, { "B", "y" }, { "C", "x" } },
            { "[X]", "A", "[Y]", "B", "[X]", "C" } },
        { { "A", "B" }, { { "A", "" }, { "B", "größe" } }, { "A", "[GRÖSSE]", "B" } },
    };
    for (auto const& [pinned, groups, expected] : cases) {
        config.pinned = pinned;
        config.groupOf = groups;
        auto shown = pinnedRows();
        shown.resize(shown.size() - 2);
        EXPECT_EQ(shown, expected);
    }
}

TEST_F(StatusMenuTest, Title_namesAValidHotkey)
{
    config.pinned = { "Backup", "B", "C", "א" };
    config.shortcutHotkeys = { { "Backup", { 17, 0x900 } }, { "B", { 0, 0x900 } },
        { "gone", { 17, 0x100 } }, { "א", { 18, 0x900 } } };
    auto const all = items();
    EXPECT_EQ(all[1].title, "Backup  (⌘⌥·17)");
    EXPECT_EQ(all[1].representedObject, "Backup");
    EXPECT_EQ(all[2].title, "B");
    EXPECT_EQ(all[3].title, "C");
    EXPECT_EQ(all[1].keptEnding, "  (⌘⌥·17)");
    EXPECT_EQ(all[4].keptEnding, "\u2069  (⌘⌥·18)");
}

} // namespace
} // namespace quillbar
