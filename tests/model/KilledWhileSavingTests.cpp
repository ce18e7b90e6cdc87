#include "model/PrivateFile.h"
#include "platform/headless/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <csignal>
#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace quillbar {

namespace fs = std::filesystem;

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

std::string withoutBlanks(std::string text)
{
    return text.erase(text.find_last_not_of(' ') + 1);
}

} // namespace

TEST(KilledWhileSaving, AtAnySystemCall_leavesTheOldOrTheNewText)
{
    platform::headless::TemporaryFolder const folder;
    auto const file = folder.path() / "file";
    // Within one page and beyond it.
    constexpr std::pair<std::size_t, std::size_t> changes[]
        = { { 0, 100 }, { 100, 4096 }, { 2000, 100 }, { 100, 300'000 }, { 300'000, 100 } };
    for (auto const& [old, length] : changes) {
        auto const oldText = std::string(old, 'o');
        auto const text = std::string(length, 'n');
        int stops = 0;
        for (bool isKilled = true; isKilled; ++stops) {
            ASSERT_TRUE(writePrivateFile(file, oldText));
            isKilled = isKilledAt(stops, [&] { (void)writePrivateFile(file, text); });
            auto const found = withoutBlanks(readFile(file).value_or("nothing"));
            EXPECT_TRUE(found == oldText || found == text) << old << " " << length;
        }
        EXPECT_GT(stops, 4);
        EXPECT_TRUE(readFile(file) == text);
    }
    EXPECT_TRUE(writePrivateFile(file, std::string(5000, 'n')));
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.path()), {}), 1);
}

} // namespace quillbar
