#include "shortcuts/Environment.h"

#include <algorithm>
#include <glib.h>

namespace quillbar::shortcuts {

namespace {

std::vector<std::string> shortcutFolders(std::string const& home)
{
    // The rules for base directories have relative ones ignored, which the library leaves to us.
    std::string dataHome = g_get_user_data_dir();
    if (!g_path_is_absolute(dataHome.c_str()))
        dataHome = home + "/.local/share";

    std::vector<std::string> folders = { dataHome + "/shortcuts" };
    for (auto const* const* folder = g_get_system_data_dirs(); *folder; ++folder) {
        g_autofree char* path = g_build_filename(*folder, "shortcuts", nullptr);
        if (g_path_is_absolute(path) && std::ranges::find(folders, path) == folders.end())
            folders.emplace_back(path);
    }
    return folders;
}

/// PATH with the home's folders for programs in front. Login shells add these, desktop sessions
/// often do not, and what runs in a terminal should run here.
std::string searchPath(std::string const& home)
{
    std::string path;
    for (auto const& folder : { home + "/.local/bin", home + "/bin" }) {
        if (g_file_test(folder.c_str(), G_FILE_TEST_IS_DIR))
            path += folder + ":";
    }
    constexpr auto usual = "/usr/local/bin:/usr/bin:/bin";
    auto const* const inherited = g_getenv("PATH");
    g_auto(GStrv) parts = g_strsplit(inherited ? inherited : usual, ":", -1);
    for (auto* const* part = parts; *part; ++part) {
        // A relative one would stand for whatever folder a program happens to be in.
        if (g_path_is_absolute(*part))
            path.append(*part).append(":");
    }
    // An empty PATH, too, stands for the current folder.
    return path.empty() ? usual : path.substr(0, path.size() - 1);
}

} // namespace

Environment prepareEnvironment()
{
    Environment environment { g_get_home_dir(), {} };
    environment.folders = shortcutFolders(environment.home);
    g_setenv("PATH", searchPath(environment.home).c_str(), 1);
    return environment;
}

std::string findProgram(std::string const& program)
{
    g_autofree char* path = g_find_program_in_path(program.c_str());
    return path ? path : "";
}

} // namespace quillbar::shortcuts
