#include "app/AppFixture.h"

namespace quillbar {
namespace {

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
