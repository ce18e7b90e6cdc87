#include "contract/Backend.h"
#include "platform/view/Button.h"
#include "platform/view/PopUpButton.h"
#include "platform/view/TableView.h"
#include "platform/view/TextField.h"
#include "platform/view/Window.h"

#include <gtest/gtest.h>

namespace quillbar::platform {
namespace {

TEST(ViewEvents, Callback_mayDestroyItsSender)
{
    auto const window = std::make_shared<Window>(Size { 300, 200 }, WindowStyle::TitledClosable);
    window->makeKeyAndOrderFront();
    auto const add = [&](auto view) { return window->contentView().addSubview(std::move(view)); };
    auto const destroy = [&] { window->contentView().removeAllSubviews(); };
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
    popUp->addItem({});
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

} // namespace
} // namespace quillbar::platform
