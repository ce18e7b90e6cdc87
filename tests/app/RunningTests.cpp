#include "app/AppFixture.h"
#include "services/HotkeyManager.h"

namespace quillbar {
namespace {

using platform::NotificationAuthorization;
using platform::NotificationSound;
using platform::SystemColor;
using std::chrono::milliseconds;
using testing::ElementsAre;
using testing::Field;
using testing::IsEmpty;
using testing::SizeIs;
using Tint = std::optional<platform::Color>;

class Running : public AppFixture {
protected:
    Running()
    {
        config.pinned = { "A", "B", "C", "D", "E" };
        // Longer than a pulse, so that the pulses do not overlap.
        fails.exitStatus = 1;
        fails.duration = milliseconds(400);
        succeeds.duration = milliseconds(400);
    }

    void runToEnd(std::string const& name, headless::ChildScript const& script)
    {
        setRun(name, script);
        app->trigger(name);
        headless::advance(milliseconds(600));
    }

    Config config;
    headless::ChildScript fails;
    headless::ChildScript succeeds;
};

TEST_F(Running, Success_rebuildsTheMenuAndFailurePulsesRed)
{
    start(config);
    auto const before = record.statusItem->menu();
    runToEnd("A", succeeds);
    auto const after = record.statusItem->menu();
    EXPECT_NE(after, before);
    EXPECT_EQ(after->items.size(), before->items.size());

    setRun("B", fails);
    app->trigger("B");
    headless::advance(milliseconds(400));
    EXPECT_EQ(record.statusItem->menu(), after);
    EXPECT_EQ(button().alpha(), 0.35);
    EXPECT_EQ(button().contentTintColor(), Tint(SystemColor::Red));
    headless::advance(milliseconds(150));
    EXPECT_EQ(button().alpha(), 1);
    EXPECT_EQ(button().contentTintColor(), Tint());
}

TEST_F(Running, OnlyTheFirstFailure_asksForTheRightAndIsShownWithIt)
{
    for (auto const answer :
        { NotificationAuthorization::Denied, NotificationAuthorization::Authorized }) {
        reset();
        record.notificationAnswer = answer;
        start(config);
        runToEnd("A", succeeds);
        EXPECT_EQ(callCount("requestNotificationAuthorization"), 0);
        runToEnd("B", fails);
        runToEnd("B", fails);
        EXPECT_EQ(callCount("requestNotificationAuthorization"), 1);
        EXPECT_THAT(record.postedNotifications,
            SizeIs(answer == NotificationAuthorization::Denied ? 0 : 2));
        runToEnd("A", succeeds);
    }
    ASSERT_THAT(record.postedNotifications, SizeIs(3));
    auto const& failed = record.postedNotifications.front();
    auto const& launched = record.postedNotifications.back();
    EXPECT_EQ(failed.body, "“B” couldn’t run. Check that it still exists in Shortcuts.");
    EXPECT_EQ(failed.sound, NotificationSound::Default);
    EXPECT_EQ(launched.body, "Launched “A”");
    EXPECT_EQ(launched.sound, NotificationSound::None);
    EXPECT_NE(failed.identifier, launched.identifier);
}

TEST_F(Running, RunAll_keepsItsScheduleAndItsNames)
{
    for (auto const& name : config.pinned)
        setRun(name, fails);
    platform::performAction(platform::MenuItem((start(config), item("Run All"))));
    EXPECT_THAT(runNames(), IsEmpty()) << "the first start comes from the queue, too";
    // What runs on outlives its owner's last reference.
    app.reset();
    headless::advance(std::chrono::minutes(1));
    EXPECT_THAT(runNames(), ElementsAre("A", "B", "C", "D", "E"));
    EXPECT_THAT(runTimes(), ElementsAre(0, 600, 1200, 1800, 2400));
    EXPECT_EQ(record.statusItem, nullptr) << "the last run lets the controller go";
}

TEST_F(Running, TheOutcome_isIgnoredOnceTheControllerIsGone)
{
    record.notificationAuthorization = NotificationAuthorization::Authorized;
    setRun("A", fails);
    start(config).trigger("A");
    app.reset();
    headless::advance(std::chrono::seconds(1));
    EXPECT_THAT(record.postedNotifications, IsEmpty());
}

TEST_F(Running, AMenuItem_runsWhatItRepresents)
{
    start(config);
    platform::performAction(platform::MenuItem(item("B")));
    app->run({});
    EXPECT_THAT(runNames(), ElementsAre("B"));

    platform::performAction(platform::MenuItem(item("Edit in Shortcuts…")));
    EXPECT_THAT(record.openedAddresses, ElementsAre("shortcuts://"));
    platform::performAction(platform::MenuItem(item("Check for Updates…")));
    EXPECT_EQ(callCount("checkForUpdates"), 1);
}

} // namespace
} // namespace quillbar
