#include "shortcuts/Scratch.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <unistd.h>

namespace quillbar::shortcuts {

using testing::HasSubstr;
using testing::StartsWith;

TEST(RunLog, KeepsHowARunEndedAndTheEndOfWhatItPrinted)
{
    Scratch scratch;
    struct {
        std::string name;
        char const* script;
        int status;
        char const* ended;
        std::string output;
    } const cases[] = {
        { "both", "echo out; echo error >&2; exit 3", 3, "ended with 3", "out\nerror\n" },
        { "signal", "kill -KILL $$", -SIGKILL, "was ended by signal 9 (Killed)", "" },
        { "silent", "exec >&- 2>&-; sleep 0.1", 0, "succeeded", "" },
        { "missing", "no-such-program", 127, "not installed", "not found\n" },
        { "..", "echo up", 0, "succeeded", "up\n" },
        { "odd/%\"$x\" 日本", "echo $SHORTCUT_NAME", 0, "succeeded", "odd/%\"$x\" 日本\n" },
        { std::string(255, 'n'), "echo $PPID", 0, "succeeded", "\n" },
        // It leads its group, as without a watch.
        { "leader", "trap 'exit 5' TERM; kill -TERM -$$; exit 6", 5, "ended with 5", "" },
        { "much", "yes 0123456789 | head -c 3000000; echo end", 0, "succeeded", "end\n" },
    };
    auto number = 0;
    for (auto const& [name, script, status, ended, output] : cases) {
        auto const file = Scratch::write(
            scratch.home / std::to_string(++number), std::string("#!/bin/sh\n") + script + "\n");
        auto escaped = name;
        for (auto at = escaped.find('\\'); at != std::string::npos; at = escaped.find('\\', at + 2))
            escaped.insert(at, 1, '\\');
        scratch.entry(
            std::to_string(number) + ".desktop", "Name=" + escaped + "\nExec=" + file.string());
        EXPECT_EQ(scratch.run({ "run", name }, "/dev/null").status, status) << name;
        auto const log = scratch.run({ "log", name }).output;
        EXPECT_THAT(log, StartsWith(name + ", begun "));
        EXPECT_THAT(log.substr(0, log.find('\n')), HasSubstr(ended));
        EXPECT_THAT(log, HasSubstr(std::to_string(number) + ".desktop\n\n"));
        EXPECT_TRUE(log.ends_with(output)) << log.substr(0, 1000);
        EXPECT_LT(log.size(), 66'000U);
    }
    EXPECT_THAT(scratch.run({ "log" }).output, StartsWith("much, begun "));
    EXPECT_EQ(scratch.run({ "log", "unknown" }).status, 1);
}

TEST(RunLog, IsPrivateAndOneOf200)
{
    Scratch scratch;
    scratch.script("x", "exit 3");
    for (auto index = 0; index < 210; ++index) {
        auto const log = Scratch::write(scratch.logs / (std::to_string(index) + ".log"), "old");
        std::filesystem::last_write_time(
            log, std::filesystem::file_time_type::clock::now() - std::chrono::hours(1 + index));
    }
    EXPECT_EQ(scratch.run({ "run", "x" }, "/dev/null").status, 3);
    auto const files = std::filesystem::directory_iterator(scratch.logs);
    EXPECT_EQ(std::distance(begin(files), end(files)), 200);
    EXPECT_FALSE(std::filesystem::exists(scratch.logs / "199.log"));
    struct stat status { };
    ASSERT_EQ(stat((scratch.logs / "x.log").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0600U);

    std::filesystem::remove_all(scratch.logs);
    Scratch::write(scratch.logs, "no folder");
    EXPECT_EQ(scratch.run({ "run", "x" }, "/dev/null").status, 3);
}

TEST(RunLog, ARunEndsWithItsOwnProcess)
{
    Scratch scratch;
    auto const mark = scratch.home / "mark";
    // It writes once more, to what its shortcut's watch has left.
    scratch.script("x",
        "(while [ -e \"$HOME/wait\" ]; do sleep 0.01; done; echo late; echo late; touch "
        "\"$HOME/mark\") &");
    Scratch::write(scratch.home / "wait", "");
    EXPECT_EQ(scratch.run({ "run", "x" }, "/dev/null").status, 0);
    EXPECT_FALSE(std::filesystem::exists(mark));
    std::filesystem::remove(scratch.home / "wait");
    for (auto turn = 0; turn < 1000 && !std::filesystem::exists(mark); ++turn)
        usleep(10'000);
    EXPECT_TRUE(std::filesystem::exists(mark));
}

TEST(Running, ShowsAndStopsWhatHasNoTerminal)
{
    Scratch scratch;
    scratch.script("inner", "trap 'wait; echo cleaned; exit 7' TERM; sleep 100 & wait");
    scratch.script("terminal", "tty >/dev/null && exit 9");
    scratch.variables["TOOL"] = SHORTCUTS_PROGRAM;
    scratch.script("outer", R"(
"$TOOL" run inner >/dev/null 2>&1 &
until "$TOOL" running | grep inner; do sleep 0.01; done
"$TOOL" stop inner
wait $!; echo $?
"$TOOL" log inner
"$TOOL" stop inner
script -qec '"$TOOL" run terminal' /dev/null; echo $?
"$TOOL" log terminal || echo none)");
    auto const outcome = scratch.run({ "run", "outer" });
    EXPECT_THAT(outcome.output,
        testing::MatchesRegex(
            "inner since [^\n]*, process [0-9]+\nstopped inner, process [0-9]+\n7\n"
            "inner, begun [^\n]*: ended with 7\n[^\n]*/inner\n\ncleaned\n9\nnone\n"));
    EXPECT_THAT(outcome.errors, HasSubstr("\"inner\" does not run"));
}

} // namespace quillbar::shortcuts
