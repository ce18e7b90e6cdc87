#include "linux/tray_Application.h"
#include "linux/tray_SampleMenu.h"
#include "platform/linux/tray/MenuExport.h"

#include <QImage>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <vector>

namespace quillbar::platform {
namespace {

using namespace quillbar::testing;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;

std::vector<int> idsOf(MenuExport& exported)
{
    return exported.row(MenuExport::rootId)->children;
}

class MenuExportTest : public ::testing::Test {
protected:
    std::optional<MenuChanges> set(std::vector<MenuItem> items)
    {
        return exported.setMenu(std::make_shared<Menu const>(Menu { {}, std::move(items) }));
    }

    QVariantMap propertiesOf(MenuItem item, QStringList const& names = {})
    {
        set({ std::move(item) });
        return exported.properties(*exported.row(idsOf(exported).front()), names);
    }

    MenuExport exported;
};

TEST(MenuExportLabel, ShowsEveryNameExactly)
{
    struct Case {
        char const* title;
        char const* label;
    };
    for (auto const& [title, label] : { Case { "under_score", "under__score" },
             Case { "__", "____" }, Case { "a & b <i>", "a & b <i>" },
             Case { "tab\there", "tab\there" }, Case { "🎉 \xff", "🎉 \uFFFD" } })
        EXPECT_EQ(exportedLabel(command(title)), QString::fromUtf8(label));
    EXPECT_EQ(exportedLabel(command(std::string("a\0b", 3))), QString::fromUtf8("a\uFFFDb"));
    EXPECT_EQ(exportedLabel(command("line\nbreak")), "line break");
    EXPECT_EQ(exportedLabel(command(std::string(5000, '_'))), QString(160, '_') + QChar(0x2026));
    // No character is cut in two: of the 80th only the first half would fit.
    EXPECT_EQ(
        exportedLabel(command(std::string(79, 'a') + "💜💜")), QString(79, 'a') + QChar(0x2026));
    EXPECT_EQ(exportedLabel(command(std::string(79, 'a') + "e\u0301x")),
        QString(79, 'a') + QChar(0x2026));
}

TEST(MenuExportShortcut, NamesModifiersAsHostsReadThem)
{
    EXPECT_EQ(
        exportedShortcut({ "t", commandKey | optionKey }), QStringList({ "Alt", "Super", "t" }));
    EXPECT_EQ(exportedShortcut({ "Z", commandKey }), QStringList({ "Shift", "Super", "z" }));
    for (auto const& [desktop, comma] : { std::pair { "XFCE", "comma" }, { "KDE", "," } }) {
        qputenv("XDG_CURRENT_DESKTOP", desktop);
        EXPECT_EQ(exportedShortcut({ ",", commandKey }), QStringList({ "Super", comma }));
    }
    EXPECT_EQ(exportedShortcut({ "1", 0 }), QStringList({ "1" }));
    EXPECT_THAT(exportedShortcut({ "", commandKey }), IsEmpty());
}

TEST_F(MenuExportTest, RowsKeepTheirIdsWhereverTheyMove)
{
    set({ heading("WORK"), pin("A"), pin("B"), MenuItem::separator(), pin("A") });
    auto const before = idsOf(exported);
    EXPECT_EQ(exported.rows().size(), 6U);
    set({ pin("B"), pin("A"), pin("C"), pin("A"), heading("WORK") });
    auto const after = idsOf(exported);
    EXPECT_THAT(std::vector({ after[0], after[1], after[3], after[4] }),
        ElementsAre(before[2], before[1], before[4], before[0]));
    EXPECT_THAT(before, Not(::testing::Contains(after[2])));
}

TEST_F(MenuExportTest, IdOfARemovedRowIsNeverGivenAway)
{
    set({ pin("A"), pin("B") });
    auto const removed = idsOf(exported)[1];
    set({ pin("A"), pin("C"), heading("B"), command("B") });
    EXPECT_EQ(exported.row(removed), nullptr);
    set({ pin("B"), pin("C") });
    EXPECT_EQ(exported.row(removed), nullptr);
}

TEST_F(MenuExportTest, EqualMenuChangesNothingButRunsTheNewAction)
{
    auto runs = 0;
    set({ pin("A", [](auto const&) { FAIL() << "the action of a replaced menu"; }) });
    auto const id = idsOf(exported).front();
    auto const revision = exported.revision();
    EXPECT_FALSE(set({ pin("A", [&runs](auto const&) { ++runs; }) }));
    EXPECT_EQ(exported.revision(), revision);
    performAction(*exported.row(id)->item);
    EXPECT_EQ(runs, 1);
}

TEST_F(MenuExportTest, EveryVisibleDifferenceIsAChange)
{
    auto const image = [](double red) {
        return std::make_shared<Drawing const>(Drawing {
            { 16, 16 }, { FillLinearGradient { { 0, 0, 16, 16 }, { .red = red }, {}, 90 } } });
    };
    auto base = pin("A");
    base.image = image(1);
    auto same = base;
    same.image = image(1);
    EXPECT_TRUE(isSameMenu({ {}, { base } }, { {}, { same } }));

    std::vector<MenuItem> others(7, base);
    others[0].title = "A  (⌥⌘B)";
    others[1].isEnabled = false;
    others[2].image = image(0);
    others[3].image.reset();
    others[4].keyEquivalent.key = "1";
    others[5].submenu = { pin("B") };
    others[6].representedObject = "B";
    for (auto const& other : others)
        EXPECT_FALSE(isSameMenu({ {}, { base } }, { {}, { other } })) << &other - others.data();
}

TEST_F(MenuExportTest, TellsWhichPropertiesOfAKeptRowChangedAndVanished)
{
    auto before = pin("A");
    before.keyEquivalent = { "1", 0 };
    set({ before, pin("B") });
    auto const id = idsOf(exported).front();
    auto after = pin("A");
    after.title = "A  (⌥⌘B)";
    auto const changes = *set({ after, pin("B"), pin("C") });
    ASSERT_EQ(changes.updated.size(), 1);
    EXPECT_EQ(changes.updated[0].id, id);
    EXPECT_EQ(changes.updated[0].properties.value("label"), QString::fromUtf8("A  (⌥⌘B)"));
    ASSERT_EQ(changes.removed.size(), 1);
    EXPECT_EQ(changes.removed[0].names, QStringList({ "shortcut" }));
}

TEST_F(MenuExportTest, PropertiesAreWhatWasAskedForAndNoDefaults)
{
    application();
    auto item = heading("WORK");
    item.image = SymbolImage { "heart.fill", {}, {}, {} };
    auto const all = propertiesOf(item);
    EXPECT_EQ(all.keys(), QStringList({ "enabled", "icon-data", "label" }));
    EXPECT_EQ(propertiesOf(item, { "label", "visible" }).keys(), QStringList({ "label" }));
    EXPECT_EQ(propertiesOf(MenuItem::separator()), QVariantMap({ { "type", "separator" } }));
    auto const icon = QImage::fromData(all.value("icon-data").toByteArray(), "PNG");
    EXPECT_EQ(icon.size(), QSize(16, 16));
    EXPECT_EQ(icon.pixelColor(8, 6), QColor(0x80, 0x80, 0x80));
}

} // namespace
} // namespace quillbar::platform
