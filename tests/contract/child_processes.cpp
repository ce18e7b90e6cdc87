// Children report once, from the event loop.

#include "contract/Backend.h"
#include "platform/ChildProcess.h"

#include <gmock/gmock.h>

namespace quillbar::platform {
namespace {

using ExitStatus = std::optional<int>;

class ChildProcessContract : public testing::Test {
protected:
    ExitStatus run(test::Arguments const& arguments)
    {
        ExitStatus status;
        int calls = 0;
        runChild(arguments, [&](ExitStatus exitStatus) {
            status = exitStatus;
            ++calls;
        });
        EXPECT_EQ(calls, 0) << "told from within the call";
        test::waitUntil([&] { return calls > 0; });
        test::settle();
        EXPECT_EQ(calls, 1);
        return status;
    }
};

TEST_F(ChildProcessContract, ManyAtOnce_eachReportOnce)
{
    constexpr std::size_t count = 60;
    std::vector<std::vector<ExitStatus>> told(count);
    std::size_t calls = 0;
    for (std::size_t i = 0; i < count; ++i) {
        runChild(test::childExiting(static_cast<int>(i)), [&, i](ExitStatus status) {
            told[i].push_back(status);
            ++calls;
        });
    }
    test::waitUntil([&] { return calls == count; });
    test::settle();
    for (std::size_t i = 0; i < count; ++i)
        EXPECT_THAT(told[i], testing::ElementsAre(ExitStatus(static_cast<int>(i))));
}

TEST_F(ChildProcessContract, Run_withoutCompletionDisturbsNothing)
{
    runChild(test::childExiting(1), {});
    runChild(test::childThatCannotStart(), {});
    EXPECT_EQ(run(test::childExiting(0)), 0);
}

TEST_F(ChildProcessContract, ACompletion_mayStartTheNext)
{
    ExitStatus second;
    runChild(test::childExiting(0), [&](ExitStatus) {
        runChild(test::childExiting(2), [&](ExitStatus status) { second = status; });
    });
    test::waitUntil([&] { return second.has_value(); });
    EXPECT_EQ(second, 2);
}

} // namespace
} // namespace quillbar::platform
