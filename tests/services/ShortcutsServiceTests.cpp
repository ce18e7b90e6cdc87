#include "services/ShortcutNames.h"
#include "services/ShortcutsService.h"
#include "support/HeadlessTest.h"

namespace quillbar {
namespace {

using std::chrono::milliseconds;
using testing::ElementsAre;
using testing::IsEmpty;
using Names = std::vector<std::string>;

constexpr auto const* tool = QUILLBAR_SHORTCUTS_TOOL;

class ShortcutsServiceTest : public test::HeadlessTest {
protected:
    /// Runs a shortcut of that fate to its end.
    std::optional<bool> outcome(headless::ChildScript const& script)
    {
        record.childScripts[{ tool, "run", "Backup" }] = script;
        std::optional<bool> result;
        ShortcutsService::run("Backup", [&](bool succeeded) { result = succeeded; });
        EXPECT_FALSE(result) << "told from within the call";
        headless::advance(script.duration);
        return result;
    }
};

TEST(ShortcutNames, EveryNewline_separatesAndEmptyLinesAreNoNames)
{
    struct Case {
        std::string listing;
        Names names;
    };
    std::vector<Case> const cases {
        { "\n\r\n\n", {} },
        { "B\nA\n\nc\r\nA\n", { "A", "A", "B", "c" } },
        { "last without newline", { "last without newline" } },
        { "a\xC2\x85"
          "b\xE2\x80\xA8\v\f\r\xE2\x80\xA9"
          "d",
            { "a", "b", "d" } },
        { "trailing \n leading\n \n\t\n", { "\t", " ", " leading", "trailing " } },
        // Characters that begin with the same bytes as a newline, or follow it in the table.
        { "a\xC2\x86"
          "b\xE2\x80\xA7"
          "c\x0E"
          "d",
            { "a\xC2\x86"
              "b\xE2\x80\xA7"
              "c\x0E"
              "d" } },
    };
    for (auto const& [listing, names] : cases)
        EXPECT_EQ(shortcutNames(listing), names) << testing::PrintToString(listing);
}

TEST(ShortcutNames, TextThatIsNoUtf8_hasNoNames)
{
    for (std::string const listing : { "A\n\xFF\nB", "A\n\xE2\x80", "\xC0\x8A", "\xED\xA0\x80" })
        EXPECT_THAT(shortcutNames(listing), IsEmpty()) << testing::PrintToString(listing);
}

TEST(ShortcutNames, Order_isByScalarValuesAndStable)
{
    EXPECT_THAT(shortcutNames("apple\nZap\n10\n9\n"), ElementsAre("10", "9", "Zap", "apple"));
    auto const composed = "\xC3\xA9";
    auto const decomposed = "e\xCC\x81";
    EXPECT_THAT(shortcutNames(std::string(decomposed) + "\nf\n" + composed),
        ElementsAre("f", decomposed, composed));
}

TEST_F(ShortcutsServiceTest, List_tellsNoAnswerFromNoShortcuts)
{
    record.childScripts[{ tool, "list" }] = { .start = headless::ChildStart::Succeeds,
        .exitStatus = 1,
        .duration = milliseconds(0),
        .output = "B\nA\n" };
    EXPECT_EQ(ShortcutsService::list(), (Names { "A", "B" }));
    EXPECT_THAT(record.readChildren, ElementsAre(Names { tool, "list" }));

    record.childScripts[{ tool, "list" }] = { .output = "" };
    EXPECT_EQ(ShortcutsService::list(), Names {});
    record.childScripts[{ tool, "list" }] = { .output = std::nullopt };
    EXPECT_EQ(ShortcutsService::list(), std::nullopt);
    record.childScripts[{ tool, "list" }] = { .start = headless::ChildStart::Fails };
    EXPECT_EQ(ShortcutsService::list(), std::nullopt);
}

TEST_F(ShortcutsServiceTest, Run_succeedsOnlyWithStatusZero)
{
    headless::ChildScript script;
    script.duration = milliseconds(40);
    EXPECT_EQ(outcome(script), true);
    script.exitStatus = 1;
    EXPECT_EQ(outcome(script), false);
    script.exitStatus = std::nullopt;
    EXPECT_EQ(outcome(script), false);
    script.exitStatus = 0;
    script.start = headless::ChildStart::Fails;
    EXPECT_EQ(outcome(script), false);
}

TEST_F(ShortcutsServiceTest, Run_passesTheNameAsOneArgument)
{
    Names const names { "-x", "", "a \"b\" $(c) 'd'", "line\nbreak", "--help" };
    for (auto const& name : names)
        ShortcutsService::run(name);
    ASSERT_EQ(record.startedChildren.size(), names.size());
    for (std::size_t i = 0; i < names.size(); ++i)
        EXPECT_THAT(record.startedChildren[i].arguments, ElementsAre(tool, "run", names[i]));
}

} // namespace
} // namespace quillbar
