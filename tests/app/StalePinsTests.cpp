#include "app/AppFixture.h"
#include "app/StalePins.h"

namespace quillbar {
namespace {

using namespace std::chrono_literals;

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class StalePins : public AppFixture {
protected:
    StalePins()
    {
        config = settled({ "A", "B", "C" });
        config.groupOf = std::map<std::string, std::string> { { "A", "Work" } };
        config.shortcutHotkeys = { { "A", { 17, 0x100 } } };
    }

    Config config;
};

TEST(MissingPins, KeepPinnedOrderAndDuplicatesAndCase)
{
    EXPECT_THAT(missingPins({ "C", "A", "B", "A" }, { "B", "a" }), ElementsAre("C", "A", "A"));
    EXPECT_THAT(missingPins({ "A" }, { "A", "A", "B" }), IsEmpty());
    EXPECT_THAT(missingPins({ "A", "B" }, {}), ElementsAre("A", "B"));
}

TEST(StalePinsAlert, NamesOneOrMany)
{
    auto const one = stalePinsAlert({ "A" });
    EXPECT_EQ(one.style, platform::AlertStyle::Warning);
    EXPECT_EQ(one.messageText, "A pinned shortcut is missing");
    EXPECT_EQ(one.informativeText,
        "These shortcuts were deleted from the Shortcuts app:\n\nA\n\nRemove them from Quillbar?");
    EXPECT_THAT(one.buttons, ElementsAre("Remove", "Keep"));

    auto const many = stalePinsAlert({ "", "A & B", "A & B" });
    EXPECT_EQ(many.messageText, "Some pinned shortcuts are missing");
    EXPECT_EQ(many.informativeText,
        "These shortcuts were deleted from the Shortcuts app:\n\n\nA & B\nA & B\n\n"
        "Remove them from Quillbar?");
}

TEST_F(StalePins, Remove_savesTheRestAndLeavesWhatElseIsKnown)
{
    config.pinned = { "A", "B", "C", "A" };
    setListing("B\nD\n");
    headless::queueAlertAnswer({ .button = 0, .text = {} });
    start(config);
    ASSERT_THAT(headless::shownAlerts(), SizeIs(1));
    auto expected = config;
    expected.pinned = { "B" };
    EXPECT_EQ(app->config(), expected);
    EXPECT_EQ(Config::load(), expected);
}

TEST_F(StalePins, Keep_changesNothing)
{
    setListing("");
    headless::queueAlertAnswer([](platform::Alert const& alert) {
        EXPECT_THAT(alert.informativeText, testing::HasSubstr("\n\nA\nB\nC\n\n"));
        std::filesystem::remove(Config::fileURL());
        return platform::AlertAnswer { .button = 1, .text = {} };
    });
    EXPECT_EQ(start(config).config(), config);
    EXPECT_FALSE(std::filesystem::exists(Config::fileURL()));
}

TEST_F(StalePins, WithNothingMissing_nobodyIsAskedNorTheToolWithoutPins)
{
    setListing("A\nB\nC\n");
    start(settled({}));
    EXPECT_THAT(headless::readChildren(), IsEmpty());
    start(config);
    EXPECT_THAT(headless::readChildren(), SizeIs(1));
    EXPECT_THAT(headless::shownAlerts(), IsEmpty());
}

TEST_F(StalePins, FromAToolThatHangs_nothingIsConcluded)
{
    setListing(std::nullopt, nullptr, 10s);
    EXPECT_EQ(start(config).config(), config);
    EXPECT_THAT(headless::shownAlerts(), IsEmpty());
    EXPECT_EQ(item("B").representedObject, "B");
}

TEST_F(StalePins, QuittingMeanwhile_endsTheStart)
{
    config.permissionsShown = std::nullopt;
    setListing(std::nullopt, platform::terminate);
    start(config);
    EXPECT_THAT(menu().items, IsEmpty());
    EXPECT_EQ(Config::load(), config);
}

TEST_F(StalePins, TheAlert_standsBeforeTheFirstMenu)
{
    setListing("B\n", nullptr, 1999ms);
    headless::queueAlertAnswer([this](platform::Alert const&) {
        headless::advance(1h);
        EXPECT_THAT(menu().items, IsEmpty());
        EXPECT_TRUE(button().image());
        return platform::AlertAnswer { .button = 0, .text = {} };
    });
    start(config);
    EXPECT_EQ(item("B").representedObject, "B");
    EXPECT_THROW((void)item("C"), std::runtime_error);
}

TEST_F(StalePins, WithoutAnAnswerForLong_theStartGoesOnAndTheQuestionComesLater)
{
    bool isReady = false;
    setListing(
        "B\n",
        [&] {
            EXPECT_TRUE(isReady);
            EXPECT_EQ(item("C").representedObject, "C");
            EXPECT_THAT(headless::registeredHotkeys(), SizeIs(2));
            EXPECT_THAT(runTimes(), ElementsAre(3500));
        },
        4s);
    config.launchAtLoginShortcuts = { { "A", true } };
    headless::queueAlertAnswer({ .button = 0, .text = {} });
    start(config, [&] { isReady = true; });
    EXPECT_THAT(app->config().pinned, ElementsAre("B"));
    EXPECT_EQ(Config::load(), app->config());
    EXPECT_THROW((void)item("C"), std::runtime_error);
    EXPECT_THAT(headless::registeredHotkeys(), SizeIs(1));
}

TEST_F(StalePins, ALateQuestion_isDroppedWhileSomeoneTypes)
{
    for (auto const open : { &AppDelegate::openSettings, &AppDelegate::openPalette }) {
        auto const openOne = [&] {
            setListing("B\n");
            ((*app).*open)();
        };
        setListing("B\n", openOne, 3s);
        EXPECT_EQ(start(config).config(), config);
        EXPECT_THAT(headless::shownAlerts(), IsEmpty());
    }
}

} // namespace
} // namespace quillbar
