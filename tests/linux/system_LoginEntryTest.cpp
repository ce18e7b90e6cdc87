#include "linux/system_Support.h"
#include "platform/LoginEntry.h"
#include "platform/linux/system/AutostartEntry.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/stat.h>

namespace quillbar::platform {
namespace {

using quillbar::testing::readFile;
using ::testing::HasSubstr;
using ::testing::Not;

TEST(ExecValue, Path_isQuotedForBothLayers)
{
    struct Case {
        char const* path;
        char const* expected;
    };
    Case const cases[] {
        { "/usr/bin/quillbar", R"("/usr/bin/quillbar")" },
        { "/a b'c#;&()~*?=é日本", R"("/a b'c#;&()~*?=é日本")" },
        { R"(/a"b)", R"("/a\\"b")" },
        { "/a$b", R"("/a\\$b")" },
        { "/a`b", R"("/a\\`b")" },
        { R"(/a\b)", R"("/a\\\\b")" },
        { "/a\tb\nc\rd", R"("/a\tb\nc\rd")" },
        { "/100%", R"(/usr/bin/env "/100%%")" },
        { "/a=100%", R"("/a=100%%")" },
        { "", R"("")" },
    };
    for (auto const& [path, expected] : cases)
        EXPECT_EQ(execValue(path), expected) << path;
}

class LoginEntries : public ::testing::Test {
protected:
    LoginEntries() { quillbar::testing::useScratchHome(folder.path()); }

    [[nodiscard]] std::string text() const { return readFile(file); }
    [[nodiscard]] ino_t inode() const
    {
        struct stat status { };
        ::stat(file.c_str(), &status);
        return status.st_ino;
    }

    quillbar::testing::TemporaryFolder folder;
    std::filesystem::path file
        = folder.path() / "config" / "autostart" / "com.quillbar.launcher.desktop";
    LoginEntry entry { "com.quillbar.launcher", "/opt/quillbar" };
};

TEST_F(LoginEntries, Write_touchesNothingThatIsRightAlready)
{
    writeLoginEntry(entry, LoginSwitch::Keep);
    auto const before = inode();
    writeLoginEntry(entry, LoginSwitch::Reset);
    EXPECT_EQ(inode(), before);
    entry.executablePath = "/elsewhere/quillbar";
    writeLoginEntry(entry, LoginSwitch::Keep);
    EXPECT_THAT(text(), HasSubstr("Exec=\"/elsewhere/quillbar\"\n"));
}

TEST_F(LoginEntries, Write_keepsOrResetsTheDesktopsOffSwitch)
{
    for (auto const* off : { "Hidden=true\n", "X-GNOME-Autostart-enabled=false\n" }) {
        folder.write(file,
            "[Other]\nHidden=false\n[Desktop Entry]\nExec=\"/old\"\n" + std::string(off)
                + "[Desktop Action x]\nHidden=false\n");
        writeLoginEntry(entry, LoginSwitch::Keep);
        EXPECT_THAT(text(), HasSubstr(off));
        EXPECT_THAT(text(), HasSubstr("Exec=\"/opt/quillbar\"\n"));
        writeLoginEntry(entry, LoginSwitch::Reset);
        EXPECT_THAT(text(), Not(HasSubstr(off)));
    }
}

TEST_F(LoginEntries, Remove_deletesOnlyTheOwnFile)
{
    auto const other = folder.write("config/autostart/other.desktop", "x");
    removeLoginEntry(entry.label);
    writeLoginEntry(entry, LoginSwitch::Keep);
    removeLoginEntry(entry.label);
    EXPECT_FALSE(std::filesystem::exists(file));
    removeLoginEntry("../autostart/other");
    EXPECT_TRUE(std::filesystem::exists(other));
}

} // namespace
} // namespace quillbar::platform
