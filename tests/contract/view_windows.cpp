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

    void show()
    {
        window->makeKeyAndOrderFront();
        test::runUntil([this] { return window->isKeyWindow(); });
    }

    /// Below those that were added before.
    template <typename Kind> std::shared_ptr<Kind> add(std::shared_ptr<Kind> view)
    {
        auto const count = window->contentView().subviews().size();
        view->setFrame({ 10, 10 + 30 * static_cast<double>(count), 200, 22 });
        return window->contentView().addSubview(std::move(view));
    }
    std::shared_ptr<TextField> addField() { return add(std::make_shared<TextField>()); }

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
    add(std::make_shared<Label>("5"));
    show();

    window->makeFirstResponder(first);
    for (auto const& expected : { last, first }) {
        test::press({ key::tab, 0 });
        EXPECT_EQ(window->firstResponder(), expected);
    }
    test::press({ key::tab, shiftKey });
    EXPECT_EQ(window->firstResponder(), last);
    last->removeFromSuperview();
    EXPECT_EQ(window->firstResponder(), nullptr);
}

TEST_F(ViewWindows, FocusedButton_isPressedByReturnAndLeftByArrows)
{
    auto const first = add(std::make_shared<Button>());
    auto const second = add(std::make_shared<Button>());
    int clicks = 0;
    first->onClick = [&] { ++clicks; };
    show();
    window->makeFirstResponder(first);
    test::press({ key::returnKey, 0 });
    EXPECT_EQ(clicks, 1);
    if (!test::movesFocusItself())
        GTEST_SKIP() << "the arrows do what the system decides";
    for (auto const& expected : { second, first, second }) {
        test::press({ expected == second ? key::downArrow : key::leftArrow, 0 });
        EXPECT_EQ(window->firstResponder(), expected);
    }
}

TEST_F(ViewWindows, ClickedField_hasTheKeyboard)
{
    auto const first = addField();
    auto const second = addField();
    show();
    for (auto const& field : { second, first }) {
        test::click(*field);
        EXPECT_EQ(window->firstResponder(), field);
        test::press({ 0, 0 }, "a");
        EXPECT_EQ(field->text(), "a");
    }
}

TEST_F(ViewWindows, KeyThatAMonitorConsumes_reachesNothing)
{
    auto const field = addField();
    int clicks = 0;
    auto const button = add(std::make_shared<Button>());
    button->setKeyEquivalent(ButtonKey::Return);
    button->onClick = [&] { ++clicks; };
    show();
    window->makeFirstResponder(field);
    std::vector<KeyEvent> seen;
    auto result = KeyEventResult::Consume;
    auto monitor = addKeyDownMonitor([&](KeyEvent const& event) {
        seen.push_back(event);
        return result;
    });
    std::vector<KeyEvent> const keys { { 0, 0 }, { key::returnKey, 0 }, { key::tab, 0 },
        { key::escape, 0 }, { 0, commandKey | optionKey | controlKey | shiftKey } };
    for (auto const& event : keys)
        test::press(event, event.keyCode == 0 ? "a" : "");
    EXPECT_EQ(seen, keys);
    EXPECT_EQ(field->text(), "");
    EXPECT_EQ(clicks, 0);
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(window->firstResponder(), field);

    result = KeyEventResult::Pass;
    test::press({ 0, 0 }, "a");
    test::press({ key::returnKey, 0 });
    EXPECT_EQ(seen.size(), keys.size() + 2);
    EXPECT_EQ(field->text(), "a");
    EXPECT_EQ(clicks, 1);
}

TEST_F(ViewWindows, WindowThatAKeyDestroys_getsNoMoreOfIt)
{
    auto const destroy = [this] { window.reset(); };
    for (bool const isMonitor : { true, false }) {
        window = std::make_shared<Window>(Size { 300, 200 }, WindowStyle::TitledClosable);
        auto const button = add(std::make_shared<Button>());
        button->setKeyEquivalent(ButtonKey::Return);
        button->onClick = destroy;
        std::weak_ptr<Window> const gone = window;
        show();
        Token monitor;
        if (isMonitor) {
            monitor = addKeyDownMonitor([&](KeyEvent const&) {
                destroy();
                return KeyEventResult::Pass;
            });
        }
        test::press({ key::returnKey, 0 });
        test::settle();
        EXPECT_TRUE(gone.expired());
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
        show();
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
    if (!test::movesFocusItself())
        GTEST_SKIP() << "Tab goes where the system decides";
    for (int row = 0; row < 700; ++row)
        test::press({ key::tab, 0 });
    auto const focused = window->firstResponder();
    ASSERT_EQ(focused, list->subviews()[699]);
    EXPECT_NE(focused->native(), nullptr);
    EXPECT_TRUE(intersects(scroll->visibleRect(), focused->frame()));
    EXPECT_LE(peerCount(), 21u);
}

TEST_F(ScrolledList, Focus_staysOnAViewThatIsScrolledAwayAndDoesNotScroll)
{
    auto const& first = list->subviews()[0];
    scroll->setOffset(10000);
    window->makeFirstResponder(first);
    EXPECT_NE(first->native(), nullptr);
    test::press({ 0, 0 }, "a");
    EXPECT_EQ(std::static_pointer_cast<TextField>(first)->text(), "a");
    EXPECT_EQ(scroll->offset(), 10000);
}

} // namespace
} // namespace quillbar::platform
