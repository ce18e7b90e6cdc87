#include "shortcuts/OpenCommand.h"

#include "shortcuts/Execute.h"
#include "shortcuts/Names.h"
#include "shortcuts/Report.h"

#include <cerrno>
#include <cstring>
#include <glib.h>
#include <sys/stat.h>

namespace quillbar::shortcuts {

namespace {

constexpr auto explanation = R"(Your shortcuts
==============

Every executable file in this folder is a shortcut, and so is every desktop
entry (a .desktop file of an application).

- Put a script or a program here, or a link to one, and make it executable:
      chmod +x "Say hello.sh"
- Its name is the file name without an extension such as .sh or .py.
- Files that are not executable, hidden files, backups ending in ~ and folders
  are left alone, so scripts may keep their data here.
- A shortcut starts in your home folder.

    shortcuts list              shows the names
    shortcuts run "Say hello"   runs one

"man shortcuts" tells the rest.
)";

constexpr auto sample = R"script(#!/bin/sh
# A sample. Make it executable, and it is the shortcut "Say hello".
exec notify-send "$SHORTCUT_NAME" "Hello from $(hostname)"
)script";

} // namespace

bool createShortcutsFolder(std::string const& folder)
{
    g_autofree char* parent = g_path_get_dirname(folder.c_str());
    g_mkdir_with_parents(parent, S_IRWXU);
    if (mkdir(folder.c_str(), S_IRWXU) != 0)
        return errno == EEXIST;
    g_file_set_contents((folder + "/README.txt").c_str(), explanation, -1, nullptr);
    g_file_set_contents((folder + "/Say hello.sh").c_str(), sample, -1, nullptr);
    return true;
}

int openShortcutsFolder(Environment const& environment)
{
    auto const& folder = environment.folders.front();
    if (!createShortcutsFolder(folder)) {
        report("cannot make the folder " + printable(folder) + ": " + std::strerror(errno));
        return status::cannotExecute;
    }
    if (auto const opener = findProgram("gio"); !opener.empty())
        return execute(opener, { "gio", "open", folder });
    report("there is no program to show " + printable(folder) + " with; install libglib2.0-bin");
    return status::notFound;
}

} // namespace quillbar::shortcuts
