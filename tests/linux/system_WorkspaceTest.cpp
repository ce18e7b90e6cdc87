#include "linux/system_Support.h"
#include "platform/Folders.h"
#include "platform/Workspace.h"
#include "platform/linux/system/AddressHandlers.h"
#include "platform/linux/system/SecuritySettings.h"
#include "platform/linux/system/XdgFolders.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <pwd.h>
#include <set>
#include <sys/stat.h>
#include <unistd.h>

namespace quillbar::platform {
namespace {

using quillbar::testing::Mailbox;
using quillbar::testing::TemporaryFolder;
using quillbar::testing::useScratchHome;

class Desktop : public ::testing::Test {
protected:
    Desktop()
    {
        quillbar::testing::startApplication();
        useScratchHome(folder.path());
        ::setenv("XDG_CURRENT_DESKTOP", "ubuntu:GNOME", 1);
    }

    void install(std::string const& name) const
    {
        folder.write("system/applications/" + name, "[Desktop Entry]\nType=Application\n");
    }

    TemporaryFolder folder;
};

TEST_F(Desktop, AddressHandler_isWhatTheDesktopWouldStart)
{
    install("a.desktop");
    install("sub/b.desktop");
    std::string const defaults = "[Default Applications]\nx-scheme-handler/shortcuts=";
    struct Case {
        char const* file;
        std::string text;
        bool isFound;
    };
    Case const cases[] {
        { "config/mimeapps.list", defaults + "a.desktop;\n", true },
        { "config/gnome-mimeapps.list", defaults + "gone.desktop;a.desktop\r\n", true },
        { "etc/mimeapps.list",
            "[Added Associations]\nx-scheme-handler/shortcuts = sub-b.desktop;\n", true },
        { "system/applications/mimeinfo.cache",
            "[MIME Cache]\nx-scheme-handler/shortcuts=a.desktop;\n", true },
        { "config/kde-mimeapps.list", defaults + "a.desktop;\n", false },
        { "config/mimeapps.list", defaults + "gone.desktop;\n", false },
        { "config/mimeapps.list", defaults + ";../../a.desktop;\n", false },
        { "config/mimeapps.list", "[Default Applications]\nx-scheme-handler/other=a.desktop;\n",
            false },
        { "config/mimeapps.list", "\xff\n[\n=\n" + defaults, false },
        { "config/mimeapps.list",
            defaults
                + "a.desktop;\n[Removed Associations]\nx-scheme-handler/shortcuts=a.desktop;\n",
            false },
    };
    for (auto const& [file, text, isFound] : cases) {
        auto const written = folder.write(file, text);
        EXPECT_EQ(hasAddressHandler("shortcuts"), isFound) << file << '\n' << text;
        std::filesystem::remove(written);
    }
}

TEST_F(Desktop, OpenAddress_handsItToTheDesktopOrShowsTheFolder)
{
    Mailbox opened(folder.path() / "opened");
    auto const opener = folder.write(
        "bin/xdg-open", "#!/bin/sh\necho \"$# $1\" >" + opened.path().string() + "\n");
    ::chmod(opener.c_str(), S_IRWXU);
    ::setenv("PATH", opener.parent_path().c_str(), 1);

    openAddress("shortcuts://");
    auto const shortcuts = folder.path() / "data" / "shortcuts";
    EXPECT_EQ(opened.nextLine(), "1 file://" + shortcuts.string());
    struct stat status { };
    ASSERT_EQ(::stat(shortcuts.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777u, 0700u);

    openAddress("--help");
    openAddress("");
    openAddress("https://example.org/a?b=c&d=%20$(x)");
    EXPECT_EQ(opened.nextLine(), "1 https://example.org/a?b=c&d=%20$(x)");

    install("a.desktop");
    folder.write(
        "config/mimeapps.list", "[Default Applications]\nx-scheme-handler/shortcuts=a.desktop\n");
    openAddress("shortcuts://");
    EXPECT_EQ(opened.nextLine(), "1 shortcuts://");
}

TEST_F(Desktop, Folders_followTheVariablesThatAreAbsolute)
{
    using Paths = std::vector<std::filesystem::path>;
    EXPECT_EQ(applicationSupportFolders(), Paths { folder.path() / "data" });
    ::setenv("XDG_DATA_HOME", "relative", 1);
    EXPECT_EQ(applicationSupportFolders(), Paths { folder.path() / ".local/share" });
    ::setenv("XDG_DATA_DIRS", ":/a:b:/c", 1);
    EXPECT_EQ(dataFolders(), (Paths { folder.path() / ".local/share", "/a", "/c" }));
    ::unsetenv("XDG_CONFIG_DIRS");
    EXPECT_EQ(configFolders(), (Paths { folder.path() / "config", "/etc/xdg" }));
    ::unsetenv("HOME");
    EXPECT_EQ(homeFolder(), ::getpwuid(::getuid())->pw_dir);
    EXPECT_EQ(std::filesystem::path(executablePath()).filename(), "linux_system_tests");
}

TEST(SecuritySettings, comeFromTheFirstDesktopNamedThatHasThem)
{
    using Command = std::vector<std::string>;
    struct Case {
        std::string currentDesktop;
        std::set<std::string> installed;
        Command command;
    };
    for (auto const& [currentDesktop, installed, command] : std::vector<Case> {
             { "Budgie:GNOME", { "budgie-control-center", "gnome-control-center" },
                 { "/bin/budgie-control-center", "notifications" } },
             { "Budgie:GNOME", { "gnome-control-center" },
                 { "/bin/gnome-control-center", "notifications" } },
             { "XFCE", { "xfce4-settings-manager" }, { "/bin/xfce4-settings-manager" } },
             { "XFCE", { "gnome-control-center" }, {} },
             { "::", { "xfce4-settings-manager" }, {} },
         }) {
        auto const find = [&installed = installed](std::string const& name) {
            return installed.contains(name) ? "/bin/" + name : std::string();
        };
        EXPECT_EQ(securitySettingsCommand(currentDesktop, find), command) << currentDesktop;
    }
}

} // namespace
} // namespace quillbar::platform
