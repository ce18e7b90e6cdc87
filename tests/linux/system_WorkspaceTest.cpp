#include "linux/system_Support.h"
#include "platform/Folders.h"
#include "platform/Workspace.h"
#include "platform/linux/system/DesktopPrograms.h"
#include "platform/linux/system/SecuritySettings.h"
#include "platform/linux/system/XdgFolders.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <set>
#include <sys/stat.h>
#include <vector>

namespace quillbar::platform {
namespace {

using quillbar::testing::Mailbox;
using quillbar::testing::TemporaryFolder;
using quillbar::testing::useScratchHome;

TEST(Workspace, OpenAddress_handsItToTheDesktopOrShowsTheFolder)
{
    quillbar::testing::startApplication();
    TemporaryFolder const folder;
    useScratchHome(folder.path());
    Mailbox mailbox(folder.path() / "mailbox");
    auto const write = [&](std::string const& program) {
        auto const path = folder.write(program,
            "#!/bin/sh\necho \"$# $1 $2\" >" + mailbox.path().string()
                + "\ncase $2 in shortcuts:) exit 2 ;; esac\n");
        ::chmod(path.c_str(), S_IRWXU);
    };
    write("bin/gio");
    write("relative/gio");
    std::filesystem::current_path(folder.path());
    ::setenv("PATH", ("relative:" + (folder.path() / "bin").string()).c_str(), 1);
    EXPECT_EQ(findProgram("gio"), folder.path() / "bin/gio");

    openAddress("--help");
    openAddress("");
    openAddress("https://example.org/a?b=c&d=%20$(x)");
    EXPECT_EQ(mailbox.nextLine(), "2 open https://example.org/a?b=c&d=%20$(x)");
    openAddress("shortcuts:");
    EXPECT_EQ(mailbox.nextLine(), "2 open shortcuts:");
    auto const shortcuts = folder.path() / "data/shortcuts";
    EXPECT_EQ(mailbox.nextLine(), "2 open " + shortcuts.string());
    struct stat status { };
    ASSERT_EQ(::stat(shortcuts.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777u, 0700u);
}

TEST(Folders, followTheVariablesThatAreAbsolute)
{
    TemporaryFolder const folder;
    useScratchHome(folder.path());
    ::setenv("XDG_DATA_HOME", "relative", 1);
    EXPECT_EQ(applicationSupportFolders(),
        std::vector<std::filesystem::path> { folder.path() / ".local/share" });
    EXPECT_EQ(configHome(), folder.path() / "config");
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
