#include "shortcuts/Catalogue.h"
#include "shortcuts/Commands.h"

#include <cstdio>
#include <string>
#include <string_view>

namespace quillbar::shortcuts {

namespace {

constexpr std::string_view usageText = R"(Usage:
  shortcuts list             print the names of your shortcuts, one a line
  shortcuts run NAME         run one, wait for it and exit with its status
  shortcuts open [ADDRESS]   show the folder where your shortcuts lie
  shortcuts help             print this text
  shortcuts version          print the version
)";

int print(std::string_view text)
{
    auto const isWritten = std::fwrite(text.data(), 1, text.size(), stdout) == text.size();
    if (isWritten && std::fflush(stdout) == 0)
        return status::success;
    report("cannot write the output");
    return status::outputFailed;
}

int printNames(Environment const& environment)
{
    Catalogue const catalogue(environment);
    for (auto const& notice : catalogue.notices())
        report(notice);
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

    if (command == "run" && argumentCount == 3)
        return runShortcut(prepareEnvironment(), arguments[2]);
    // The address is ignored: any web page may open one.
    if (command == "open" && argumentCount <= 3)
        return openShortcutsFolder(prepareEnvironment());
    if (argumentCount > 2)
        return reportUsage();
    if (command == "list")
        return printNames(prepareEnvironment());
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
