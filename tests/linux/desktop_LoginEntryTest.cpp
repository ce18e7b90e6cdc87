#include "linux/Support.h"
#include "platform/LoginEntry.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

namespace quillbar::platform {
namespace {

using quillbar::testing::readFile;
using ::testing::HasSubstr;

class LoginEntries : public ::testing::Test {
protected:
    LoginEntries() { quillbar::testing::useScratchHome(folder.path()); }

    [[nodiscard]] std::string text() const { return readFile(file); }

    quillbar::testing::TemporaryFolder folder;
    std::filesystem::path file
        = folder.path() / "config" / "autostart" / "com.quillbar.launcher.desktop";
    LoginEntry entry { "com.quillbar.launcher", "/opt/quillbar" };
};

TEST_F(LoginEntries, Exec_quotesThePathForBothLayers)
{
    struct Case {
        char const* path;
        char const* expected;
    };
    Case const cases[] {
        { "/a b'c#;&()~*?=é日本", R"("/a b'c#;&()~*?=é日本")" },
        { R"(/a"b$c`d)", R"("/a\\"b\\$c\\`d")" },
        { R"(/a\b)", R"("/a\\\\b")" },
        { "/a\nb\rc", R"("/a\nb\rc")" },
        { "/100%", R"(/usr/bin/env "/100%%")" },
        { "/a=100%", R"("/a=100%%")" },
    };
    for (auto const& [path, expected] : cases) {
        entry.executablePath = path;
        writeLoginEntry(entry);
        EXPECT_THAT(text(), HasSubstr("\nExec=" + std::string(expected) + "\n")) << path;
    }
}

TEST_F(LoginEntries, Write_keepsTheDesktopsOffSwitch)
{
    for (auto const* off : { "Hidden=true\n", "X-GNOME-Autostart-enabled=false\n" }) {
        folder.write(file,
            "[Other]\nHidden=false\n[Desktop Entry]\nExec=\"/old\"\n" + std::string(off)
                + "[Desktop Action x]\nHidden=false\n" + std::string(100'000, '#') + "\n");
        writeLoginEntry(entry);
        EXPECT_THAT(text(), HasSubstr(off));
        EXPECT_THAT(text(), HasSubstr("Exec=\"/opt/quillbar\"\n"));
    }
}

TEST_F(LoginEntries, Write_replacesOnlyAFileInAPrivateFolder)
{
    writeLoginEntry(entry);
    struct stat status { };
    ::stat(file.parent_path().c_str(), &status);
    EXPECT_EQ(status.st_mode & 0777u, 0700u);

    auto const target = folder.write("target", "x");
    for (auto const make : { +[](char const* path) { return ::mkfifo(path, 0600); },
             +[](char const* path) { return ::symlink("../../target", path); } }) {
        std::filesystem::remove(file);
        ASSERT_EQ(make(file.c_str()), 0);
        writeLoginEntry(entry);
        EXPECT_FALSE(std::filesystem::is_regular_file(std::filesystem::symlink_status(file)));
    }
    EXPECT_EQ(readFile(target), "x");
}

TEST_F(LoginEntries, Remove_deletesTheFile)
{
    writeLoginEntry(entry);
    removeLoginEntry(entry.label);
    EXPECT_FALSE(std::filesystem::exists(file));
}

} // namespace
} // namespace quillbar::platform
