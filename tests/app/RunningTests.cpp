#include "app/AppFixture.h"

namespace quillbar {
namespace {

using platform::NotificationAuthorization;
using platform::SystemColor;
using std::chrono::milliseconds;
using testing::ElementsAre;
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
        runToEnd("B&é", fails);
        EXPECT_EQ(callCount("requestNotificationAuthorization"), 1);
        EXPECT_THAT(record.postedNotifications,
            SizeIs(answer == NotificationAuthorization::Denied ? 0 : 2));
    }
    EXPECT_EQ(record.postedNotifications[0].life, platform::NotificationLife::Kept);
    EXPECT_NE(record.postedNotifications[0].identifier, record.postedNotifications[1].identifier);
    EXPECT_EQ(record.postedNotifications[1].address, "shortcuts://open-shortcut?name=B%26%C3%A9");
}

TEST_F(Running, ByName_isForPinsOnly)
{
    start(config);
    EXPECT_FALSE(app->runPinned("Z"));
    EXPECT_TRUE(app->runPinned("B"));
    EXPECT_THAT(runNames(), ElementsAre("B"));
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

} // namespace
} // namespace quillbar
