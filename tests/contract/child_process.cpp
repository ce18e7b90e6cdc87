#include "contract/Backend.h"
#include "platform/ChildProcess.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <array>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace quillbar::platform {
namespace {

std::vector<std::string> shell(std::string const& script)
{
    return { "/bin/sh", "-c", script };
}

std::vector<std::string> zeros(std::string const& count)
{
    return { "/usr/bin/head", "-c", count, "/dev/zero" };
}

class ChildProcess : public testing::Test {
protected:
    ~ChildProcess() override { test::runUntil(isWithoutChildren); }

    static std::optional<int> run(std::vector<std::string> const& arguments)
    {
        int calls = 0;
        std::optional<int> result;
        auto const mainThread = std::this_thread::get_id();
        runChild(arguments, [&](std::optional<int> status) {
            ++calls;
            result = status;
            EXPECT_EQ(std::this_thread::get_id(), mainThread);
        });
        EXPECT_EQ(calls, 0) << "told from within the call";
        test::runUntil([&] { return calls > 0; });
        test::settle();
        EXPECT_EQ(calls, 1);
        return result;
    }

    static bool isWithoutChildren()
    {
        siginfo_t info {};
        return ::waitid(P_ALL, 0, &info, WEXITED | WNOHANG | WNOWAIT) == -1;
    }

    test::TemporaryFolder folder;
};

TEST_F(ChildProcess, Completion_tellsTheExitStatusOrNothing)
{
    auto const plainText = folder.write("plain", "exit 0\n");
    auto const noProgram = folder.write("no-program", "exit 0\n");
    ::chmod(noProgram.c_str(), S_IRWXU);

    struct {
        std::vector<std::string> arguments;
        std::optional<int> expected;
    } const cases[] = {
        { shell("exit 0"), 0 },
        { shell("exit 255"), 255 },
        // Nothing reads its output.
        { zeros("1073741824"), 0 },
        { { "/bin/sh", "-c", R"(test "$1" = "-a  \"b'
")",
              "sh", "-a  \"b'\n" },
            0 },
        { shell("kill -9 $$"), std::nullopt },
        { { (folder.path() / "missing").string() }, std::nullopt },
        { { plainText.string() }, std::nullopt },
        { { noProgram.string() }, std::nullopt },
        { { "sh", "-c", "exit 0" }, std::nullopt },
        { { "/bin/sh", "-c", std::string("exit 0\0x", 8) }, std::nullopt },
        { {}, std::nullopt },
    };
    for (auto const& [arguments, expected] : cases)
        EXPECT_EQ(run(arguments), expected) << testing::PrintToString(arguments);
}

TEST_F(ChildProcess, ManyAtOnce_areEachTold)
{
    int ended = 0;
    for (int i = 0; i < 50; ++i)
        runChild({ "/bin/sleep", "0.1" }, [&](std::optional<int> status) { ended += status == 0; });
    // Their exits must not be lost while a listing waits.
    EXPECT_EQ(readChildOutput(shell("sleep 0.2; echo A")), "A\n");
    test::runUntil([&] { return ended == 50; });
}

TEST_F(ChildProcess, ReadOutput_isCompleteOrNothing)
{
    EXPECT_EQ(readChildOutput(shell("printf 'a\\0b'; exit 3")), std::string("a\0b", 3));
    // What the child leaves behind can still write.
    EXPECT_EQ(readChildOutput(shell("echo A; sleep 20 2>/dev/null &")), "A\n");
    EXPECT_EQ(readChildOutput(zeros("5242880")).value_or("").size(), 5u << 20);
    EXPECT_EQ(readChildOutput(zeros("1073741824")), std::nullopt);
    EXPECT_EQ(readChildOutput(shell("echo A; kill -9 $$")), std::nullopt);
    EXPECT_EQ(readChildOutput({ "/missing" }), std::nullopt);
}

TEST_F(ChildProcess, ReadOutput_killsAHungChildAndWhatItStarted)
{
    auto const pipe = (folder.path() / "pipe").string();
    ASSERT_EQ(::mkfifo(pipe.c_str(), S_IRWXU), 0);
    int const descriptor = ::open(pipe.c_str(), O_RDONLY | O_NONBLOCK);
    auto const script = "(echo A; exec sleep 1000) >" + pipe + " & echo partial; wait";
    EXPECT_EQ(readChildOutput(shell(script), std::chrono::seconds(1)), std::nullopt);
    std::array<char, 10> buffer {};
    EXPECT_EQ(::read(descriptor, buffer.data(), buffer.size()), 2);
    // Its end: nobody has it open for writing any more.
    test::runUntil([&] { return ::read(descriptor, buffer.data(), buffer.size()) == 0; });
    ::close(descriptor);
}

} // namespace
} // namespace quillbar::platform
