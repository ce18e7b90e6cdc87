#include "contract/Backend.h"
#include "platform/view/Button.h"
#include "platform/view/Label.h"
#include "platform/view/ScrollView.h"
#include "platform/view/TextField.h"
#include "platform/view/Window.h"

#include <gtest/gtest.h>

namespace quillbar::platform {
namespace {

class ViewWindows : public testing::Test {
protected:
    ~ViewWindows() override
    {
        window.reset();
        test::settle();
    }

    std::shared_ptr<TextField> addField()
    {
        return window->contentView().addSubview(std::make_shared<TextField>());
    }

    std::shared_ptr<Window> window
        = std::make_shared<Window>(Size { 300, 200 }, WindowStyle::TitledClosable);
};

TEST_F(ViewWindows, Tab_visitsWhatIsVisibleAndOnInTheOrderOfAdding)
{
    auto const first = addField();
    auto const off = addField();
    auto const hidden = addField();
    auto const last = addField();
    off->setEnabled(false);
    hidden->setHidden(true);
    window->contentView().addSubview(std::make_shared<Label>("5"));
    window->makeKeyAndOrderFront();

    for (auto const& expected : { first, last, first }) {
        window->userPressedFocusKey({ key::tab, 0 });
        EXPECT_EQ(window->firstResponder(), expected);
    }
    window->userPressedFocusKey({ key::tab, shiftKey });
    EXPECT_EQ(window->firstResponder(), last);
    last->removeFromSuperview();
    EXPECT_EQ(window->firstResponder(), nullptr);
}

TEST_F(ViewWindows, FocusedButton_isPressedByReturnAndLeftByArrows)
{
    auto const add = [&] { return window->contentView().addSubview(std::make_shared<Button>()); };
    auto const first = add();
    auto const second = add();
    int clicks = 0;
    first->onClick = [&] { ++clicks; };
    window->makeKeyAndOrderFront();
    window->makeFirstResponder(first);
    window->userPressedKey({ key::returnKey, 0 });
    EXPECT_EQ(clicks, 1);
    for (auto const& expected : { second, first, second }) {
        window->userPressedFocusKey({ expected == second ? key::downArrow : key::leftArrow, 0 });
        EXPECT_EQ(window->firstResponder(), expected);
    }
}

class ScrolledList : public ViewWindows {
protected:
    ScrolledList()
    {
        scroll->setFrame({ 0, 0, 300, 100 });
        scroll->setBorder(ScrollBorder::Bezel);
        window->contentView().addSubview(scroll);
        scroll->setDocumentView(list);
        window->makeKeyAndOrderFront();
        for (int row = 0; row < 1000; ++row) {
            auto const field = list->addSubview(std::make_shared<TextField>());
            field->setFrame({ 10, 20.0 * row, 200, 20 });
        }
        list->setFrame({ 0, 0, 280, 20000 });
    }

    [[nodiscard]] std::size_t peerCount() const
    {
        std::size_t count = 0;
        for (auto const& field : list->subviews())
            count += field->native() ? 1 : 0;
        return count;
    }

    std::shared_ptr<ScrollView> scroll = std::make_shared<ScrollView>();
    std::shared_ptr<View> list = std::make_shared<View>();
};

TEST_F(ScrolledList, Tab_reachesAndShowsEveryView)
{
    for (int row = 0; row < 700; ++row)
        window->userPressedFocusKey({ key::tab, 0 });
    auto const focused = window->firstResponder();
    ASSERT_EQ(focused, list->subviews()[699]);
    EXPECT_NE(focused->native(), nullptr);
    EXPECT_TRUE(intersects(scroll->visibleRect(), focused->frame()));
    EXPECT_LE(peerCount(), 21u);
}

TEST_F(ScrolledList, Focus_staysOnAViewThatIsScrolledAwayAndDoesNotScroll)
{
    auto const& first = list->subviews()[0];
    scroll->userScrolled(10000);
    window->makeFirstResponder(first);
    EXPECT_NE(first->native(), nullptr);
    EXPECT_EQ(scroll->offset(), 10000);
}

} // namespace
} // namespace quillbar::platform
