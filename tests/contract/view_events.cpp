#include "contract/Backend.h"
#include "platform/view/Button.h"
#include "platform/view/PopUpButton.h"
#include "platform/view/TableView.h"
#include "platform/view/TextField.h"
#include "platform/view/Window.h"

#include <gtest/gtest.h>

namespace quillbar::platform {
namespace {

constexpr KeyEvent letterA { 0, 0 };

class ViewEvents : public testing::Test {
protected:
    ViewEvents()
    {
        window->makeKeyAndOrderFront();
        test::runUntil([this] { return window->isKeyWindow(); });
    }
    ~ViewEvents() override
    {
        window.reset();
        test::settle();
    }

    template <typename Kind> std::shared_ptr<Kind> add(std::shared_ptr<Kind> view)
    {
        view->setFrame({ 10, 10, 200, 100 });
        return window->contentView().addSubview(std::move(view));
    }

    std::shared_ptr<PopUpButton> addPopUp()
    {
        auto popUp = add(std::make_shared<PopUpButton>());
        for (auto const* title : { "None", "Work" }) {
            MenuItem item;
            item.title = title;
            popUp->addItem(item);
        }
        return popUp;
    }

    std::shared_ptr<Window> window
        = std::make_shared<Window>(Size { 300, 200 }, WindowStyle::TitledClosable);
};

TEST_F(ViewEvents, Callback_mayDestroyItsSender)
{
    auto const destroy = [&] { window->contentView().removeAllSubviews(); };
    auto const expectGone = [](auto view, auto const& act) {
        test::settle();
        std::weak_ptr<View> const gone = view;
        auto& sender = *view;
        view.reset();
        act(sender);
        test::settle();
        EXPECT_TRUE(gone.expired());
    };
    auto button = add(std::make_shared<Button>(ButtonStyle::CheckBox, "Pin"));
    button->onClick = destroy;
    expectGone(std::move(button), [](auto& sender) { test::click(sender); });
    auto popUp = addPopUp();
    popUp->onSelect = destroy;
    expectGone(std::move(popUp), [](auto& sender) { test::choose(sender, 1); });
    auto field = add(std::make_shared<TextField>());
    field->onTextChange = destroy;
    window->makeFirstResponder(field);
    expectGone(std::move(field), [](auto&) { test::press(letterA, "a"); });

    for (bool const isDrop : { true, false }) {
        auto table = add(std::make_shared<TableView>());
        table->rowCount = [] { return std::size_t(3); };
        table->viewForRow = [](std::size_t) { return std::make_shared<View>(); };
        table->dragTextForRow = [](std::size_t) { return "a"; };
        table->onDoubleClick = destroy;
        table->acceptDrop = [&](std::string const&, std::size_t) {
            destroy();
            return true;
        };
        table->reloadData();
        expectGone(std::move(table), [isDrop](auto& sender) {
            if (isDrop)
                test::drag(sender, 0, 2);
            else
                test::doubleClick(sender, 0);
        });
    }
}

TEST_F(ViewEvents, State_isThatOfTheSettersAndSettersTellNobody)
{
    std::vector<ButtonState> states;
    auto const box = add(std::make_shared<Button>(ButtonStyle::CheckBox, "Login"));
    box->onClick = [&] {
        states.push_back(box->state());
        box->setState(ButtonState::Off);
    };
    test::click(*box);
    test::click(*box);
    EXPECT_EQ(states, (std::vector { ButtonState::On, ButtonState::On }));
    box->setState(ButtonState::On);
    test::click(*box);
    EXPECT_EQ(states.back(), ButtonState::Off);
    box->setEnabled(false);
    test::click(*box);
    EXPECT_EQ(states.size(), 3u);
    box->removeFromSuperview();

    std::vector<std::size_t> selected;
    auto const popUp = addPopUp();
    popUp->onSelect = [&] {
        selected.push_back(*popUp->selectedIndex());
        popUp->selectItem(0);
    };
    popUp->selectItem(1);
    test::settle();
    test::choose(*popUp, 1);
    test::choose(*popUp, 1);
    EXPECT_EQ(selected, (std::vector<std::size_t> { 1, 1 }));
    popUp->removeFromSuperview();

    std::vector<std::string> texts;
    auto const field = add(std::make_shared<TextField>());
    field->onTextChange = [&] {
        texts.push_back(field->text());
        field->setText({});
    };
    window->makeFirstResponder(field);
    field->setText("b");
    field->setText({});
    test::press(letterA, "a");
    test::press(letterA, "a");
    EXPECT_EQ(texts, (std::vector<std::string> { "a", "a" }));
}

} // namespace
} // namespace quillbar::platform
