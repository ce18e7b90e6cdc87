#include "platform/Folders.h"

#include "platform/linux/system/XdgFolders.h"

#include <string_view>
#include <system_error>

namespace quillbar::platform {

namespace fs = std::filesystem;

std::vector<fs::path> applicationSupportFolders()
{
    auto folder = dataHome();
    if (folder.empty())
        return {};
    return { std::move(folder) };
}

fs::path stateFolder()
{
    return stateHome();
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
