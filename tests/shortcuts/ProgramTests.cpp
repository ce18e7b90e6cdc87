#include "shortcuts/DesktopEntry.h"
#include "shortcuts/Scratch.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>

namespace quillbar::shortcuts {

using testing::HasSubstr;
using testing::StartsWith;

TEST(Program, List_printsOneNameALine)
{
    Scratch scratch;
    auto const empty = scratch.run({ "list" });
    EXPECT_EQ(empty.status, 0);
    EXPECT_EQ(empty.output + empty.errors, "");

    scratch.script("b & <c>_d.sh");
    scratch.script("日本 👍");
    scratch.script("-a");
    scratch.script("two\nlines");
    chmod(scratch.script("forgotten").c_str(), 0644);
    Scratch::write(scratch.own / "notes.txt", "notes", 0644);
    auto const outcome = scratch.run({ "list" });
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.output, "-a\nb & <c>_d\n日本 👍\n");
    EXPECT_THAT(outcome.errors, StartsWith("shortcuts: ignoring "));
    EXPECT_THAT(outcome.errors, HasSubstr("chmod +x '" + (scratch.own / "forgotten").string()));
    EXPECT_EQ(std::ranges::count(outcome.errors, '\n'), 2);
}

TEST(Program, List_failsWhereItIsNotAllOrCannotBeWritten)
{
    Scratch scratch;
    scratch.script("a");
    EXPECT_EQ(scratch.run({ "list" }, "/dev/full").status, 74);

    // Root may read every folder, but nobody can look into a link to itself.
    std::filesystem::create_directories(scratch.shared.parent_path());
    std::filesystem::create_directory_symlink(scratch.shared, scratch.shared);
    auto const outcome = scratch.run({ "list" });
    EXPECT_EQ(outcome.status, 66);
    EXPECT_EQ(outcome.output, "a\n");
    EXPECT_THAT(outcome.errors, HasSubstr(scratch.shared.string() + ": "));
}

TEST(Program, List_looksInAbsoluteFoldersAndTranslates)
{
    Scratch scratch;
    scratch.variables["XDG_DATA_HOME"] = "relative";
    scratch.variables["XDG_DATA_DIRS"] = ":relative:" + (scratch.home / "system").string();
    scratch.variables["LANG"] = "sr_RS.UTF-8@latin";
    Scratch::write(scratch.home / ".local/share/shortcuts/home", "");
    Scratch::write(scratch.shared / "translated.desktop",
        "[Desktop "
        "Entry]\nType=Application\nName=Name\nName[sr]=x\nName[sr@latin]=\\sIme\nExec=x\n");
    EXPECT_EQ(scratch.run({ "list" }).output, " Ime\nhome\n");
}

TEST(Program, Run_becomesTheShortcut)
{
    Scratch scratch;
    scratch.script("status.sh", "exit 42");
    Scratch::write(scratch.own / "no interpreter line", "exit 5");
    scratch.script("signal.sh", "kill -TERM $$");
    scratch.script("talk.sh", "printf 'out\\000put'; echo errors >&2; exit 0");
    EXPECT_EQ(scratch.run({ "run", "status" }).status, 42);
    EXPECT_EQ(scratch.run({ "run", "no interpreter line" }).status, 5);
    EXPECT_EQ(scratch.run({ "run", "signal" }).status, -SIGTERM);
    auto const talk = scratch.run({ "run", "talk" });
    EXPECT_EQ(talk.status, 0);
    EXPECT_EQ(talk.output, std::string("out\0put", 7));
    EXPECT_EQ(talk.errors, "errors\n");
}

TEST(Program, Run_takesTheNameAsItStands)
{
    Scratch scratch;
    for (std::string const name :
        { "-a", "--help", "list", "a  b", " ", "it's \"q\" $HOME `x` *", "日本 👍", "100% %s" }) {
        scratch.script(name, "echo \"$SHORTCUT_NAME\"; echo $#");
        auto const outcome = scratch.run({ "run", name });
        EXPECT_EQ(outcome.status, 0) << outcome.errors;
        EXPECT_EQ(outcome.output, name + "\n0\n");
    }
}

