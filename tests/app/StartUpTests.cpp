#include "app/AppFixture.h"
#include "platform/LaunchAgent.h"

#include <algorithm>

namespace quillbar {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class StartUp : public AppFixture {
protected:
    /// The combinations that are claimed, without their order.
    [[nodiscard]] std::set<std::pair<std::uint32_t, std::uint32_t>> claimed() const
    {
        std::set<std::pair<std::uint32_t, std::uint32_t>> combinations;
        for (auto const& hotkey : record.registeredHotkeys)
            combinations.emplace(hotkey.keyCode, hotkey.modifiers);
        return combinations;
    }

    Config config;
};

TEST_F(StartUp, Steps_comeInOrder)
{
    config.pinned = { "A", "B" };
    config.shortcutHotkeys = { { "A", { 18, 0x100 } } };
    setListing("A\n");
    start(config);
    auto steps = record.journal;
    steps.erase(std::unique(steps.begin(), steps.end()), steps.end());
    steps.resize(std::min<std::size_t>(steps.size(), 10));
    EXPECT_THAT(steps,
        ElementsAre("setApplicationIcon", "startUpdater", "createStatusItem", "syncStatusButton",
            "readChildOutput", "runModal", "syncStatusMenu", "installMainMenu",
            "registerSystemHotkey", "writeLoginEntry"));
}

TEST_F(StartUp, Icon_fallsBackToTheHeartAndKeepsTheStoredName)
{
    record.missingSymbols = { "no.such.symbol" };
    for (std::string const stored : { "bolt.fill", "no.such.symbol" }) {
        config.iconSymbol = stored;
        start(config);
        auto const shown = std::get<platform::SymbolImage>(button().image().value());
        EXPECT_EQ(shown.name, stored == "bolt.fill" ? stored : "heart.fill");
        EXPECT_EQ(shown.accessibilityDescription, "Quillbar");
        EXPECT_EQ(app->config().iconSymbol, stored);
    }
}

TEST_F(StartUp, Hotkeys_areThePalettesAndThoseOfPinnedNames)
{
    config.pinned = { "A", "B" };
    config.shortcutHotkeys
        = { { "A", { 18, 0x100 } }, { "B", { 0, 0x100 } }, { "gone", { 19, 0x100 } } };
    start(config);
    EXPECT_THAT(claimed(), ElementsAre(std::pair(17U, 0x900U), std::pair(18U, 0x100U)));
    EXPECT_EQ(record.registeredHotkeys.front().id, app->menuHotkeyID());
    app->applyHotkeys();
    EXPECT_EQ(record.registeredHotkeys.size(), 2U);

    headless::fire(18, 0x100);
    EXPECT_THAT(runNames(), ElementsAre("A"));
    app.reset();
    headless::fire(18, 0x100);
    EXPECT_THAT(runNames(), ElementsAre("A"));
}

TEST_F(StartUp, AKeyCodeThatNoKeyCanHave_endsTheProgram)
{
    for (std::int64_t const keyCode : { std::int64_t(-1), std::int64_t(1) << 32 }) {
        auto edited = config;
        edited.menuHotkey = Hotkey { keyCode, 0x100 };
        EXPECT_DEATH(start(edited), "key code");
        edited = settled({ "A" });
        edited.shortcutHotkeys = { { "A", { keyCode, 0x100 } } };
        EXPECT_DEATH(start(edited), "key code");
    }
}

TEST_F(StartUp, AutoRun_takesFlaggedPinsInOrderWithoutFeedback)
{
    config.pinned = { "A", "B", "C" };
    config.launchAtLoginShortcuts
        = { { "A", false }, { "B", true }, { "C", true }, { "gone", true } };
    config.launchAtLogin = false;
    record.notificationAuthorization = platform::NotificationAuthorization::Authorized;
    start(config);
    auto const buttonSyncs = callCount("syncStatusButton");
    headless::advance(std::chrono::seconds(2));
    EXPECT_EQ(callCount("syncStatusButton"), buttonSyncs);
    app.reset();
    headless::advance(std::chrono::minutes(1));
    EXPECT_THAT(runNames(), ElementsAre("B", "C"));
    EXPECT_THAT(runTimes(), ElementsAre(1500, 3500));
    EXPECT_THAT(record.postedNotifications, IsEmpty());
}

TEST(LaunchAgent, PropertyList_holdsThePathAsText)
{
    EXPECT_THAT(
        platform::launchAgentPropertyList({ "com.quillbar.launcher", "/A & <B>/\"c'/quillbar" }),
        testing::HasSubstr("\t\t<string>/A &amp; &lt;B&gt;/\"c'/quillbar</string>\n"));
}

TEST_F(StartUp, WithoutNotificationsOrHotkey_anAlertExplainsTheOtherWayOnceForEver)
{
    record.notificationAuthorization = platform::NotificationAuthorization::Denied;
    record.hotkeyObstacles[{ 17, platform::commandKey | platform::optionKey }]
        = platform::HotkeyObstacle::NoService;
    for (int run = 0; run < 2; ++run) {
        start(settled({ "A" }));
        record.statusItem->systemReportedUnavailable("No icons.");
        headless::runPosted();
        app.reset();
    }
    ASSERT_THAT(record.shownAlerts, testing::SizeIs(1));
    EXPECT_EQ(record.shownAlerts.front().informativeText,
        "No icons. keys 2304+17: It does not work.\nUse the menu instead.");
}

} // namespace
} // namespace quillbar
