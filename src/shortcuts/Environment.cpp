#include "shortcuts/Environment.h"

#include <algorithm>
#include <pwd.h>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace quillbar::shortcuts {

namespace {

std::string valueOr(Environment::Lookup const& lookup, char const* name, std::string const& other)
{
    auto const* value = lookup(name);
    return value && *value ? value : other;
}

std::string homeFolder(Environment::Lookup const& lookup)
{
    auto home = valueOr(lookup, "HOME", {});
    if (!home.empty())
        return home;
    auto const* account = getpwuid(geteuid());
    return account && account->pw_dir ? account->pw_dir : "/";
}

std::vector<std::string> split(std::string_view list, char separator)
{
    std::vector<std::string> parts;
    while (true) {
        auto const end = list.find(separator);
        parts.emplace_back(list.substr(0, end));
        if (end == std::string_view::npos)
            return parts;
        list.remove_prefix(end + 1);
    }
}

std::vector<std::string> shortcutFolders(Environment::Lookup const& lookup, std::string const& home)
{
    auto const defaultDataHome = home + "/.local/share";
    auto dataHome = valueOr(lookup, "XDG_DATA_HOME", defaultDataHome);
    // The base directory rules have relative folders ignored.
    if (!dataHome.starts_with('/'))
        dataHome = defaultDataHome;

    std::vector<std::string> folders = { dataHome + "/shortcuts" };
    for (auto const& folder :
        split(valueOr(lookup, "XDG_DATA_DIRS", "/usr/local/share:/usr/share"), ':')) {
        auto path = folder + "/shortcuts";
        if (folder.starts_with('/') && std::ranges::find(folders, path) == folders.end())
            folders.push_back(std::move(path));
    }
    return folders;
}

bool isFolder(std::string const& path)
{
    struct stat status { };
    return stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

/// What works in a terminal should work here: login shells add these folders, desktops often not.
std::string extendedSearchPath(Environment::Lookup const& lookup, std::string const& home)
{
    auto path = valueOr(lookup, "PATH", "/usr/local/bin:/usr/bin:/bin");
    for (auto const& folder : { home + "/bin", home + "/.local/bin" }) {
        if (isFolder(folder))
            path.insert(0, ":").insert(0, folder);
    }
    return path;
}

/// From "de_AT.UTF-8@euro": "de_AT@euro", "de_AT", "de@euro", "de".
std::vector<std::string> localeSuffixes(Environment::Lookup const& lookup)
{
    auto const locale
        = valueOr(lookup, "LC_ALL", valueOr(lookup, "LC_MESSAGES", valueOr(lookup, "LANG", {})));
    auto const modifierStart = locale.find('@');
    auto const modifier
        = modifierStart == std::string::npos ? std::string() : locale.substr(modifierStart);
    auto const territory = locale.substr(0, locale.find_first_of(".@"));
    auto const language = territory.substr(0, territory.find('_'));
    if (language.empty() || language == "C" || language == "POSIX")
        return {};

    std::vector<std::string> suffixes;
    for (auto const& base : { territory, language }) {
        if (!modifier.empty())
            suffixes.push_back(base + modifier);
        suffixes.push_back(base);
    }
    return suffixes;
}

} // namespace

Environment Environment::read(Lookup const& lookup)
{
    Environment environment;
    environment.home = homeFolder(lookup);
    environment.folders = shortcutFolders(lookup, environment.home);
    environment.searchPath = extendedSearchPath(lookup, environment.home);
    environment.locales = localeSuffixes(lookup);
    return environment;
}

} // namespace quillbar::shortcuts
