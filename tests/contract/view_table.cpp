#include "contract/Backend.h"
#include "platform/view/ScrollView.h"
#include "platform/view/TableView.h"
#include "platform/view/TextField.h"
#include "platform/view/Window.h"

#include <gtest/gtest.h>

#include <algorithm>

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
        table->dragTextForRow = [](std::size_t row) {
            return row == 0 ? std::nullopt : std::optional("row " + std::to_string(row));
        };
        window->makeKeyAndOrderFront();
        test::runUntil([this] { return window->isKeyWindow(); });
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
            view->addSubview(std::make_shared<TextField>())->setFrame({ 10, 2, 200, 16 });
        }
        return view;
    }

    [[nodiscard]] std::shared_ptr<TextField> fieldOf(std::size_t row) const
    {
        return std::static_pointer_cast<TextField>(table->viewAtRow(row)->subviews()[0]);
    }

    /// Each row is where it belongs, and no view shows that has no row.
    void expectRowsInPlace()
    {
        test::settle();
        std::size_t shown = 0;
        for (auto const& view : table->subviews()) {
            auto const& field = *view->subviews()[0];
            auto const frame = test::shownFrame(field);
            if (!table->rowOf(*view)) {
                EXPECT_EQ(frame, std::nullopt);
            } else if (intersects(scroll->visibleRect(), view->frame())) {
                EXPECT_EQ(frame, field.frameInWindow()) << *table->rowOf(*view);
                ++shown;
            }
        }
        auto const visible = scroll->visibleRect().height / table->rowHeight();
        EXPECT_GE(shown, std::min(rows, static_cast<std::size_t>(visible)));
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

TEST_F(ViewTable, Rows_areShownWhereTheyBelongWhateverViewsTheyReuse)
{
    load(50);
    expectRowsInPlace();
    for (double const offset : { 410.0, 90.0, 900.0, 0.0 }) {
        scroll->setOffset(offset);
        EXPECT_EQ(scroll->offset(), offset);
        expectRowsInPlace();
    }
    scroll->setOffset(900);
    for (auto const count : { 3U, 1U, 7U }) {
        load(count);
        expectRowsInPlace();
    }
    scroll->setFrame({ 20, 10, 250, 60 });
    expectRowsInPlace();
}

TEST_F(ViewTable, DownArrow_goesThroughTheRowsAndTypingReachesEach)
{
    load(50);
    window->makeFirstResponder(fieldOf(0));
    for (std::size_t row = 0; row < 50; ++row) {
        ASSERT_TRUE(window->firstResponder());
        ASSERT_EQ(table->rowOf(*window->firstResponder()), row);
        fieldOf(row)->setText({});
        test::press({ 0, 0 }, "a");
        EXPECT_EQ(fieldOf(row)->text(), "a");
        test::press({ key::downArrow, 0 });
    }
}

TEST_F(ViewTable, Tab_visitsTheRowsFromTopToBottom)
{
    if (!test::movesFocusItself())
        GTEST_SKIP() << "Tab goes where the system decides";
    load(50);
    table->scrollRowToVisible(49);
    table->scrollRowToVisible(0);
    for (std::size_t row = 0; row < 50; ++row) {
        test::press({ key::tab, 0 });
        ASSERT_TRUE(window->firstResponder());
        EXPECT_EQ(table->rowOf(*window->firstResponder()), row);
    }
}

TEST_F(ViewTable, Drag_tellsTheRowsTextAndTheGap)
{
    std::vector<std::string> drops;
    table->acceptDrop = [&](std::string const& text, std::size_t gap) {
        drops.push_back(text + " above " + std::to_string(gap));
        return false;
    };
    load(4);
    for (auto const& [row, gap] : { std::pair { 1, 3 }, { 3, 0 }, { 2, 4 }, { 0, 2 } })
        test::drag(*table, std::size_t(row), std::size_t(gap));
    EXPECT_EQ(
        drops, (std::vector<std::string> { "row 1 above 3", "row 3 above 0", "row 2 above 4" }));
}

} // namespace
} // namespace quillbar::platform
