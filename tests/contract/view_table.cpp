#include "contract/Backend.h"
#include "platform/view/ScrollView.h"
#include "platform/view/TableView.h"
#include "platform/view/TextField.h"
#include "platform/view/Window.h"

#include <gtest/gtest.h>

namespace quillbar::platform {
namespace {

class ViewTable : public testing::Test {
protected:
    ViewTable()
    {
        scroll->setFrame({ 0, 0, 300, 100 });
        scroll->setDocumentView(table);
        window->contentView().addSubview(scroll);
        table->setRowHeight(20);
        table->rowCount = [this] { return rows; };
        table->viewForRow = [this](std::size_t) { return rowView(); };
        window->makeKeyAndOrderFront();
    }
    ~ViewTable() override
    {
        window.reset();
        test::settle();
    }

    void load(std::size_t count)
    {
        rows = count;
        table->reloadData();
    }

    std::shared_ptr<View> rowView()
    {
        auto view = table->takeReusableView("row");
        if (!view) {
            view = std::make_shared<View>();
            view->setIdentifier("row");
            view->addSubview(std::make_shared<TextField>());
        }
        return view;
    }

    std::size_t rows = 0;
    std::shared_ptr<Window> window
        = std::make_shared<Window>(Size { 300, 200 }, WindowStyle::TitledClosable);
    std::shared_ptr<ScrollView> scroll = std::make_shared<ScrollView>();
    std::shared_ptr<TableView> table = std::make_shared<TableView>();
};

TEST_F(ViewTable, Reload_givesEveryRowItsViewAgain)
{
    load(3);
    auto const before = table->viewAtRow(1);
    table->selectRow(1);
    load(3);
    EXPECT_EQ(table->viewAtRow(1), before);
    EXPECT_EQ(table->selectedRow(), std::nullopt);
    load(1);
    EXPECT_EQ(table->viewAtRow(1), nullptr);
    EXPECT_TRUE(before->isHidden());
    load(2);
    EXPECT_FALSE(table->viewAtRow(1)->isHidden());
}

TEST_F(ViewTable, Tab_visitsTheRowsFromTopToBottomWhateverViewsTheyReuse)
{
    load(50);
    table->scrollRowToVisible(49);
    table->scrollRowToVisible(0);
    for (std::size_t row = 0; row < 50; ++row) {
        window->userPressedFocusKey({ key::tab, 0 });
        ASSERT_TRUE(window->firstResponder());
        EXPECT_EQ(table->rowOf(*window->firstResponder()), row);
    }
}

} // namespace
} // namespace quillbar::platform
