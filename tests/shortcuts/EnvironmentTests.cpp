#include "shortcuts/Scratch.h"
#include "shortcuts/SearchPath.h"
#include "shortcuts/Trust.h"

#include <gtest/gtest.h>

namespace quillbar::shortcuts {

namespace {

Environment read(std::map<std::string, std::string> const& variables)
{
    return Environment::read([&](char const* name) -> char const* {
        auto const variable = variables.find(name);
        return variable == variables.end() ? nullptr : variable->second.c_str();
    });
}

} // namespace

TEST(Environment, Folders_followTheBaseDirectoryRules)
{
    using Folders = std::vector<std::string>;
    EXPECT_EQ(read({ { "HOME", "/h" } }).folders,
        (Folders {
            "/h/.local/share/shortcuts", "/usr/local/share/shortcuts", "/usr/share/shortcuts" }));
    EXPECT_EQ(
        read({ { "HOME", "/h" }, { "XDG_DATA_HOME", "" }, { "XDG_DATA_DIRS", "/a:b::/c:/a" } })
            .folders,
        (Folders { "/h/.local/share/shortcuts", "/a/shortcuts", "/c/shortcuts" }));
    EXPECT_EQ(read({ { "HOME", "/h" }, { "XDG_DATA_HOME", "relative" } }).folders.front(),
        "/h/.local/share/shortcuts");
    EXPECT_EQ(read({ { "XDG_DATA_HOME", "/d" } }).folders.front(), "/d/shortcuts");
}

TEST(Environment, Locales_goFromExactToGeneral)
{
    using Locales = std::vector<std::string>;
    EXPECT_EQ(read({ { "LANG", "de_AT.UTF-8" } }).locales, (Locales { "de_AT", "de" }));
    EXPECT_EQ(read({ { "LANG", "de_AT.UTF-8@euro" } }).locales,
        (Locales { "de_AT@euro", "de_AT", "de@euro", "de" }));
    EXPECT_EQ(read({ { "LANG", "de_AT" }, { "LC_MESSAGES", "fr_FR" } }).locales,
        (Locales { "fr_FR", "fr" }));
    for (auto const* none : { "", "C", "C.UTF-8", "POSIX" })
        EXPECT_EQ(read({ { "LANG", "de_AT" }, { "LC_ALL", none } }).locales.empty(), *none != 0);
}

TEST(SearchPath, FindProgram_takesTheFirstExecutableFile)
{
    Scratch scratch;
    auto const a = scratch.home / "a";
    auto const b = scratch.home / "b";
    auto const searchPath = "relative::" + a.string() + ":" + b.string();
    Scratch::write(a / "plain", "", 0644);
    std::filesystem::create_directories(a / "tool");
    auto const tool = Scratch::write(b / "tool", "");
    EXPECT_EQ(findProgram("tool", searchPath), tool);
    EXPECT_EQ(findProgram(tool.string(), ""), tool);
    for (auto const* missing : { "plain", "other", "", "/", "/missing/x" })
        EXPECT_EQ(findProgram(missing, searchPath), "") << missing;

    // Neither an empty nor a relative part stands for where the tool was started.
    Scratch::write(scratch.home / "here", "");
    Scratch::write(scratch.home / "relative/here", "");
    auto const before = std::filesystem::current_path();
    std::filesystem::current_path(scratch.home);
    EXPECT_EQ(findProgram("here", searchPath), "");
    std::filesystem::current_path(before);
}

TEST(Trust, OnlyTheFilesOfThePersonAndRoot_areTrusted)
{
    struct {
        uid_t owner;
        gid_t group;
        mode_t mode;
        Person person;
        Distrust expected;
    } const cases[] = {
        { 1000, 1000, 0755, { 1000, 1000 }, Distrust::None },
        { 0, 0, 0755, { 1000, 1000 }, Distrust::None },
        { 1001, 1001, 0755, { 1000, 1000 }, Distrust::ForeignOwner },
        { 1000, 1000, 0757, { 1000, 1000 }, Distrust::WritableByOthers },
        { 1000, 1000, 0775, { 1000, 1000 }, Distrust::None },
        { 1000, 100, 0775, { 1000, 1000 }, Distrust::WritableByOthers },
        { 1000, 100, 0775, { 1000, 100 }, Distrust::WritableByOthers },
        { 0, 50, 0775, { 1000, 1000 }, Distrust::WritableByOthers },
        { 1000, 1000, 0755, { 0, 0 }, Distrust::ForeignOwner },
    };
    for (auto const& [owner, group, mode, person, expected] : cases) {
        struct stat status { };
        status.st_uid = owner;
        status.st_gid = group;
        status.st_mode = mode;
        EXPECT_EQ(distrust(status, person), expected) << owner << ' ' << group << ' ' << mode;
    }
}

} // namespace quillbar::shortcuts
