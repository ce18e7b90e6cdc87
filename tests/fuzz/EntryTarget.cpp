#include "fuzz/Target.h"
#include "shortcuts/CommandLine.h"
#include "shortcuts/DesktopEntry.h"
#include "shortcuts/Names.h"

#include <string>
#include <vector>

namespace quillbar::testing {
namespace {

/// The arguments as an Exec value, quoted by the rules of desktop entries.
std::string commandLine(std::vector<std::string> const& arguments)
{
    std::string text;
    for (auto const& argument : arguments) {
        text += text.empty() ? "\"" : " \"";
        for (auto const character : argument) {
            if (character == '%')
                text += '%';
            else if (std::string_view("\"`$\\").find(character) != std::string_view::npos)
                text += '\\';
            text += character;
        }
        text += '"';
    }
    return text;
}

void requireEveryArgumentArrives(std::string const& argument)
{
    std::vector<std::string> const arguments { "program", argument };
    require(
        shortcuts::splitCommandLine(commandLine(arguments)) == arguments, "every argument arrives");
}

void requireCommandLine(std::string_view exec)
{
    auto const arguments = shortcuts::splitCommandLine(exec);
    if (!arguments)
        return;
    require(!arguments->empty() && !arguments->front().empty(), "a command names a program");
    require(shortcuts::splitCommandLine(commandLine(*arguments)) == arguments,
        "quoted arguments are split as they were");
}

void requireEntry(std::string_view text, std::vector<std::string> const& locales)
{
    auto const entry = shortcuts::parseDesktopEntry(text, locales);
    if (!entry)
        return;
    requireCommandLine(entry->exec);
    for (auto const& action : entry->actions)
        requireCommandLine(action.exec);
}

} // namespace
} // namespace quillbar::testing

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    using namespace quillbar::testing;
    namespace shortcuts = quillbar::shortcuts;
    auto const text = textOf(data, size);
    requireEntry(text, {});
    requireEntry(text, { "de_AT", "de" });
    requireCommandLine(text);
    requireEveryArgumentArrives(std::string(text));
    auto const shown = shortcuts::printable(text);
    require(shown.empty() || shortcuts::isListable(shown), "messages hold no control characters");
    return 0;
}
