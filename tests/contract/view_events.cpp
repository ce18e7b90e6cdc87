// A setter never calls back, a person's act does, and a callback may destroy its sender.

#include "contract/Backend.h"
#include "platform/view/Button.h"
#include "platform/view/PopUpButton.h"
#include "platform/view/TableView.h"
#include "platform/view/TextField.h"
#include "platform/view/Window.h"

#include <gtest/gtest.h>

namespace quillbar::platform {
namespace {

MenuItem item(std::string title)
{
    MenuItem made;
    made.title = std::move(title);
    return made;
}

class ViewEvents : public testing::Test {
protected:
    ViewEvents() { window->makeKeyAndOrderFront(); }
    ~ViewEvents() override
    {
        window.reset();
        test::settle();
    }

    template <typename Kind> std::shared_ptr<Kind> add(std::shared_ptr<Kind> view)
    {
        view->setFrame({ 10, 10, 100, 30 });
        return window->contentView().addSubview(std::move(view));
    }

    std::shared_ptr<Window> window
        = std::make_shared<Window>(Size { 300, 200 }, WindowStyle::TitledClosable);
    int calls = 0;
};

TEST_F(ViewEvents, Setters_neverCallBack)
{
    auto const button = add(std::make_shared<Button>(ButtonStyle::CheckBox, "Login"));
    auto const popUp = add(std::make_shared<PopUpButton>());
    auto const field = add(std::make_shared<TextField>());
    button->onClick = popUp->onSelect = field->onTextChange = [this] { ++calls; };

    button->setState(ButtonState::On);
    popUp->addItem(item("None"));
    popUp->addItem(item("Work"));
    popUp->selectItem(1);
    field->setText("mail");
    test::settle();

    EXPECT_EQ(calls, 0);
}

TEST_F(ViewEvents, DisabledControls_ignoreAPerson)
{
    auto const button = add(std::make_shared<Button>());
    auto const popUp = add(std::make_shared<PopUpButton>());
    popUp->addItem(item("None"));
    popUp->addItem(item("Work"));
    button->onClick = popUp->onSelect = [this] { ++calls; };
    button->setEnabled(false);
    popUp->setEnabled(false);

    button->userClicked();
    popUp->userSelected(1);

    EXPECT_EQ(calls, 0);
    EXPECT_EQ(popUp->selectedIndex(), 0u);
}

TEST_F(ViewEvents, Callback_mayDestroyItsSender)
{
    auto const destroy = [this] { window->contentView().removeAllSubviews(); };
    auto const expectGone = [](auto view, auto const& act) {
        std::weak_ptr<View> const gone = view;
        auto* const sender = view.get();
        view.reset();
        act(*sender);
        test::settle();
        EXPECT_TRUE(gone.expired());
    };
    auto button = add(std::make_shared<Button>(ButtonStyle::CheckBox, "Pin"));
    button->onClick = destroy;
    expectGone(std::move(button), [](auto& sender) { sender.userClicked(); });
    auto popUp = add(std::make_shared<PopUpButton>());
    popUp->addItem(item("Custom…"));
    popUp->onSelect = destroy;
    expectGone(std::move(popUp), [](auto& sender) { sender.userSelected(0); });
    auto field = add(std::make_shared<TextField>());
    field->onTextChange = destroy;
    expectGone(std::move(field), [](auto& sender) { sender.userTyped("x"); });

    for (bool const isDrop : { true, false }) {
        auto table = add(std::make_shared<TableView>());
        table->rowCount = [] { return std::size_t(2); };
        table->viewForRow = [](std::size_t) { return std::make_shared<View>(); };
        table->onDoubleClick = destroy;
        table->acceptDrop = [&](std::string const&, std::size_t) {
            destroy();
            return true;
        };
        table->reloadData();
        expectGone(std::move(table), [isDrop](auto& sender) {
            if (isDrop)
                EXPECT_TRUE(sender.userDropped("a", 2));
            else
                sender.userDoubleClicked(0);
        });
    }
}

TEST_F(ViewEvents, Callback_mayDestroyItsWindow)
{
    auto button = add(std::make_shared<Button>(ButtonStyle::Push, "Close"));
    button->setKeyEquivalent(ButtonKey::Return);
    button->onClick = [this] { window->close(); };
    window->addWillCloseObserver([this] { window.reset(); });
    button.reset();

    std::weak_ptr<Window> const gone = window;
    auto* const pressed = window.get();
    EXPECT_EQ(pressed->userPressedKey({ key::returnKey, 0 }), KeyEventResult::Consume);
    test::settle();

    EXPECT_TRUE(gone.expired());
}

} // namespace
} // namespace quillbar::platform
