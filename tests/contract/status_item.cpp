// A status item keeps what it is told, a setter never runs an action, and an action may end the
// item that it belongs to.

#include "contract/Backend.h"
#include "platform/view/StatusItem.h"

#include <gtest/gtest.h>

namespace quillbar::platform {
namespace {

class StatusItemContract : public testing::Test {
protected:
    ~StatusItemContract() override
    {
        item.reset();
        test::settle();
    }

    [[nodiscard]] Menu menu(std::string const& title, std::function<void()> action)
    {
        MenuItem command;
        command.title = title;
        command.action = [this, action = std::move(action)](MenuItem const&) {
            ++calls;
            if (action)
                action();
        };
        return { .title = {}, .items = { MenuItem::separator(), command } };
    }

    std::unique_ptr<StatusItem> item = std::make_unique<StatusItem>();
    int calls = 0;
};

TEST_F(StatusItemContract, Setters_areKeptAndRunNoAction)
{
    auto* const button = item->button();
    ASSERT_NE(button, nullptr);
    Image const heart = SymbolImage { .name = "heart.fill",
        .accessibilityDescription = "Quillbar",
        .size = std::nullopt,
        .tint = std::nullopt };
    for (int round = 0; round < 2; ++round) {
        item->setMenu(menu("_A & <b>\t😀", {}));
        button->setImage(heart);
        button->setToolTip("Quillbar · ⌥⌘T");
        button->setContentTintColor(SystemColor::Red);
        button->setAlpha(0.35);
        test::settle();
    }
    EXPECT_EQ(button->image(), heart);
    EXPECT_EQ(button->toolTip(), "Quillbar · ⌥⌘T");
    EXPECT_EQ(button->contentTintColor(), std::optional<Color>(SystemColor::Red));
    EXPECT_EQ(button->alpha(), 0.35);
    EXPECT_EQ(item->menu()->items.back().title, "_A & <b>\t😀");
    EXPECT_EQ(calls, 0);
}

TEST_F(StatusItemContract, AnAction_mayReplaceTheMenuItIsIn)
{
    item->setMenu(menu("first", [this] { item->setMenu(menu("second", {})); }));
    auto const held = item->menu();
    performAction(held->items.back());
    test::settle();
    EXPECT_EQ(item->menu()->items.back().title, "second");
    EXPECT_EQ(held->items.back().title, "first");
    EXPECT_EQ(calls, 1);
}

TEST_F(StatusItemContract, AnAction_mayEndTheItem)
{
    item->setMenu(menu("end", [this] { item.reset(); }));
    auto const held = item->menu();
    performAction(held->items.back());
    test::settle();
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(item, nullptr);
}

TEST_F(StatusItemContract, ADisabledItem_doesNothing)
{
    auto disabled = menu("off", {}).items.back();
    disabled.isEnabled = false;
    performAction(disabled);
    EXPECT_EQ(calls, 0);
}

} // namespace
} // namespace quillbar::platform
