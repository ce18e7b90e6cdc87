#include "shortcuts/Commands.h"

#include "shortcuts/Catalogue.h"
#include "shortcuts/Names.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <glib.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quillbar::shortcuts {

namespace {

std::vector<char*> pointers(std::vector<std::string> const& arguments)
{
    std::vector<char*> result;
    result.reserve(arguments.size() + 1);
    for (auto const& argument : arguments)
        result.push_back(const_cast<char*>(argument.c_str()));
    result.push_back(nullptr);
    return result;
}

/// Programs for other machines have zero bytes at their start, no script does.
bool looksLikeText(std::string const& path)
{
    auto const file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (file < 0)
        return false;
    std::array<char, 256> start {};
    auto const count = read(file, start.data(), start.size());
    close(file);
    return count >= 0
        && std::memchr(start.data(), '\0', static_cast<std::size_t>(count)) == nullptr;
}

/// Becomes the program of this path, which is told these arguments, its own name first. Returns
/// only when that fails, with the status to exit with; the reason has been reported. A script
/// without an interpreter line goes to the system's shell, as in a terminal.
int execute(std::string const& program, std::vector<std::string> const& arguments)
{
    execv(program.c_str(), pointers(arguments).data());
    if (errno == ENOEXEC && looksLikeText(program)) {
        auto throughShell = arguments;
        throughShell.front() = program;
        throughShell.insert(throughShell.begin(), "sh");
        execv("/bin/sh", pointers(throughShell).data());
    }

    auto const error = errno;
    auto const isMissing = error == ENOENT;
    report("cannot start " + printable(program) + ": "
        + (isMissing ? "the interpreter that it asks for is not installed" : std::strerror(error)));
    return isMissing ? status::notFound : status::cannotExecute;
}

std::string quoted(std::string_view name)
{
    return "\"" + printable(name) + "\"";
}

int reportMissing(Catalogue const& catalogue, std::string const& name)
{
    auto const* refused = catalogue.findRefused(name);
    if (!refused) {
        report("no shortcut is named " + quoted(name) + "; \"shortcuts list\" shows the names");
        return status::noSuchShortcut;
    }
    auto const& [reason, path] = refused->verdict;
    auto const file = printable(shellQuoted(refused->file));
    auto const fault = " is not run, " + reasonText(refused->verdict, refused->file);
    switch (reason) {
    case Distrust::None:
        report(quoted(name) + " is not executable; to make it so: chmod +x " + file);
        break;
    case Distrust::WritableByOthers:
        // Taking the group's right to write takes it from everybody in an access control list.
        report(
            quoted(name) + fault + "; to forbid that: chmod go-w " + printable(shellQuoted(path)));
        break;
    case Distrust::ForeignOwner:
        report(quoted(name) + fault);
        break;
    }
    return status::cannotExecute;
}

/// Nothing when the command cannot be started; the reason has been reported.
std::vector<std::string> commandOf(Shortcut const& shortcut)
{
    auto arguments = splitCommandLine(shortcut.exec);
    if (!arguments) {
        report(
            quoted(shortcut.name) + " has an unfinished Exec line in " + printable(shortcut.file));
        return {};
    }
    auto wanted = arguments->front();
    if (shortcut.entry->runsInTerminal) {
        wanted = "x-terminal-emulator";
        arguments->insert(arguments->begin(), { wanted, "-e" });
    }
    arguments->front() = findProgram(wanted);
    if (arguments->front().empty()) {
        report(quoted(shortcut.name) + " needs the program " + quoted(wanted)
            + ", which is not installed");
        return {};
    }
    return std::move(*arguments);
}

bool enterFolder(Shortcut const& shortcut, Environment const& environment)
{
    if (shortcut.entry && !shortcut.entry->path.empty()) {
        if (chdir(shortcut.entry->path.c_str()) == 0)
            return true;
        report(quoted(shortcut.name) + " cannot start in " + printable(shortcut.entry->path)
            + ", make that folder or correct Path in " + printable(shortcut.file));
        return false;
    }
    // A shortcut also runs when the home folder is missing.
    return chdir(environment.home.c_str()) == 0 || chdir("/") == 0;
}

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

/// Makes the folder with an explanation and a sample in it. Returns whether it is there; one that
/// is there already stays as it is.
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

} // namespace

void report(std::string const& message)
{
    std::fprintf(stderr, "shortcuts: %s\n", message.c_str());
}

int runShortcut(Environment const& environment, std::string const& name)
{
    Catalogue const catalogue(environment);
    auto const* shortcut = catalogue.find(name);
    if (!shortcut)
        return reportMissing(catalogue, name);

    // Before the program is looked up: Exec may name it relative to this folder.
    if (!enterFolder(*shortcut, environment))
        return status::cannotExecute;
    setenv("SHORTCUT_NAME", name.c_str(), 1);
    if (!shortcut->entry)
        return execute(shortcut->target, { shortcut->file });
    auto const command = commandOf(*shortcut);
    return command.empty() ? status::notFound : execute(command.front(), command);
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