TEST(Program, Run_givesTheShortcutItsSurroundings)
{
    Scratch scratch;
    std::filesystem::create_directories(scratch.home / ".local/bin");
    scratch.script("where", "pwd; echo \"$PATH\"; echo \"$LANG\"");
    scratch.variables["LANG"] = "xx_YY";
    auto const path = scratch.variables["PATH"];
    scratch.variables["PATH"] = "::relative:" + path + ":.";
    EXPECT_EQ(scratch.run({ "run", "where" }).output,
        scratch.home.string() + "\n" + scratch.home.string() + "/.local/bin:" + path + "\nxx_YY\n");
    scratch.variables["HOME"] = "/missing";
    EXPECT_THAT(scratch.run({ "run", "where" }).output, StartsWith("/\n"));
}

TEST(Program, Run_startsDesktopEntries)
{
    Scratch scratch;
    Scratch::write(scratch.programs / "show",
        "#!/bin/sh\npwd; for argument; do echo \"<$argument>\"; done\nexit 7\n");
    Scratch::write(
        scratch.programs / "x-terminal-emulator", "#!/bin/sh\necho terminal; \"$2\" \"$3\"\n");
    std::filesystem::create_directories(scratch.home / "work");
    auto const work = (scratch.home / "work").string();
    scratch.entry("a.desktop",
        "Name=Tool\nExec=show \"a b\" %U 1%%\nPath=" + work
            + "\n[Desktop Action x]\nName=Other\nExec=show other");
    scratch.entry("b.desktop", "Name=Terminal tool\nTerminal=true\nExec=show x");

    auto const outcome = scratch.run({ "run", "Tool" });
    EXPECT_EQ(outcome.status, 7);
    EXPECT_EQ(outcome.output, work + "\n<a b>\n<1%>\n");
    EXPECT_EQ(scratch.run({ "run", "Tool: Other" }).output, work + "\n<other>\n");
    EXPECT_EQ(scratch.run({ "run", "Terminal tool" }).output,
        "terminal\n" + scratch.home.string() + "\n<x>\n");
    Scratch::write(scratch.programs / "xdg-terminal-exec", "#!/bin/sh\necho chosen; exec \"$@\"\n");
    scratch.script("script", "# shortcuts: terminal\necho inside");
    EXPECT_EQ(scratch.run({ "run", "script" }).output, "chosen\ninside\n");
}

TEST(Program, Run_tellsWhatIsWrongAndWhatHelps)
{
    Scratch scratch;
    Scratch::write(scratch.own / "plain.sh", "", 0644);
    Scratch::write(scratch.own / "two\nlines", "", 0644);
    chmod(scratch.script("open.sh").c_str(), 0757);
    auto const shared = scratch.home / "open to all";
    std::filesystem::create_symlink(Scratch::write(shared / "tool", ""), scratch.own / "link");
    chmod(shared.c_str(), 0777);
    Scratch::write(scratch.own / "foreign",
        std::string("\x7F"
                    "ELF\0\0\0\0",
            8));
    Scratch::write(scratch.own / "lost", "#!/missing/interpreter\n");
    scratch.entry("1.desktop", "Name=gone\nExec=missing-program");
    scratch.entry("2.desktop", "Name=unfinished\nExec=\"open");
    scratch.entry("3.desktop", "Name=nowhere\nExec=ls\nPath=/missing/folder");
    scratch.entry("4.desktop", "Name=no terminal\nExec=ls\nTerminal=true");
    scratch.entry("5.desktop", "Name=in no folder\nExec=here");
    Scratch::write(scratch.home / "here", "");
    scratch.variables["PATH"] = ":/bin:.";
    if (std::filesystem::exists("/bin/x-terminal-emulator"))
        scratch.variables["PATH"] = scratch.programs;

    struct {
        char const* name;
        int status;
        char const* remedy;
    } const cases[] = {
        { "unknown\x1B", 1, "no shortcut is named \"unknown\\x1B\"" },
        { "Plain", 1, "shortcuts list" },
        { "losd.sh", 1, "did you mean \"lost\"?" },
        { "Foreign", 1, "did you mean \"foreign\"?" },
        { "", 1, "no shortcut" },
        { "plain", 126, "chmod +x '" },
        { "plain.sh", 126, "chmod +x '" },
        { "two\nlines", 126, "two\\x0Alines'" },
        { "open", 126, "others may write to it; to forbid that: chmod go-w '" },
        { "link", 126, "open to all; to forbid that: chmod go-w '" },
        { "foreign", 126, "cannot start" },
        { "lost", 127, "interpreter" },
        { "gone", 127, "missing-program" },
        { "unfinished", 127, "Exec" },
        { "in no folder", 127, "here" },
        { "nowhere", 126, "/missing/folder" },
    };
    for (auto const& [name, status, remedy] : cases) {
        auto const outcome = scratch.run({ "run", name });
        EXPECT_EQ(outcome.status, status) << name;
        EXPECT_THAT(outcome.errors, StartsWith("shortcuts: "));
        EXPECT_THAT(outcome.errors, HasSubstr(remedy));
        EXPECT_EQ(std::ranges::count(outcome.errors, '\n'), 1) << outcome.errors;
        EXPECT_EQ(outcome.output, "");
    }
    scratch.variables["PATH"] = ".";
    EXPECT_EQ(scratch.run({ "run", "in no folder" }).status, 127);
    scratch.variables["PATH"] = scratch.programs;
    EXPECT_THAT(scratch.run({ "run", "no terminal" }).errors, HasSubstr("x-terminal-emulator"));
}

