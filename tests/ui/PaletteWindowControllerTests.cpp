#include "platform/view/Label.h"
#include "support/HeadlessTest.h"
#include "support/Person.h"
#include "ui/PaletteWindowController.h"

namespace quillbar {
namespace {

using namespace platform;
using Names = std::vector<std::string>;

class PaletteWindowControllerTest : public test::HeadlessTest {
protected:
    // Holds the palette as its owner does: until its window closes.
    void open(Names pinned, std::map<std::string, std::string> groups = {})
    {
        palette_ = makeController<PaletteWindowController>(
            std::make_shared<PaletteList>(std::move(pinned), std::move(groups)),
            [this](std::string const& name) {
                EXPECT_EQ(palette_, nullptr) << "the palette closes before it hands the name over";
                chosen_.push_back(name);
            });
        palette_->window().addWillCloseObserver([this] { palette_.reset(); });
        palette_->show();
        headless::runPosted();
    }

    [[nodiscard]] std::shared_ptr<TableView> table() const
    {
        return test::findAll<TableView>(palette_->window()).front();
    }

    [[nodiscard]] Names visibleNames() const
    {
        Names names;
        for (std::size_t row = 0; row < table()->numberOfRows(); ++row)
            names.push_back(test::findAll<Label>(*table()->viewAtRow(row)).front()->text());
        return names;
    }

    std::shared_ptr<PaletteWindowController> palette_;
    Names chosen_;
};

TEST_F(PaletteWindowControllerTest, QueryKeepsMatchingNamesInPinnedOrderAndSelectsTheFirst)
{
    Names const pinned { "Send Mail", "Backup", "mailbox", "Straße", "3 things" };
    struct Case {
        std::string query;
        Names shown;
    };
    for (auto const& [query, shown] : std::vector<Case> {
             { "MAIL", { "Send Mail", "mailbox" } },
             { "  mail ", { "Send Mail", "mailbox" } },
             { "   ", pinned },
             { "strasse", { "Straße" } },
             { "Work", { "No shortcuts match" } },
             { "b", { "Backup", "mailbox" } },
             { "3", { "3 things" } },
         }) {
        open(pinned, { { "Backup", "Work" } });
        ASSERT_TRUE(test::type(query));
        EXPECT_EQ(visibleNames(), shown) << query;
        EXPECT_EQ(table()->selectedRow().has_value(), shown.front() != "No shortcuts match");
        palette_->closePalette();
    }
    EXPECT_TRUE(chosen_.empty());
}

TEST_F(PaletteWindowControllerTest, NarrowingLetterByLetterEqualsTypingAtOnce)
{
    open({ "ab", "abc", "cab", "e\xCC\x81t", "et" });
    ASSERT_TRUE(test::type("a"));
    ASSERT_TRUE(test::type("ab"));
    EXPECT_EQ(visibleNames(), (Names { "ab", "abc", "cab" }));
    ASSERT_TRUE(test::type("abc"));
    EXPECT_EQ(visibleNames(), (Names { "abc" }));
    ASSERT_TRUE(test::type("e"));
    EXPECT_EQ(visibleNames(), (Names { "et" }));
    ASSERT_TRUE(test::type("\xC3\xA9"));
    EXPECT_EQ(visibleNames(), (Names { "e\xCC\x81t" }));
    ASSERT_TRUE(test::type(""));
    EXPECT_EQ(table()->numberOfRows(), 5U);
    EXPECT_DEATH((void)table()->viewForRow(5), "row");
}

TEST_F(PaletteWindowControllerTest, NothingToRunMeansNothingHappens)
{
    open({});
    EXPECT_EQ(visibleNames(), (Names { "No shortcuts pinned" }));
    EXPECT_TRUE(test::press(key::returnKey));
    table()->userDoubleClicked(0);
    EXPECT_TRUE(palette_->window().isVisible());
    EXPECT_TRUE(test::press(key::escape));
    EXPECT_EQ(palette_, nullptr);
    EXPECT_TRUE(chosen_.empty());
}

} // namespace
} // namespace quillbar
