#include "linux/Support.h"
#include "platform/ChildProcess.h"
#include "platform/linux/process/ChildEnvironment.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace quillbar::platform {
namespace {

using quillbar::testing::readFile;
using quillbar::testing::runUntil;
using quillbar::testing::TemporaryFolder;
using ::testing::HasSubstr;
using ::testing::Not;

std::vector<std::string> shell(std::string const& script)
{
    return { "/bin/sh", "-c", script };
}

class ChildProcess : public ::testing::Test {
protected:
    ChildProcess() { quillbar::testing::startApplication(); }

    ~ChildProcess() override { runUntil(isWithoutChildren); }

    static std::optional<int> run(std::vector<std::string> const& arguments)
    {
        int calls = 0;
        std::optional<int> result;
        runChild(arguments, [&](std::optional<int> status) {
            ++calls;
            result = status;
        });
        EXPECT_EQ(calls, 0) << "told from within the call";
        runUntil([&] { return calls > 0; });
        return result;
    }

    static bool isWithoutChildren()
    {
        siginfo_t info {};
        return ::waitid(P_ALL, 0, &info, WEXITED | WNOHANG | WNOWAIT) == -1;
    }

    TemporaryFolder folder;
};

TEST_F(ChildProcess, Completion_tellsTheExitStatusOrNothing)
{
    auto const plainText = folder.write("plain", "exit 0\n");
    auto const noProgram = folder.write("no-program", "exit 0\n");
    ::chmod(noProgram.c_str(), S_IRWXU);

    struct Case {
        std::vector<std::string> arguments;
        std::optional<int> expected;
    };
    Case const cases[] {
        { shell("exit 0"), 0 },
        { shell("exit 255"), 255 },
        // Nothing reads its output.
        { { "/usr/bin/head", "-c", "1G", "/dev/zero" }, 0 },
        { { "/bin/sh", "-c", R"(test "$1" = "-a  \"b'")", "sh", "-a  \"b'" }, 0 },
        { shell("kill -9 $$"), std::nullopt },
        { { (folder.path() / "missing").string() }, std::nullopt },
        { { plainText.string() }, std::nullopt },
        { { noProgram.string() }, std::nullopt },
        { { "sh", "-c", "exit 0" }, std::nullopt },
        { { "/bin/sh", "-c", std::string("exit 0\0x", 8) }, std::nullopt },
        { {}, std::nullopt },
    };
    for (auto const& [arguments, expected] : cases)
        EXPECT_EQ(run(arguments), expected) << ::testing::PrintToString(arguments);
}

TEST_F(ChildProcess, Child_inheritsNoSignalStateAndNoDescriptor)
{
    sigset_t blocked;
    ::sigemptyset(&blocked);
    ::sigaddset(&blocked, SIGUSR1);
    ::sigprocmask(SIG_BLOCK, &blocked, nullptr);
    ::signal(SIGPIPE, SIG_IGN);
    int const leaked = ::open("/dev/zero", O_RDONLY);
    ASSERT_GE(leaked, 3);

    auto const status = readChildOutput({ "/bin/cat", "/proc/self/status" }).value_or("");
    for (auto const* line : { "SigBlk:\t0000000000000000\n", "SigIgn:\t0000000000000000\n" })
        EXPECT_THAT(status, HasSubstr(line));
    // The third is the folder that it lists.
    EXPECT_EQ(readChildOutput({ "/bin/ls", "/proc/self/fd" }), "0\n1\n2\n3\n");

    auto const descriptors = folder.path() / "descriptors";
    auto const script
        = "links=$(readlink /proc/$$/fd/0 /proc/$$/fd/1 /proc/$$/fd/2); echo \"$links\" >"
        + descriptors.string() + "; test $(cut -d' ' -f6 /proc/$$/stat) = $$";
    EXPECT_EQ(run(shell(script)), 0) << "not in a session of its own";
    EXPECT_EQ(readFile(descriptors), "/dev/null\n/dev/null\n/dev/null\n");
    ::close(leaked);
    ::sigprocmask(SIG_UNBLOCK, &blocked, nullptr);
}

TEST_F(ChildProcess, Child_startsAtHomeInThePersonsEnvironment)
{
    auto const home = folder.path() / "home";
    std::filesystem::create_directory(home);
    ::setenv("HOME", home.c_str(), 1);
    ::setenv("KEPT", "yes", 1);
    ::setenv("REPLACED", "theirs", 1);
    for (auto const* name : { "DESKTOP_STARTUP_ID", "XDG_ACTIVATION_TOKEN", "DBUS_STARTER_ADDRESS",
             "DBUS_STARTER_BUS_TYPE" })
        ::setenv(name, "ours", 1);
    setOwnVariable("REPLACED", "ours");
    setOwnVariable("ADDED", "ours");

    EXPECT_EQ(readChildOutput({ "/bin/pwd" }), home.string() + "\n");
    auto const variables = readChildOutput({ "/usr/bin/env" }).value_or("");
    EXPECT_THAT(variables, HasSubstr("KEPT=yes\n"));
    EXPECT_THAT(variables, HasSubstr("REPLACED=theirs\n"));
    EXPECT_THAT(variables, Not(HasSubstr("ours")));

    std::filesystem::remove(home);
    EXPECT_EQ(readChildOutput({ "/bin/pwd" }), "/\n");
}

TEST_F(ChildProcess, RunsAtOnce_takeNoDescriptors)
{
    auto const descriptors = [] {
        namespace fs = std::filesystem;
        return std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator());
    };
    auto const before = descriptors();
    int ended = 0;
    for (int i = 0; i < 50; ++i)
        runChild({ "/bin/sleep", "0.1" }, [&](std::optional<int> status) { ended += status == 0; });
    EXPECT_EQ(descriptors(), before);
    // Their exits must not be lost while a listing waits.
    EXPECT_EQ(readChildOutput(shell("sleep 0.2; echo A")), "A\n");
    runUntil([&] { return ended == 50; });
}

TEST_F(ChildProcess, ReadOutput_isCompleteOrNothing)
{
    EXPECT_EQ(readChildOutput(shell("printf 'a\\0b'; exit 3")), std::string("a\0b", 3));
    // What the child leaves behind can still write.
    EXPECT_EQ(readChildOutput(shell("echo A; sleep 20 2>/dev/null &")), "A\n");
    EXPECT_EQ(readChildOutput({ "/usr/bin/head", "-c", "5M", "/dev/zero" }).value_or("").size(),
        5u << 20);
    EXPECT_EQ(readChildOutput({ "/usr/bin/head", "-c", "1G", "/dev/zero" }), std::nullopt);
    EXPECT_EQ(readChildOutput(shell("echo A; kill -9 $$")), std::nullopt);
    EXPECT_EQ(readChildOutput({ "/missing" }), std::nullopt);
}

TEST_F(ChildProcess, ReadOutput_killsAHungChildAndWhatItStarted)
{
    auto const marks = folder.path() / "marks";
    auto const script = "sleep 1000 & echo $! >" + marks.string() + "; echo partial; wait";
    EXPECT_EQ(readChildOutput(shell(script), std::chrono::milliseconds(300)), std::nullopt);
    // Whoever adopts it takes a moment to reap it.
    auto const status = "/proc/" + std::to_string(std::stoi(readFile(marks))) + "/cmdline";
    runUntil([&] { return readFile(status).empty(); });
}

} // namespace
} // namespace quillbar::platform
