#include "platform/headless/Person.h"
#include "platform/view/Label.h"
#include "ui/PaletteRowView.h"

#include <gtest/gtest.h>

namespace quillbar {
namespace {

using namespace platform;

class PaletteRowViewTest : public testing::Test {
protected:
    PaletteRowViewTest() { row_->setFrame({ 0, 0, 384, 32 }); }

    [[nodiscard]] std::shared_ptr<Label> name() const { return label(0); }
    [[nodiscard]] std::shared_ptr<Label> group() const { return label(1); }

    std::shared_ptr<PaletteRowView> const row_ = std::make_shared<PaletteRowView>();

private:
    [[nodiscard]] std::shared_ptr<Label> label(std::size_t index) const
    {
        return std::dynamic_pointer_cast<Label>(row_->subviews()[index]);
    }
};

TEST_F(PaletteRowViewTest, ReusedRowShowsNothingOfItsFormerRole)
{
    row_->setRole(PaletteRowView::Role::Message, "No shortcuts match", "ignored");
    EXPECT_TRUE(group()->isHidden());
    EXPECT_EQ(group()->text(), "");
    EXPECT_EQ(name()->color(), Color(SystemColor::SecondaryLabel));

    row_->setRole(PaletteRowView::Role::Shortcut, "Backup", "Work");
    EXPECT_FALSE(group()->isHidden());
    EXPECT_EQ(name()->color(), Color(SystemColor::Label));

    row_->setRole(PaletteRowView::Role::Shortcut, "Backup", "");
    EXPECT_TRUE(group()->isHidden());
    EXPECT_EQ(name()->frame().x + name()->frame().width, 384 - 12);
}

} // namespace
} // namespace quillbar
