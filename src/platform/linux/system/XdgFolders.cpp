#include "platform/linux/system/XdgFolders.h"

#include <cstdlib>
#include <pwd.h>
#include <string_view>
#include <unistd.h>

namespace quillbar::platform {

namespace fs = std::filesystem;

namespace {

std::string_view variable(char const* name)
{
    auto const* value = std::getenv(name);
    return value ? value : std::string_view {};
}

fs::path absolutePath(std::string_view text)
{
    return text.starts_with('/') ? fs::path(text) : fs::path {};
}

fs::path personalFolder(char const* name, char const* nameInHome)
{
    if (auto chosen = absolutePath(variable(name)); !chosen.empty())
        return chosen;
    auto const home = homeFolder();
    return home.empty() ? fs::path {} : home / nameInHome;
}

std::vector<fs::path> searchPath(fs::path const& first, char const* name, char const* standard)
{
    std::vector<fs::path> folders;
    if (!first.empty())
        folders.push_back(first);
    auto rest = variable(name);
    if (rest.empty())
        rest = standard;
    while (!rest.empty()) {
        auto const end = rest.find(':');
        if (auto folder = absolutePath(rest.substr(0, end)); !folder.empty())
            folders.push_back(std::move(folder));
        rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
    }
    return folders;
}

} // namespace

fs::path homeFolder()
{
    if (auto home = absolutePath(variable("HOME")); !home.empty())
        return home;
    auto const* account = ::getpwuid(::getuid());
    return account && account->pw_dir ? absolutePath(account->pw_dir) : fs::path {};
}

fs::path dataHome()
{
    return personalFolder("XDG_DATA_HOME", ".local/share");
}

fs::path configHome()
{
    return personalFolder("XDG_CONFIG_HOME", ".config");
}

fs::path stateHome()
{
    return personalFolder("XDG_STATE_HOME", ".local/state");
}

std::vector<fs::path> dataFolders()
{
    return searchPath(dataHome(), "XDG_DATA_DIRS", "/usr/local/share:/usr/share");
}

std::vector<fs::path> configFolders()
{
    return searchPath(configHome(), "XDG_CONFIG_DIRS", "/etc/xdg");
}

} // namespace quillbar::platform
