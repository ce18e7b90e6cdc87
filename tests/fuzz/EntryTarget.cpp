#include "fuzz/Target.h"
#include "services/ShortcutNames.h"
#include "shortcuts/DesktopEntry.h"
#include "shortcuts/Names.h"

#include <glib.h>
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
    if (argument.find('\0') != std::string::npos)
        return;
    std::vector<std::string> const arguments { "program", argument };
    require(
        shortcuts::splitCommandLine(commandLine(arguments)) == arguments, "every argument arrives");
}

void requireCommandLine(std::string const& exec)
{
    auto const arguments = shortcuts::splitCommandLine(exec);
    if (!arguments)
        return;
    require(!arguments->empty() && !arguments->front().empty(), "a command names a program");
    require(shortcuts::splitCommandLine(commandLine(*arguments)) == arguments,
        "quoted arguments are split as they were");
}

void requireEntry(std::string const& text)
{
    auto const entry = shortcuts::parseDesktopEntry(text);
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
    // The library warns of values with two faults, each time.
    g_log_set_default_handler([](auto...) {}, nullptr);
    std::string const text(textOf(data, size));
    requireEntry(text);
    requireCommandLine(text.c_str());
    requireEveryArgumentArrives(text);
    require(!shortcuts::isListable(text)
            || quillbar::shortcutNames(text + "\n") == std::vector { text },
        "what is listed arrives unchanged");
    auto const shown = shortcuts::printable(text);
    require(shortcuts::printable(shown) == shown, "messages hold no control characters");
    return 0;
}
