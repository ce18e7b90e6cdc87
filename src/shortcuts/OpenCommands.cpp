#include "shortcuts/Catalogue.h"
#include "shortcuts/Commands.h"
#include "shortcuts/Execute.h"
#include "shortcuts/Names.h"
#include "shortcuts/RunLog.h"

#include <cerrno>
#include <cstring>
#include <glib.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quillbar::shortcuts {

namespace {

constexpr auto explanation = R"(Your shortcuts
==============

Every executable file in this folder is a shortcut, and so is every desktop
entry (a .desktop file of an application).

- Put a script or a program here, or a link to one, and make it executable:
      chmod +x "Back up.sh"
- Its name is the file name without an extension such as .sh or .py.
- Files that are not executable, hidden files, backups ending in ~ and folders
  are left alone, so scripts may keep their data here.
- A shortcut starts in your home folder.

    shortcuts list              shows the names
    shortcuts run "Say hello"   runs one

"man shortcuts" tells the rest.
)";

constexpr auto sample = R"script(#!/bin/sh
# A sample, the shortcut "Say hello". What it prints: shortcuts log "Say hello"
text="Hello from $(uname -n)"
echo "$text"
if command -v notify-send >/dev/null; then
    notify-send "$SHORTCUT_NAME" "$text"
fi
exit 0
)script";

/// Makes the folder with an explanation and a sample in it. Returns whether it is there; one that
/// is there already stays as it is.
bool createShortcutsFolder(std::string const& folder)
{
    g_autofree char* parent = g_path_get_dirname(folder.c_str());
    g_mkdir_with_parents(parent, S_IRWXU);
    if (mkdir(folder.c_str(), S_IRWXU) != 0)
        return errno == EEXIST;
    g_file_set_contents((folder + "/README.txt").c_str(), explanation, -1, nullptr);
    g_file_set_contents_full((folder + "/Say hello.sh").c_str(), sample, -1,
        G_FILE_SET_CONTENTS_CONSISTENT, S_IRWXU, nullptr);
    return true;
}

/// Becomes the desktop's opener.
int openWithDesktop(std::string const& path)
{
    if (auto const opener = findProgram("gio"); !opener.empty())
        return execute(opener, { "gio", "open", path });
    report("there is no program to show " + printable(path) + " with; install libglib2.0-bin");
    return status::notFound;
}

} // namespace

int openShortcutsFolder(Environment const& environment)
{
    auto const& folder = environment.folders.front();
    if (!createShortcutsFolder(folder)) {
        report("cannot make the folder " + printable(folder) + ": " + std::strerror(errno));
        return status::cannotExecute;
    }
    return openWithDesktop(folder);
}

std::optional<std::string> shortcutToOpen(std::string_view address)
{
    constexpr std::string_view start = "shortcuts://open-shortcut?name=";
    if (!address.starts_with(start))
        return std::nullopt;
    std::string const value(address.substr(start.size(), address.find('&') - start.size()));
    g_autofree char* name = g_uri_unescape_string(value.c_str(), nullptr);
    return name ? std::optional<std::string>(name) : std::nullopt;
}

int openLog(Environment const& environment, std::string const& name)
{
    auto const path = logPath(name);
    if (access(path.c_str(), F_OK) != 0) {
        Catalogue const catalogue(environment);
        auto const* const shortcut = catalogue.find(name);
        if (!shortcut)
            return reportMissing(catalogue, name);
        if (!writeLogText(name,
                printable(name) + " has not run without a terminal yet\n"
                    + printable(shortcut->file) + "\n")) {
            report("cannot write " + printable(path) + ": " + std::strerror(errno));
            return status::cannotExecute;
        }
    }
    return openWithDesktop(path);
}

} // namespace quillbar::shortcuts
