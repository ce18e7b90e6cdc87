#include "platform/Workspace.h"

#include "platform/ChildProcess.h"
#include "platform/Folders.h"
#include "platform/Notifications.h"
#include "platform/Updater.h"
#include "platform/linux/desktop/AddressOpener.h"
#include "platform/linux/desktop/ApplicationId.h"
#include "platform/linux/desktop/XdgFolders.h"

#include <functional>
#include <glib.h>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <vector>

namespace quillbar::platform {

namespace {

/// Where an absolute folder of PATH has the program; empty when it is not installed.
std::string findProgram(std::string const& name)
{
    auto const* const searchPath = g_getenv("PATH");
    g_auto(GStrv) folders = g_strsplit(searchPath ? searchPath : "", ":", -1);
    for (auto* const* folder = folders; *folder; ++folder) {
        g_autofree char* path = g_build_filename(*folder, name.c_str(), nullptr);
        // A relative one would stand for whatever folder this program was started in.
        if (g_path_is_absolute(path) && g_file_test(path, G_FILE_TEST_IS_EXECUTABLE)
            && g_file_test(path, G_FILE_TEST_IS_REGULAR))
            return path;
    }
    return {};
}

/// Hands an address or a path to the program that the desktop has for it. `onFailure` is called
/// later when there is none.
void openWithDesktop(std::string const& address, std::function<void()> onFailure,
    std::string const& activationToken = {})
{
    // A program of its own: GIO would take half a megabyte and a thread here, and waits for the
    // bus.
    std::vector<std::string> command { findProgram("gio"), "open", address };
    if (!activationToken.empty())
        // Programs for Wayland look for the first, those for X11 for the second.
        command.insert(command.begin(),
            { findProgram("env"), "XDG_ACTIVATION_TOKEN=" + activationToken,
                "DESKTOP_STARTUP_ID=" + activationToken });
    runChild(command, [onFailure = std::move(onFailure)](std::optional<int> exitStatus) {
        if (exitStatus != 0)
            onFailure();
    });
}

void tellFailure(std::string const& address)
{
    postNotification({ "open", "Quillbar", "No program could open “" + address + "”.",
        NotificationSound::None });
}

void openShortcutsFolder()
{
    auto const folder = dataHome() / "shortcuts";
    // What lies in it is run: nobody else may look in or write there.
    g_mkdir_with_parents(folder.c_str(), S_IRWXU);
    openWithDesktop(folder.string(), [folder] { tellFailure(folder.string()); });
}

struct SettingsProgram {
    std::string_view desktop;
    std::vector<std::string> command;
};

// Of one desktop's programs, the first that is installed serves.
std::vector<SettingsProgram> const& settingsPrograms()
{
    static std::vector<SettingsProgram> const programs {
        { "Budgie", { "budgie-control-center", "notifications" } },
        { "GNOME", { "gnome-control-center", "notifications" } },
        { "Unity", { "gnome-control-center", "notifications" } },
        { "KDE", { "systemsettings", "kcm_notifications" } },
        { "KDE", { "systemsettings5", "kcm_notifications" } },
        { "XFCE", { "xfce4-notifyd-config" } },
        { "XFCE", { "xfce4-keyboard-settings" } },
        { "XFCE", { "xfce4-settings-manager" } },
        { "X-Cinnamon", { "cinnamon-settings", "notifications" } },
        { "MATE", { "mate-notification-properties" } },
        { "MATE", { "mate-keybinding-properties" } },
        { "LXQt", { "lxqt-config-notificationd" } },
        { "LXQt", { "lxqt-config-globalkeyshortcuts" } },
    };
    return programs;
}

/// The command that opens the settings of this desktop; empty when there is none.
std::vector<std::string> settingsCommand()
{
    auto const* const desktops = g_getenv("XDG_CURRENT_DESKTOP");
    g_auto(GStrv) names = g_strsplit(desktops ? desktops : "", ":", -1);
    // The most specific name stands first.
    for (auto* const* name = names; *name; ++name) {
        for (auto [desktop, command] : settingsPrograms()) {
            command.front() = desktop == *name ? findProgram(command.front()) : std::string();
            if (!command.front().empty())
                return command;
        }
    }
    return {};
}

/// How a person without a software centre gets the next version.
std::string updateAdvice()
{
    // By convention only the system's package manager puts programs there.
    return executablePath().starts_with("/usr/bin/")
        ? "Your system’s package manager keeps Quillbar up to date."
        : "Quillbar cannot look for updates here. The next version comes from where you got this "
          "one.";
}

class SoftwareCentre final : public Updater {
public:
    void checkForUpdates() override
    {
        openWithDesktop("appstream:" + std::string(applicationId), [] {
            postNotification({ "updates", "Quillbar", updateAdvice(), NotificationSound::None });
        });
    }
};

} // namespace

void openAddress(std::string const& address)
{
    openAddress(address, {});
}

void openAddress(std::string const& address, std::string const& activationToken)
{
    auto const* const scheme = g_uri_peek_scheme(address.c_str());
    // Without a scheme it would be a file name or even an option to the opener.
    if (!scheme)
        return;
    auto const isShortcuts = std::string_view(scheme) == "shortcuts";
    auto const onFailure = [address, isShortcuts] {
        if (isShortcuts)
            openShortcutsFolder();
        else
            tellFailure(address);
    };
    openWithDesktop(address, onFailure, activationToken);
}

bool hasSecuritySettings()
{
    return !settingsCommand().empty();
}

void openSecuritySettings()
{
    if (auto const command = settingsCommand(); !command.empty())
        runChild(command, {});
}

std::unique_ptr<Updater> startUpdater()
{
    return std::make_unique<SoftwareCentre>();
}

} // namespace quillbar::platform
