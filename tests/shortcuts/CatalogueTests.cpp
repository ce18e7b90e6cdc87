#include "shortcuts/Catalogue.h"
#include "shortcuts/Scratch.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quillbar::shortcuts {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

std::vector<std::string> names(Catalogue const& catalogue)
{
    std::vector<std::string> result;
    for (auto const& shortcut : catalogue.shortcuts())
        result.push_back(shortcut.name);
    return result;
}

std::vector<std::string> names(Scratch const& scratch)
{
    return names(Catalogue(scratch.environment()));
}

} // namespace

TEST(Catalogue, ExecutableFilesAndEntriesInTheFolderItself_areShortcuts)
{
    Scratch scratch;
    scratch.script("Back up.sh");
    scratch.script("tool.tar.gz");
    scratch.entry("app.desktop", "Name=An app\nExec=app");
    std::filesystem::create_symlink(scratch.own / "tool.tar.gz", scratch.own / "link.py");
    std::filesystem::create_symlink("/missing", scratch.own / "broken");
    scratch.script(".hidden");
    scratch.script("tool~");
    scratch.script("folder/inside");
    Scratch::write(scratch.own / "data.txt", "", 0644);
    Scratch::write(scratch.own / "settings.py", "", 0644);
    mkfifo((scratch.own / "pipe").c_str(), 0755);
    mkfifo((scratch.own / "pipe.desktop").c_str(), 0755);

    EXPECT_THAT(names(scratch), ElementsAre("An app", "Back up", "link", "tool.tar.gz"));
}

TEST(Catalogue, AnEarlierFolder_hidesNamesOfALaterOne)
{
    Scratch scratch;
    auto const own = scratch.script("backup.sh");
    Scratch::write(scratch.shared / "backup.py", "");
    Scratch::write(scratch.shared / "other", "");
    Catalogue const catalogue(scratch.environment());
    EXPECT_THAT(names(catalogue), ElementsAre("backup", "other"));
    EXPECT_EQ(catalogue.find("backup")->file, own);
    EXPECT_EQ(catalogue.find("other")->file, scratch.shared / "other");
    EXPECT_EQ(catalogue.find("Backup"), nullptr);
}

TEST(Catalogue, AHiddenEntry_hidesTheSameFileOfALaterFolder)
{
    Scratch scratch;
    scratch.entry("app.desktop", "Name=App\nExec=app\nHidden=true");
    Scratch::write(
        scratch.shared / "app.desktop", "[Desktop Entry]\nType=Application\nName=App\nExec=x\n");
    EXPECT_THAT(names(scratch), IsEmpty());
}

TEST(Catalogue, EqualNames_areToldApartByTheWholeFileName)
{
    Scratch scratch;
    scratch.script("a.sh");
    scratch.script("a.py");
    scratch.script("b");
    scratch.script("b.rb");
    // Its name meets a whole file name that was needed.
    scratch.entry("entry.desktop",
        "Name=a.sh\nExec=x\nActions=1;1;2;1;\n"
        "[Desktop Action 1]\nName=Do\nExec=1\n"
        "[Desktop Action 2]\nName=Do\nExec=2");
    Catalogue const catalogue(scratch.environment());
    EXPECT_THAT(names(catalogue),
        ElementsAre("a.py", "a.sh", "b", "b.rb", "entry.desktop", "entry.desktop: Do"));
    EXPECT_THAT(catalogue.notices(), ElementsAre(HasSubstr("is taken")));
    EXPECT_EQ(catalogue.find("entry.desktop: Do")->exec, "1");
}

TEST(Catalogue, Entries_countWhenTheyCanBeStarted)
{
    Scratch scratch;
    Scratch::write(scratch.programs / "present", "");
    scratch.entry("1.desktop", "Name=present\nTryExec=present\nExec=present %U");
    scratch.entry("2.desktop", "Name=absent\nTryExec=absent\nExec=absent");
    scratch.entry("3.desktop",
        "Name=only actions\n[Desktop Action a]\nName=A\nExec=a\n"
        "[Desktop Action b]\nName=B");
    scratch.entry("4.desktop", "Exec=nameless");
    Scratch::write(scratch.own / "5.desktop", "[Desktop Entry]\nType=Link\nName=link\nURL=x");
    Scratch::write(scratch.own / "6.desktop", std::string(2 << 20, '\n'));
    Catalogue const catalogue(scratch.environment());
    EXPECT_THAT(names(catalogue), ElementsAre("only actions: A", "present"));
    EXPECT_EQ(catalogue.notices().size(), 3U);
}

TEST(Catalogue, NamesThatNoListCanCarry_areReportedOnOneLineEach)
{
    Scratch scratch;
    scratch.script("line\nbreak");
    scratch.script("latin \xE9");
    scratch.script("\x1B[2J");
    scratch.script("fine");
    // Its name would stand in each of these as well.
    std::string actions;
    for (auto index = 0; index < 2000; ++index)
        actions += "[Desktop Action " + std::to_string(index) + "]\nName=A\nExec=x\n";
    scratch.entry("long.desktop", "Name=" + std::string(900'000, 'n') + "\nExec=x\n" + actions);
    Catalogue const catalogue(scratch.environment());
    EXPECT_THAT(names(catalogue), ElementsAre("fine"));
    ASSERT_EQ(catalogue.notices().size(), 4U);
    for (auto const& notice : catalogue.notices())
        EXPECT_EQ(notice.find_first_of("\n\x1B\xE9"), std::string::npos) << notice;
}

TEST(Catalogue, WhatOthersMayWriteTo_isLeftOut)
{
    Scratch scratch;
    auto const shared = scratch.home / "open to all";
    auto const tool = scratch.write(shared / "safe/tool", "");
    scratch.script("fine");
    std::filesystem::create_symlink(tool, scratch.own / "link");
    chmod(scratch.script("open.sh").c_str(), 0757);
    chmod(scratch.entry("open.desktop", "Name=N\nExec=x").c_str(), 0646);
    EXPECT_EQ(Catalogue(scratch.environment()).find("link")->target, tool);

    // A link leads where any folder on the way says.
    chmod(shared.c_str(), 0757);
    Catalogue const files(scratch.environment());
    EXPECT_THAT(names(files), ElementsAre("fine"));
    EXPECT_EQ(files.notices().size(), 3U);
    EXPECT_TRUE(files.isComplete());
    EXPECT_EQ(files.findRefused("open")->verdict.reason, Distrust::WritableByOthers);
    EXPECT_EQ(files.findRefused("link")->verdict.path, shared);
    chmod(shared.c_str(), 01777);
    EXPECT_THAT(names(scratch), ElementsAre("fine", "link"));

    chmod(scratch.own.c_str(), 0777);
    Catalogue const folder(scratch.environment());
    EXPECT_THAT(names(folder), IsEmpty());
    EXPECT_THAT(folder.notices(), ElementsAre(HasSubstr("others may write")));
    EXPECT_FALSE(folder.isComplete());
}

} // namespace quillbar::shortcuts
