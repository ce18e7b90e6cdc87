#include "services/ShortcutNames.h"
#include "services/ShortcutsService.h"
#include "support/HeadlessTest.h"

namespace quillbar {
namespace {

using testing::ElementsAre;
using Names = std::vector<std::string>;

constexpr auto const* tool = QUILLBAR_SHORTCUTS_TOOL;

using ShortcutsServiceTest = test::HeadlessTest;

TEST(ShortcutNames, EveryNewline_separatesAndEmptyLinesAreNoNames)
{
    struct Case {
        std::string listing;
        Names names;
    };
    std::vector<Case> const cases {
        { "\n\r\n\n", {} },
        { "B\nA\n\nc\r\nA\n", { "A", "A", "B", "c" } },
        { std::string(256, 'x') + "\nA\n" + std::string(255, 'x'), { "A", std::string(255, 'x') } },
        { "last without newline", { "last without newline" } },
        { "a\xC2\x85"
          "b\xE2\x80\xA8\v\f\r\xE2\x80\xA9"
          "d",
            { "a", "b", "d" } },
        { "trailing \n leading\n \n\t\n", { "\t", " ", " leading", "trailing " } },
    };
    for (auto const& [listing, names] : cases)
        EXPECT_EQ(shortcutNames(listing), names) << testing::PrintToString(listing);
}

TEST(ShortcutNames, TextThatIsNoUtf8_hasNoNames)
{
    for (std::string const listing : { "A\n\xFF\nB", "A\n\xE2\x80", "\xC0\x8A", "\xED\xA0\x80" })
        EXPECT_EQ(shortcutNames(listing), Names()) << testing::PrintToString(listing);
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
