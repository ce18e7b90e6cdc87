#include "shortcuts/CommandLine.h"

#include <gtest/gtest.h>

namespace quillbar::shortcuts {

using Arguments = std::vector<std::string>;

TEST(CommandLine, Arguments_areSplitAndUnquoted)
{
    struct {
        std::string exec;
        Arguments arguments;
    } const cases[] = {
        { "prog", { "prog" } },
        { "  prog \t -a  b\n", { "prog", "-a", "b" } },
        { R"("/opt/a b/prog" "x \"y\" \$HOME \`z\` \\")",
            { "/opt/a b/prog", R"(x "y" $HOME `z` \)" } },
        { R"(sh -c 'echo "$1" \n' two)", { "sh", "-c", R"(echo "$1" \n)", "two" } },
        { R"(a\ b "" c'd'"e")", { "a b", "", "cde" } },
        { R"(p "keeps \other escapes")", { "p", R"(keeps \other escapes)" } },
        // Field codes are dropped.
        { "prog %U --name=%c 100%% \"%f\" %i%k end", { "prog", "--name=", "100%", "", "end" } },
        { "prog %", { "prog", "%" } },
    };
    for (auto const& [exec, arguments] : cases)
        EXPECT_EQ(splitCommandLine(exec), arguments) << exec;
}

TEST(CommandLine, WhatNamesNoProgram_isNothing)
{
    for (auto const* exec : { "", "  ", "%u", "\"\" x", "\"open", "'open", "p \"x\\", "p \\" })
        EXPECT_EQ(splitCommandLine(exec), std::nullopt) << exec;
}

} // namespace quillbar::shortcuts
