#include "support/HeadlessTest.h"
#include "ui/IconMenu.h"

namespace quillbar {
namespace {

using platform::MenuItem;

class IconChooser : public test::HeadlessTest {
protected:
    static IconMenu menuFor(std::string const& current)
    {
        return iconMenu(current, [] {});
    }
    static std::string imageOf(MenuItem const& item)
    {
        return std::get<platform::SymbolImage>(*item.image).name;
    }
};

TEST_F(IconChooser, Selection_followsTheCurrentSymbol)
{
    record.missingSymbols = { "no such symbol", "apple.logo" };
    struct {
        char const* current;
        char const* title;
        char const* image;
    } const cases[] = {
        { "bolt.fill", "Lightning Filled", "bolt.fill" },
        { "heart.fill", "Heart", "heart.fill" },
        { "eyeglasses", "Custom", "eyeglasses" },
        { "no such symbol", "Custom", "heart.fill" },
        { "apple.logo", "Custom", "heart.fill" },
    };
    for (auto const& [current, title, image] : cases) {
        auto const menu = menuFor(current);
        auto const& item = menu.items.at(menu.selected.value());
        EXPECT_EQ(item.title, title);
        EXPECT_EQ(item.representedObject, current);
        EXPECT_EQ(imageOf(item), image);
        EXPECT_EQ(menu.selected == 0u, item.title == "Custom" || item.title == "Heart");
    }
    EXPECT_EQ(menuFor("").selected, std::nullopt);
}

TEST_F(IconChooser, TypedName_countsTrimmedWhateverTheButton)
{
    struct {
        platform::AlertAnswer answer;
        char const* symbol;
    } const cases[] = {
        { { .button = 0, .text = "  music.note \n" }, "music.note" },
        { { .button = 1, .text = "gearshape" }, "gearshape" },
        { { .button = 0, .text = " \t " }, "" },
    };
    for (auto const& [answer, symbol] : cases) {
        record.alertAnswers.push_back(answer);
        EXPECT_EQ(askForIcon("bolt"), symbol);
    }
    auto const& alert = record.shownAlerts.front();
    EXPECT_EQ(alert.accessory->text, "bolt");
    EXPECT_EQ(alert.buttons, (std::vector<std::string> { "OK", "Cancel" }));
}

} // namespace
} // namespace quillbar
