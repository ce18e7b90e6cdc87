#include "linux/Support.h"
#include "platform/Workspace.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <sys/stat.h>

namespace quillbar::platform {
namespace {

/// Programs in PATH that tell how they were started.
class Workspace : public ::testing::Test {
protected:
    Workspace()
    {
        quillbar::testing::startApplication();
        quillbar::testing::useScratchHome(folder.path());
        // Counts as not set.
        ::setenv("XDG_DATA_HOME", "relative", 1);
        std::filesystem::current_path(folder.path());
        ::setenv("PATH", ("relative:" + (folder.path() / "bin").string()).c_str(), 1);
    }

    void install(std::string const& program) const
    {
        auto const path = folder.write(program,
            "#!/bin/sh\necho \"$0 $# $1 $2\" >" + mailbox.path().string()
                + "\ncase $2 in shortcuts:) exit 2 ;; esac\n");
        ::chmod(path.c_str(), S_IRWXU);
    }

    [[nodiscard]] std::string program(std::string const& name) const
    {
        return folder.path() / "bin" / name;
    }

    quillbar::testing::TemporaryFolder folder;
    quillbar::testing::Mailbox mailbox { folder.path() / "mailbox" };
};

TEST_F(Workspace, OpenAddress_handsItToTheDesktopOrShowsTheFolder)
{
    install("bin/gio");
    install("relative/gio");
    openAddress("--help");
    openAddress("");
    openAddress("https://example.org/a?b=c&d=%20$(x)");
    EXPECT_EQ(mailbox.nextLine(), program("gio") + " 2 open https://example.org/a?b=c&d=%20$(x)");
    openAddress("shortcuts:");
    EXPECT_EQ(mailbox.nextLine(), program("gio") + " 2 open shortcuts:");
    auto const shortcuts = folder.path() / ".local/share/shortcuts";
    EXPECT_EQ(mailbox.nextLine(), program("gio") + " 2 open " + shortcuts.string());
    struct stat status { };
    ASSERT_EQ(::stat(shortcuts.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777u, 0700u);
}

TEST_F(Workspace, SecuritySettings_areThoseOfTheFirstDesktopNamedThatHasThem)
{
    install("bin/gnome-control-center");
    for (auto const* const desktops : { "XFCE", "::" }) {
        ::setenv("XDG_CURRENT_DESKTOP", desktops, 1);
        EXPECT_FALSE(hasSecuritySettings()) << desktops;
    }
    ::setenv("XDG_CURRENT_DESKTOP", "Budgie:GNOME", 1);
    EXPECT_TRUE(hasSecuritySettings());
    openSecuritySettings();
    EXPECT_EQ(mailbox.nextLine(), program("gnome-control-center") + " 1 notifications ");
    install("bin/budgie-control-center");
    openSecuritySettings();
    EXPECT_EQ(mailbox.nextLine(), program("budgie-control-center") + " 1 notifications ");
}

} // namespace
} // namespace quillbar::platform
