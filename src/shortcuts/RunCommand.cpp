#include "shortcuts/RunCommand.h"

#include "shortcuts/Catalogue.h"
#include "shortcuts/CommandLine.h"
#include "shortcuts/Execute.h"
#include "shortcuts/Names.h"
#include "shortcuts/Report.h"
#include "shortcuts/SearchPath.h"

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
    auto const file = printable(shellQuoted(refused->file));
    switch (refused->reason) {
    case Distrust::None:
        report(quoted(name) + " is not executable; to make it so: chmod +x " + file);
        break;
    case Distrust::WritableByOthers:
        report(quoted(name) + " is not run, others may write to it; to forbid that: chmod go-w "
            + file);
        break;
    case Distrust::ForeignOwner:
        report(quoted(name) + " is not run, " + file + " belongs to another user");
        break;
    }
    return status::cannotExecute;
}

/// Nothing when the command cannot be started; the reason has been reported.
std::vector<std::string> argumentsOf(Shortcut const& shortcut, Environment const& environment)
{
    if (!shortcut.command)
        return { shortcut.file };

    auto arguments = splitCommandLine(shortcut.command->exec);
    if (!arguments) {
        report(
            quoted(shortcut.name) + " has an unfinished Exec line in " + printable(shortcut.file));
        return {};
    }
    auto wanted = arguments->front();
    if (shortcut.command->runsInTerminal) {
        wanted = "x-terminal-emulator";
        arguments->insert(arguments->begin(), { wanted, "-e" });
    }
    arguments->front() = findProgram(wanted, environment.searchPath);
    if (arguments->front().empty()) {
        report(quoted(shortcut.name) + " needs the program " + quoted(wanted)
            + ", which is not installed");
        return {};
    }
    return std::move(*arguments);
}

bool enterFolder(Shortcut const& shortcut, Environment const& environment)
{
    if (shortcut.command && !shortcut.command->folder.empty()) {
        if (chdir(shortcut.command->folder.c_str()) == 0)
            return true;
        report(quoted(shortcut.name) + " cannot start in " + printable(shortcut.command->folder)
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
    auto const arguments = argumentsOf(*shortcut, environment);
    if (arguments.empty())
        return status::notFound;
    setenv("PATH", environment.searchPath.c_str(), 1);
    setenv("SHORTCUT_NAME", name.c_str(), 1);
    return execute(arguments);
}

} // namespace quillbar::shortcuts
