#include "shortcuts/DesktopEntry.h"

#include <algorithm>
#include <map>

namespace quillbar::shortcuts {

namespace {

constexpr std::string_view entryGroup = "Desktop Entry";
constexpr std::string_view actionGroupPrefix = "Desktop Action ";

/// Keys with their locale suffix, to values as they stand in the file.
using Group = std::map<std::string, std::string_view, std::less<>>;

struct Groups {
    std::map<std::string, Group, std::less<>> byName;
    /// The identifiers of the actions, in the order of the file.
    std::vector<std::string> actions;
};

std::string_view trimmed(std::string_view text)
{
    constexpr auto blanks = " \t\r";
    auto const begin = text.find_first_not_of(blanks);
    if (begin == std::string_view::npos)
        return {};
    return text.substr(begin, text.find_last_not_of(blanks) - begin + 1);
}

std::string_view takeLine(std::string_view& text)
{
    auto const end = text.find('\n');
    auto const line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    return trimmed(line);
}

Groups readGroups(std::string_view text)
{
    Groups groups;
    Group* current = nullptr;
    while (!text.empty()) {
        auto const line = takeLine(text);
        if (line.empty() || line.starts_with('#'))
            continue;
        if (line.starts_with('[')) {
            auto const name = line.substr(1, line.find(']') - 1);
            auto const [group, isNew] = groups.byName.try_emplace(std::string(name));
            current = &group->second;
            if (isNew && name.starts_with(actionGroupPrefix))
                groups.actions.emplace_back(name.substr(actionGroupPrefix.size()));
            continue;
        }
        auto const separator = line.find('=');
        if (current && separator != std::string_view::npos) {
            current->insert_or_assign(std::string(trimmed(line.substr(0, separator))),
                trimmed(line.substr(separator + 1)));
        }
    }
    return groups;
}

char unescaped(char letter)
{
    switch (letter) {
    case 's':
        return ' ';
    case 'n':
        return '\n';
    case 't':
        return '\t';
    case 'r':
        return '\r';
    default:
        return letter;
    }
}

std::string unescaped(std::string_view value)
{
    std::string result;
    for (std::size_t index = 0; index < value.size(); ++index) {
        if (value[index] != '\\' || index + 1 == value.size()) {
            result += value[index];
            continue;
        }
        ++index;
        // Escapes of other letters belong to the rules of the value itself.
        if (std::string_view("sntr\\").find(value[index]) == std::string_view::npos)
            result += '\\';
        result += unescaped(value[index]);
    }
    return result;
}

std::string value(Group const& group, std::string_view key)
{
    auto const entry = group.find(key);
    return entry == group.end() ? std::string() : unescaped(entry->second);
}

bool isTrue(Group const& group, std::string_view key)
{
    auto const text = value(group, key);
    return text == "true" || text == "1";
}

std::string localizedName(Group const& group, std::vector<std::string> const& locales)
{
    for (auto const& locale : locales) {
        if (auto name = value(group, "Name[" + locale + "]"); !name.empty())
            return name;
    }
    return value(group, "Name");
}

/// The actions that the entry lists, in its order; all there are when it has no list.
std::vector<std::string> actionIdentifiers(Group const& entry, Groups const& groups)
{
    auto const list = entry.find("Actions");
    if (list == entry.end())
        return groups.actions;

    std::vector<std::string> identifiers;
    auto rest = list->second;
    while (!rest.empty()) {
        auto const end = std::min(rest.find(';'), rest.size());
        identifiers.emplace_back(trimmed(rest.substr(0, end)));
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return identifiers;
}

} // namespace

std::optional<DesktopEntry> parseDesktopEntry(
    std::string_view text, std::vector<std::string> const& locales)
{
    auto const groups = readGroups(text);
    auto const group = groups.byName.find(entryGroup);
    if (group == groups.byName.end() || value(group->second, "Type") != "Application")
        return std::nullopt;

    DesktopEntry entry;
    entry.name = localizedName(group->second, locales);
    entry.exec = value(group->second, "Exec");
    entry.tryExec = value(group->second, "TryExec");
    entry.path = value(group->second, "Path");
    entry.isHidden = isTrue(group->second, "Hidden");
    entry.runsInTerminal = isTrue(group->second, "Terminal");
    for (auto const& identifier : actionIdentifiers(group->second, groups)) {
        auto const action = groups.byName.find(std::string(actionGroupPrefix) + identifier);
        if (action != groups.byName.end())
            entry.actions.push_back(
                { localizedName(action->second, locales), value(action->second, "Exec") });
    }
    return entry;
}

} // namespace quillbar::shortcuts
