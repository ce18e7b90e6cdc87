#include "linux/tray_SampleMenu.h"
#include "linux/widgets_Application.h"
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

TEST(MenuExportLabel, IsOneLineThatNoMenuHasToCut)
{
    EXPECT_EQ(exportedLabel(command(std::string("a\0b", 3))), QString::fromUtf8("a\uFFFDb"));
    EXPECT_EQ(exportedLabel(command("line\nbreak")), "line break");
    EXPECT_EQ(exportedLabel(command(std::string(5000, '_'))), QString(160, '_') + QChar(0x2026));
    // No character is cut in two: of the 80th only the first half would fit.
    for (auto const* character : { "💜", "e\u0301" })
        EXPECT_EQ(exportedLabel(command(std::string(79, 'a') + character + 'x')),
            QString(79, 'a') + QChar(0x2026));
    auto withHotkey = command(std::string(79, 'a') + "  (K)");
    withHotkey.keptEnding = "  (K)";
    EXPECT_EQ(exportedLabel(withHotkey), QString(75, 'a') + QChar(0x2026) + "  (K)");
}

TEST(MenuExportShortcut, NamesModifiersAsHostsReadThem)
{
    EXPECT_EQ(exportedShortcut({ "Z", commandKey | optionKey }),
        QStringList({ "Super", "Alt", "Shift", "z" }));
    for (auto const& [desktop, comma] : { std::pair { "XFCE", "comma" }, { "KDE", "," } }) {
        qputenv("XDG_CURRENT_DESKTOP", desktop);
        EXPECT_EQ(exportedShortcut({ ",", commandKey }), QStringList({ "Super", comma }));
    }
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
