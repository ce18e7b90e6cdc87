#include "platform/linux/system/SecuritySettings.h"

#include "platform/ChildProcess.h"
#include "platform/Workspace.h"
#include "platform/linux/system/DesktopPrograms.h"

#include <cstdlib>

namespace quillbar::platform {

namespace {

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

std::vector<std::string> commandOf(std::string_view desktop, ProgramFinder const& find)
{
    for (auto const& program : settingsPrograms()) {
        if (program.desktop != desktop)
            continue;
        auto command = program.command;
        command.front() = find(command.front());
        if (!command.front().empty())
            return command;
    }
    return {};
}

std::vector<std::string> installedCommand()
{
    auto const* const currentDesktop = std::getenv("XDG_CURRENT_DESKTOP");
    return securitySettingsCommand(currentDesktop ? currentDesktop : "", findProgram);
}

} // namespace

std::vector<std::string> securitySettingsCommand(
    std::string_view currentDesktop, ProgramFinder const& find)
{
    while (!currentDesktop.empty()) {
        auto const end = currentDesktop.find(':');
        auto command = commandOf(currentDesktop.substr(0, end), find);
        if (!command.empty())
            return command;
        currentDesktop.remove_prefix(
            end == std::string_view::npos ? currentDesktop.size() : end + 1);
    }
    return {};
}

bool hasSecuritySettings()
{
    return !installedCommand().empty();
}

void openSecuritySettings()
{
    if (auto const command = installedCommand(); !command.empty())
        runChild(command, {});
}

} // namespace quillbar::platform
