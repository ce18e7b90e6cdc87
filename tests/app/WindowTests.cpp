#include "app/AppFixture.h"
#include "platform/view/Label.h"
#include "support/Person.h"

namespace quillbar {
namespace {

using platform::Button;
using platform::commandKey;
using platform::optionKey;
constexpr std::uint32_t paletteKey = 17;

class WindowTest : public AppFixture {
protected:
    [[nodiscard]] bool click(std::string const& title) const
    {
        return test::click(test::find<Button>(*record.windows.front(), title));
    }

    void openPalette()
    {
        headless::fire(paletteKey, commandKey | optionKey);
        headless::runPosted();
    }
};

TEST_F(WindowTest, WithoutAnAnswer_theWelcomeClaimsNothing)
{
    setListing(std::nullopt);
    start({});
    EXPECT_TRUE(test::find<Button>(*record.keyWindow, "Pick your shortcuts"));
}

TEST_F(WindowTest, NextPalette_listsThePinsOfItsTime)
{
    setListing("A\nB\n");
    start(settled({ "A" }));
    openPalette();
    test::press(platform::key::escape);
    app->openSettings();
    ASSERT_TRUE(click("B"));
    openPalette();
    EXPECT_TRUE(test::find<platform::Label>(*record.keyWindow, "B"));
}

TEST_F(WindowTest, Save_storesAndAppliesInOrderWithTheMenuLast)
{
    setListing("A\n");
    start(settled({ "A" }));
    app->openSettings();
    ASSERT_TRUE(
        test::choose(test::findAll<platform::PopUpButton>(*record.keyWindow).front(), "Star"));
    ASSERT_TRUE(click("Start Quillbar at login"));
    auto const before = static_cast<std::ptrdiff_t>(record.journal.size());
    ASSERT_TRUE(click("Save"));
    Names const effects(record.journal.begin() + before, record.journal.end());
    EXPECT_THAT(effects,
        testing::ElementsAre("syncStatusButton", "removeLoginEntry", "registerSystemHotkey",
            "syncStatusMenu", "activateIgnoringOtherApps"));
    EXPECT_EQ(Config::load().iconSymbol, "star.fill");
    EXPECT_EQ(Config::load().launchAtLogin, false);
    EXPECT_EQ(app->config(), Config::load());
}

} // namespace
} // namespace quillbar
