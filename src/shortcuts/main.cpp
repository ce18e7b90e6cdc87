#include "shortcuts/Catalogue.h"
#include "shortcuts/Commands.h"
#include "shortcuts/Execute.h"
#include "shortcuts/Names.h"
#include "shortcuts/Watch.h"

#include <cstdio>
#include <string>
#include <string_view>

namespace quillbar::shortcuts {

namespace {

constexpr std::string_view usageText = R"(Usage:
  shortcuts list             print the names of your shortcuts, one a line
  shortcuts run NAME         run one, wait for it and exit with its status
  shortcuts log [NAME]       print what the last run without a terminal printed
                             and how it ended, or a line for each such run
  shortcuts running          print which shortcuts run without a terminal
  shortcuts stop NAME        end one that runs, with what it has started
  shortcuts open [ADDRESS]   show the folder where your shortcuts lie
  shortcuts help             print this text
  shortcuts version          print the version
)";

int printNames(Environment const& environment)
{
    Catalogue const catalogue(environment);
    for (auto const& notice : catalogue.notices())
        report(notice);
    for (auto const& [file, verdict] : catalogue.refused()) {
        if (verdict.reason == Distrust::None && beginningOf(file).starts_with("#!"))
            report("ignoring a script that is not executable; to make it so: chmod +x "
                + printable(shellQuoted(file)));
    }
    std::string text;
    for (auto const& shortcut : catalogue.shortcuts())
        text.append(shortcut.name).append("\n");
    auto const result = print(text);
    return result != status::success || catalogue.isComplete() ? result : status::incompleteList;
}

int reportUsage()
{
    std::fwrite(usageText.data(), 1, usageText.size(), stderr);
    return status::usage;
}

int perform(int argumentCount, char const* const* arguments)
{
    if (argumentCount < 2)
        return reportUsage();
    std::string_view const command = arguments[1];

    if (command == "run" && argumentCount == 3) {
        if (!hasTerminal())
            continueWatched(arguments[2]);
        return runShortcut(prepareEnvironment(), arguments[2]);
    }
    if (command == "open" && argumentCount <= 3) {
        // Any web page may open an address, so it shows something at most.
        auto const name = argumentCount == 3 ? shortcutToOpen(arguments[2]) : std::nullopt;
        return name ? openLog(prepareEnvironment(), *name)
                    : openShortcutsFolder(prepareEnvironment());
    }
    if (command == "log" && argumentCount <= 3)
        return argumentCount == 3 ? printLog(arguments[2]) : printLogs();
    if (command == "stop" && argumentCount == 3)
        return stopShortcut(arguments[2]);
    if (argumentCount > 2)
        return reportUsage();
    if (command == "list")
        return printNames(prepareEnvironment());
    if (command == "running")
        return printRunning();
    if (command == "help" || command == "--help" || command == "-h")
        return print(usageText);
    if (command == "version" || command == "--version")
        return print("shortcuts (Quillbar) " QUILLBAR_VERSION "\n");
    return reportUsage();
}

} // namespace

} // namespace quillbar::shortcuts

int main(int argumentCount, char** arguments)
{
    return quillbar::shortcuts::perform(argumentCount, arguments);
}
