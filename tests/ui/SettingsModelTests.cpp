#include "ui/SettingsModel.h"

#include <gtest/gtest.h>

namespace quillbar {
namespace {

using Names = std::vector<std::string>;
using Move = SettingsModel::Move;

Config pinning(Names pinned)
{
    Config config;
    config.pinned = std::move(pinned);
    return config;
}

TEST(SettingsModel, Move_putsTheFirstEntryOfTheNameIntoTheGap)
{
    struct {
        Names before;
        std::string name;
        std::size_t gap;
        Names after;
    } const cases[] = {
        { { "A", "B", "C", "D" }, "A", 3, { "B", "C", "A", "D" } },
        { { "A", "B", "C", "D" }, "D", 1, { "A", "D", "B", "C" } },
        { { "A", "B", "C", "D" }, "A", 1, { "A", "B", "C", "D" } },
        { { "A", "B", "C", "D" }, "A", 4, { "B", "C", "D", "A" } },
        { { "A", "B", "C", "D" }, "B", 99, { "A", "C", "D", "B" } },
        { { "A", "B", "A" }, "A", 3, { "B", "A", "A" } },
    };
    for (auto const& [before, name, gap, after] : cases) {
        SettingsModel model(pinning(before), { "A", "B", "C", "D" });
        EXPECT_TRUE(model.move(name, gap));
        EXPECT_EQ(model.order(), after) << name << " into gap " << gap;
    }
}

TEST(SettingsModel, PinsAndUnpins_keepOrderAndOffersSorted)
{
    SettingsModel model(pinning({ "Zap", "Gone", "m" }), { "a", "m", "Zap", "B", "B" });
    EXPECT_EQ(model.order(), (Names { "Zap", "m" }));
    EXPECT_EQ(model.others(), (Names { "a", "B", "B" }));
    EXPECT_FALSE(model.move("B", 0));
    EXPECT_TRUE(model.pin("B"));
    EXPECT_FALSE(model.pin("B"));
    EXPECT_FALSE(model.pin("unknown"));
    EXPECT_EQ(model.order(), (Names { "Zap", "m", "B" }));
    EXPECT_EQ(model.unpin(0), "Zap");
    EXPECT_EQ(model.others(), (Names { "Zap", "a" }));
    EXPECT_EQ(model.unpin(2), std::nullopt);
}

TEST(SettingsModel, UnpinAndPinAgain_keepsFlagAndSectionButLosesTheHotkey)
{
    SettingsModel model(pinning({ "A" }), { "A" });
    model.setHotkey("A", { 17, 0x100 });
    model.setLoginFlag("A", true);
    model.setGroup("A", "Games");
    model.unpin(0);
    auto const unpinned = model.configAfterMoving("A", Move::OutOfPinned, {});
    EXPECT_TRUE(unpinned.launchAtLoginShortcuts->empty());
    EXPECT_TRUE(unpinned.groupOf->empty());

    model.pin("A");
    auto const pinned = model.configAfterMoving("A", Move::IntoPinned, {});
    EXPECT_EQ(pinned.pinned, (Names { "A" }));
    EXPECT_TRUE(pinned.shortcutHotkeys->empty());
    EXPECT_TRUE(pinned.launchesAtLogin("A"));
    EXPECT_EQ(pinned.groupOf->at("A"), "Games");
}

TEST(SettingsModel, Records_leaveOutWhatIsNotPinnedOrMeansNothing)
{
    auto config = pinning({ "A", "B", "Gone" });
    config.onboarded = true;
    config.shortcutHotkeys
        = { { { "A", { 17, 0x900 } }, { "B", { 0, 0x100 } }, { "Gone", { 5, 0 } } } };
    config.launchAtLoginShortcuts = { { { "A", false }, { "C", true }, { "Gone", true } } };
    config.groupOf = { { { "A", "" }, { "B", "Work" }, { "Gone", "Work" } } };
    SettingsModel model(config, { "A", "B", "C" });

    auto const& saved = model.save({ .iconSymbol = "bolt", .launchAtLogin = false });
    auto expected = pinning({ "A", "B" });
    expected.onboarded = true;
    expected.iconSymbol = "bolt";
    expected.launchAtLogin = false;
    expected.shortcutHotkeys = { { { "A", { 17, 0x900 } } } };
    expected.launchAtLoginShortcuts = { { { "A", false } } };
    expected.groupOf = { { { "B", "Work" } } };
    EXPECT_EQ(saved, expected);
}

} // namespace
} // namespace quillbar
