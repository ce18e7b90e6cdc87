#include "shortcuts/RunCommand.h"

#include "shortcuts/Catalogue.h"
#include "shortcuts/Execute.h"
#include "shortcuts/Names.h"
#include "shortcuts/Report.h"

#include <cstdlib>
#include <unistd.h>

namespace quillbar::shortcuts {

namespace {

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
    // A home that is gone is no reason not to run.
    return chdir(environment.home.c_str()) == 0 || chdir("/") == 0;
}

} // namespace

int runShortcut(Environment const& environment, std::string const& name)
{
    Catalogue const catalogue(environment);
    auto const* shortcut = catalogue.find(name);
    if (!shortcut)
        return reportMissing(catalogue, name);

    // First, because the program may be given relative to the folder.
    if (!enterFolder(*shortcut, environment))
        return status::cannotExecute;
    setenv("SHORTCUT_NAME", name.c_str(), 1);
    if (!shortcut->entry)
        return execute(shortcut->target, { shortcut->file });
    auto const command = commandOf(*shortcut);
    return command.empty() ? status::notFound : execute(command.front(), command);
}

} // namespace quillbar::shortcuts
