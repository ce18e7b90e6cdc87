#include "shortcuts/Commands.h"

#include "shortcuts/Catalogue.h"
#include "shortcuts/Execute.h"
#include "shortcuts/Names.h"
#include "shortcuts/Watch.h"

#include <cstdlib>
#include <unistd.h>
#include <vector>

namespace quillbar::shortcuts {

namespace {

/// Becomes the person's terminal with this command in it; returns like execute().
int executeInTerminal(std::string const& name, std::vector<std::string> const& arguments)
{
    for (std::vector<std::string> command :
        { std::vector<std::string> { "xdg-terminal-exec" }, { "x-terminal-emulator", "-e" } }) {
        command.front() = findProgram(command.front());
        if (command.front().empty())
            continue;
        command.insert(command.end(), arguments.begin(), arguments.end());
        return execute(command.front(), command);
    }
    report(quoted(name)
        + " needs a terminal: neither xdg-terminal-exec nor x-terminal-emulator is installed");
    return status::notFound;
}

/// Returns like execute().
int executeEntry(Shortcut const& shortcut)
{
    auto arguments = splitCommandLine(shortcut.exec);
    if (!arguments) {
        report(
            quoted(shortcut.name) + " has an unfinished Exec line in " + printable(shortcut.file));
        return status::notFound;
    }
    if (shortcut.entry->runsInTerminal)
        return executeInTerminal(shortcut.name, *arguments);
    auto const program = findProgram(arguments->front());
    if (program.empty()) {
        report(quoted(shortcut.name) + " needs the program " + quoted(arguments->front())
            + ", which is not installed");
        return status::notFound;
    }
    arguments->front() = program;
    return execute(program, *arguments);
}

/// Becomes a file that is executed itself; returns like execute().
int executeFile(Shortcut const& shortcut)
{
    auto const wantsTerminal
        = beginningOf(shortcut.target).find("\n# shortcuts: terminal\n") != std::string::npos;
    return wantsTerminal && !hasTerminal() ? executeInTerminal(shortcut.name, { shortcut.target })
                                           : execute(shortcut.target, { shortcut.file });
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

} // namespace

int reportMissing(Catalogue const& catalogue, std::string const& name)
{
    auto const* refused = catalogue.findRefused(name);
    if (!refused) {
        auto const* const nearest = catalogue.findNearest(name);
        report("no shortcut is named " + quoted(name)
            + (nearest ? "; did you mean " + quoted(nearest->name) + "?" : "")
            + "; \"shortcuts list\" shows the names");
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

int runShortcut(Environment const& environment, std::string const& name)
{
    Catalogue const catalogue(environment);
    auto const* shortcut = catalogue.find(name);
    if (!shortcut)
        return reportMissing(catalogue, name);

    tellWatch(shortcut->file);
    // Before the program is looked up: Exec may name it relative to this folder.
    if (!enterFolder(*shortcut, environment))
        return status::cannotExecute;
    setenv("SHORTCUT_NAME", name.c_str(), 1);
    return shortcut->entry ? executeEntry(*shortcut) : executeFile(*shortcut);
}

} // namespace quillbar::shortcuts
