#include "linux/widgets_Fixture.h"
#include "platform/view/Label.h"
#include "platform/view/ScrollView.h"
#include "platform/view/TableView.h"

#include <string>

namespace quillbar::platform {
namespace {

class RowDrags : public ViewsFixture {
protected:
    RowDrags()
    {
        scroll->setDocumentView(table);
        table->setRowHeight(20);
        table->rowCount = [] { return std::size_t(50); };
        table->viewForRow = [this](std::size_t row) {
            auto view = table->takeReusableView({});
            if (!view) {
                view = std::make_shared<View>();
                view->addSubview(std::make_shared<Label>())->setFrame({ 0, 0, 200, 20 });
            }
            static_cast<Label&>(*view->subviews()[0]).setText(std::to_string(row));
            return view;
        };
        table->dragTextForRow = [](std::size_t row) { return std::to_string(row); };
        table->acceptDrop = [this](std::string const& text, std::size_t gap) {
            dropped = text + " at " + std::to_string(gap);
            return true;
        };
        table->reloadData();
        test::settle();
    }

    /// Where the pointer meets the label of a row, as the mouse does.
    void press(std::size_t row)
    {
        QTest::mousePress(&label(row), Qt::LeftButton, Qt::NoModifier, { 30, 10 });
    }
    void moveTo(int y) { QTest::mouseMove(&widgetOf(*table), { 30, y }); }
    void release(int y)
    {
        QTest::mouseRelease(&widgetOf(*table), Qt::LeftButton, Qt::NoModifier, { 30, y });
    }
    QWidget& label(std::size_t row) { return widgetOf(*table->viewAtRow(row)->subviews()[0]); }

    std::shared_ptr<ScrollView> scroll = add(std::make_shared<ScrollView>(), { 0, 0, 300, 100 });
    std::shared_ptr<TableView> table = std::make_shared<TableView>();
    std::string dropped;
};

TEST_F(RowDrags, EscapeAndAReleaseOutside_giveUp)
{
    press(0);
    moveTo(57);
    QTest::keyClick(QApplication::activeWindow(), Qt::Key_Escape);
    release(57);
    EXPECT_TRUE(window->isVisible());
    press(0);
    moveTo(57);
    release(101);
    EXPECT_EQ(dropped, "");
}

TEST_F(RowDrags, PointerAtTheEdge_scrollsOn)
{
    press(0);
    moveTo(97);
    ASSERT_TRUE(QTest::qWaitFor([this] { return scroll->offset() > 400; }, 60000));
    release(static_cast<int>(scroll->offset()) + 97);
    EXPECT_EQ(dropped.substr(0, 5), "0 at ");
    EXPECT_GT(std::stoi(dropped.substr(5)), 20);
}

} // namespace
} // namespace quillbar::platform
