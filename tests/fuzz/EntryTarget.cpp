#include "fuzz/Target.h"
#include "shortcuts/CommandLine.h"
#include "shortcuts/DesktopEntry.h"
#include "shortcuts/Names.h"

#include <algorithm>
#include <string>
#include <vector>

namespace quillbar::testing {
namespace {

using shortcuts::DesktopEntry;

/// The value as a file would hold it.
std::string escaped(std::string const& value)
{
    std::string result;
    for (auto const character : value) {
        switch (character) {
        case ' ':
            result += "\\s";
            break;
        case '\n':
            result += "\\n";
            break;
        case '\t':
            result += "\\t";
            break;
        case '\r':
            result += "\\r";
            break;
        case '\\':
            result += "\\\\";
            break;
        default:
            result += character;
        }
    }
    return result;
}

std::string line(std::string const& key, std::string const& value)
{
    return key + "=" + escaped(value) + "\n";
}

std::string fileOf(DesktopEntry const& entry)
{
    auto text = "[Desktop Entry]\nType=Application\n" + line("Name", entry.name)
        + line("Exec", entry.exec) + line("TryExec", entry.tryExec) + line("Path", entry.path);
    text += entry.isHidden ? "Hidden=true\n" : "";
    text += entry.runsInTerminal ? "Terminal=true\n" : "";
    auto identifier = 0;
    for (auto const& action : entry.actions) {
        text += "[Desktop Action " + std::to_string(++identifier) + "]\n"
            + line("Name", action.name) + line("Exec", action.exec);
    }
    return text;
}

bool isSame(DesktopEntry const& left, DesktopEntry const& right)
{
    auto const isSameAction
        = [](auto const& a, auto const& b) { return a.name == b.name && a.exec == b.exec; };
    return left.name == right.name && left.exec == right.exec && left.tryExec == right.tryExec
        && left.path == right.path && left.isHidden == right.isHidden
        && left.runsInTerminal == right.runsInTerminal
        && std::equal(left.actions.begin(), left.actions.end(), right.actions.begin(),
            right.actions.end(), isSameAction);
}

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

void requireRoundTrip(DesktopEntry const& entry)
{
    auto const again = shortcuts::parseDesktopEntry(fileOf(entry), {});
    require(again && isSame(*again, entry), "an entry that is written is read as it was");
}

void requireEntry(std::string_view text, std::vector<std::string> const& locales)
{
    auto const entry = shortcuts::parseDesktopEntry(text, locales);
    if (!entry)
        return;
    requireCommandLine(entry->exec);
    for (auto const& action : entry->actions)
        requireCommandLine(action.exec);
    requireRoundTrip(*entry);
}

void requireEveryValueIsRead(std::string const& value)
{
    DesktopEntry entry;
    entry.name = entry.exec = entry.tryExec = entry.path = value;
    entry.actions = { { value, value }, { "", value } };
    requireRoundTrip(entry);
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
    requireEveryValueIsRead(std::string(text));
    requireCommandLine(text);
    requireEveryArgumentArrives(std::string(text));
    auto const shown = shortcuts::printable(text);
    require(shown.empty() || shortcuts::isListable(shown), "messages hold no control characters");
    return 0;
}
