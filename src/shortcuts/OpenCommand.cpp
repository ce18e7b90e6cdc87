#include "shortcuts/OpenCommand.h"

#include "shortcuts/Execute.h"
#include "shortcuts/Names.h"
#include "shortcuts/Report.h"
#include "shortcuts/SearchPath.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

namespace quillbar::shortcuts {

namespace {

constexpr std::string_view explanation = R"(Your shortcuts
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

constexpr std::string_view sample = R"script(#!/bin/sh
# A sample. Make it executable, and it is the shortcut "Say hello".
exec notify-send "$SHORTCUT_NAME" "Hello from $(hostname)"
)script";

void writeFile(std::string const& path, std::string_view text)
{
    auto const file = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0644);
    if (file < 0)
        return;
    while (!text.empty()) {
        auto const count = write(file, text.data(), text.size());
        if (count <= 0)
            break;
        text.remove_prefix(static_cast<std::size_t>(count));
    }
    close(file);
}

void createParents(std::string const& path)
{
    for (auto end = path.find('/', 1); end != std::string::npos; end = path.find('/', end + 1))
        mkdir(path.substr(0, end).c_str(), S_IRWXU);
}

} // namespace

bool createShortcutsFolder(std::string const& folder)
{
    createParents(folder);
    if (mkdir(folder.c_str(), S_IRWXU) != 0)
        return errno == EEXIST;
    writeFile(folder + "/README.txt", explanation);
    writeFile(folder + "/Say hello.sh", sample);
    return true;
}

int openShortcutsFolder(Environment const& environment)
{
    auto const& folder = environment.folders.front();
    if (!createShortcutsFolder(folder)) {
        report("cannot make the folder " + printable(folder) + ": " + std::strerror(errno));
        return status::cannotExecute;
    }
    if (auto const opener = findProgram("xdg-open", environment.searchPath); !opener.empty())
        return execute({ opener, folder });
    if (auto const opener = findProgram("gio", environment.searchPath); !opener.empty())
        return execute({ opener, "open", folder });
    report("there is no program to show " + printable(folder) + " with; install xdg-utils");
    return status::notFound;
}

} // namespace quillbar::shortcuts
