#include "linux/Support.h"
#include "platform/ChildProcess.h"
#include "platform/linux/process/ChildEnvironment.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

namespace quillbar::platform {
namespace {

using quillbar::testing::readFile;
using quillbar::testing::runUntil;
using quillbar::testing::TemporaryFolder;
using ::testing::HasSubstr;
using ::testing::Not;

class ChildProcess : public ::testing::Test {
protected:
    ChildProcess() { quillbar::testing::startApplication(); }

    TemporaryFolder folder;
};

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
    std::optional<std::optional<int>> result;
    runChild({ "/bin/sh", "-c", script }, [&](std::optional<int> exit) { result = exit; });
    runUntil([&] { return result.has_value(); });
    EXPECT_EQ(*result, 0) << "not in a session of its own";
    EXPECT_EQ(readFile(descriptors), "/dev/null\n/dev/null\n/dev/null\n");
    ::close(leaked);
    ::sigprocmask(SIG_UNBLOCK, &blocked, nullptr);
}

TEST_F(ChildProcess, RunningChildren_takeNoDescriptors)
{
    auto const descriptors = [] {
        namespace fs = std::filesystem;
        return std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator());
    };
    auto const before = descriptors();
    int running = 50;
    for (int i = running; i > 0; --i)
        runChild({ "/bin/sleep", "0.1" }, [&](std::optional<int>) { --running; });
    EXPECT_EQ(descriptors(), before);
    runUntil([&] { return running == 0; });
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

} // namespace
} // namespace quillbar::platform
