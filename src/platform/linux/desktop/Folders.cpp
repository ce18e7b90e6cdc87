#include "platform/Folders.h"

#include "platform/linux/desktop/XdgFolders.h"

#include <glib.h>
#include <string_view>
#include <system_error>

namespace quillbar::platform {

namespace fs = std::filesystem;

namespace {

/// The rules have relative folders ignored, which the library leaves to its callers.
fs::path absolute(fs::path folder, char const* nameInHome)
{
    return folder.is_absolute() ? std::move(folder) : fs::path(g_get_home_dir()) / nameInHome;
}

} // namespace

fs::path dataHome()
{
    return absolute(g_get_user_data_dir(), ".local/share");
}

fs::path configHome()
{
    return absolute(g_get_user_config_dir(), ".config");
}

std::vector<fs::path> applicationSupportFolders()
{
    return { dataHome() };
}

fs::path stateFolder()
{
    return absolute(g_get_user_state_dir(), ".local/state");
}

std::string executablePath()
{
    std::error_code error;
    auto path = fs::read_symlink("/proc/self/exe", error).string();
    // How the kernel marks a file that an upgrade replaced; the new one stands at the same path.
    constexpr std::string_view deletedMark = " (deleted)";
    if (path.ends_with(deletedMark) && !fs::exists(path, error))
        path.erase(path.size() - deletedMark.size());
    return path;
}

std::string bundleVersion()
{
    return QUILLBAR_VERSION;
}

} // namespace quillbar::platform