TEST(Program, Open_makesAPrivateFolderAndShowsIt)
{
    Scratch scratch;
    Scratch::write(scratch.programs / "gio", "#!/bin/sh\necho \"$#\" \"$1\" \"$2\"\n");
    auto const own = scratch.own.string();
    auto const address = "shortcuts://run-shortcut?name=x";
    EXPECT_EQ(scratch.run({ "open", address }).output, "2 open " + own + "\n");
    struct stat status { };
    ASSERT_EQ(stat(own.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0700U);
    EXPECT_THAT(contents(scratch.own / "README.txt"), HasSubstr("chmod +x"));
    EXPECT_EQ(scratch.run({ "list" }).output, "Say hello\n");
    EXPECT_THAT(scratch.run({ "run", "Say hello" }).output, StartsWith("Hello from "));

    std::filesystem::remove(scratch.own / "README.txt");
    EXPECT_EQ(scratch.run({ "open" }).output, "2 open " + own + "\n");
    EXPECT_FALSE(std::filesystem::exists(scratch.own / "README.txt"));

    scratch.variables["PATH"] = "/missing";
    auto const none = scratch.run({ "open" });
    EXPECT_EQ(none.status, 127);
    EXPECT_THAT(none.errors, HasSubstr("libglib2.0-bin"));
}

TEST(Program, Open_runsNothingWhateverTheAddressSays)
{
    Scratch scratch;
    Scratch::write(scratch.programs / "gio", "#!/bin/sh\necho \"$@\"\n");
    auto const mark = scratch.home / "mark";
    scratch.script("x", "touch " + mark.string());
    auto const own = scratch.own.string();
    std::vector<std::string> const addresses { "shortcuts://run-shortcut?name=x", "shortcuts://x",
        "x", "run", "--help", "../../x", "$(touch " + mark.string() + ")", "file:///bin/sh", "" };
    for (auto const& address : addresses)
        EXPECT_EQ(scratch.run({ "open", address }).output, "open " + own + "\n") << address;
    for (auto const* name : { "x", "gone", "..%2Fx", "--help", "$(touch%20mark)" }) {
        auto const address = std::string("shortcuts://open-shortcut?name=") + name;
        EXPECT_EQ(scratch.run({ "open", address }).status, name == std::string("x") ? 0 : 1);
    }
    EXPECT_EQ(contents(scratch.logs / "x.log"),
        "x has not run without a terminal yet\n" + (scratch.own / "x").string() + "\n");
    EXPECT_FALSE(std::filesystem::exists(mark));
    // What is forbidden to addresses, a person may do.
    EXPECT_EQ(scratch.run({ "run", "x" }).status, 0);
    EXPECT_TRUE(std::filesystem::exists(mark));
}

TEST(Program, AddressHandler_canOnlyOpen)
{
    auto const entry = parseDesktopEntry(contents(SHORTCUTS_ADDRESS_HANDLER));
    ASSERT_TRUE(entry);
    EXPECT_EQ(splitCommandLine(entry->exec), (std::vector<std::string> { "shortcuts", "open" }));
    EXPECT_TRUE(entry->exec.ends_with(" %u"));
    EXPECT_TRUE(entry->actions.empty());
}

} // namespace quillbar::shortcuts
