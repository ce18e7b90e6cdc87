#include "model/PrivateFile.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <csignal>
#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

namespace quillbar {

namespace {

/// Carries out the work in a process that is killed at the given stop of its system calls, each of
/// which has two. Returns whether it got that far.
template <typename Work> bool isKilledAt(int stop, Work const& work)
{
    auto const child = fork();
    if (child == 0) {
        ptrace(PTRACE_TRACEME, 0, nullptr, nullptr);
        raise(SIGSTOP);
        work();
        _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    while (stop-- >= 0 && WIFSTOPPED(status)) {
        ptrace(PTRACE_SYSCALL, child, nullptr, nullptr);
        waitpid(child, &status, 0);
    }
    bool const isRunning = WIFSTOPPED(status);
    if (isRunning) {
        kill(child, SIGKILL);
        waitpid(child, &status, 0);
    }
    return isRunning;
}

} // namespace

TEST(KilledWhileSaving, AtAnySystemCall_leavesTheOldOrTheNewText)
{
    test::TemporaryFolder const folder;
    auto const file = folder.path() / "file";
    auto const oldText = std::string(100, 'o');
    auto const text = std::string(300'000, 'n');
    int stops = 0;
    for (bool isKilled = true; isKilled; ++stops) {
        ASSERT_TRUE(writePrivateFile(file, oldText));
        isKilled = isKilledAt(stops, [&] { (void)writePrivateFile(file, text); });
        auto const found = readFile(file).value_or("nothing");
        EXPECT_TRUE(found == oldText || found == text) << stops;
    }
    EXPECT_GT(stops, 4);
    EXPECT_TRUE(readFile(file) == text);
    // What was left beside the file is used up by the next save.
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 1);
}

} // namespace quillbar
