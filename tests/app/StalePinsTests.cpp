#include "app/AppFixture.h"
#include "app/StalePins.h"

namespace quillbar {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class StalePins : public AppFixture {
protected:
    StalePins()
    {
        config = settled({ "A", "B", "C", "A" });
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
    EXPECT_EQ(one.messageText, "A pinned shortcut is missing");
    EXPECT_EQ(one.informativeText,
        "These shortcuts were deleted from the Shortcuts app:\n\nA\n\nRemove them from Quillbar?");
    EXPECT_THAT(one.buttons, ElementsAre("Remove", "Keep"));
    EXPECT_EQ(stalePinsAlert({ "A", "A" }).messageText, "Some pinned shortcuts are missing");
}

TEST_F(StalePins, Remove_savesTheRestAndLeavesWhatElseIsKnown)
{
    setListing("B\nD\n");
    record.alertAnswers.push_back({ .button = 0, .text = {} });
    start(config);
    auto expected = config;
    expected.pinned = { "B" };
    EXPECT_EQ(app->config(), expected);
    EXPECT_EQ(Config::load(), expected);
    EXPECT_THROW((void)item("C"), std::runtime_error);
}

TEST_F(StalePins, Keep_changesNothing)
{
    setListing("");
    record.onAlert = [](platform::Alert const& alert) {
        EXPECT_THAT(alert.informativeText, testing::HasSubstr("\n\nA\nB\nC\nA\n\n"));
        std::filesystem::remove(Config::fileURL());
    };
    record.alertAnswers.push_back({ .button = 1, .text = {} });
    EXPECT_EQ(start(config).config(), config);
    EXPECT_FALSE(std::filesystem::exists(Config::fileURL()));
}

TEST_F(StalePins, WithoutPinsOrAnAnswer_nothingIsConcluded)
{
    start(settled({}));
    EXPECT_THAT(record.readChildren, IsEmpty());
    setListing(std::nullopt);
    EXPECT_EQ(start(config).config(), config);
    EXPECT_THAT(record.readChildren, SizeIs(1));
    EXPECT_THAT(record.shownAlerts, IsEmpty());
    EXPECT_EQ(item("B").representedObject, "B");
}

} // namespace
} // namespace quillbar
