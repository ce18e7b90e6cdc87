#include "shortcuts/DesktopEntry.h"

#include <glib.h>
#include <set>
#include <string_view>

namespace quillbar::shortcuts {

namespace {

constexpr std::string_view actionGroupPrefix = "Desktop Action ";

std::string takeText(char* text)
{
    g_autofree char* owned = text;
    return owned ? owned : "";
}

/// A key file and one group of it.
class Group {
public:
    Group(GKeyFile* file, std::string name)
        : file_(file)
        , name_(std::move(name))
    {
    }

    [[nodiscard]] bool exists() const { return g_key_file_has_group(file_, name_.c_str()) != 0; }
    [[nodiscard]] std::string text(char const* key) const
    {
        return takeText(g_key_file_get_string(file_, name_.c_str(), key, nullptr));
    }
    [[nodiscard]] std::string translated(char const* key) const
    {
        return takeText(g_key_file_get_locale_string(file_, name_.c_str(), key, nullptr, nullptr));
    }
    [[nodiscard]] bool isTrue(char const* key) const
    {
        return g_key_file_get_boolean(file_, name_.c_str(), key, nullptr) != 0;
    }

private:
    GKeyFile* file_;
    std::string name_;
};

/// The actions that the entry lists, in its order; all there are when it has no list.
std::vector<std::string> actionGroups(GKeyFile* file)
{
    std::vector<std::string> groups;
    if (g_auto(GStrv) listed = g_key_file_get_string_list(
            file, G_KEY_FILE_DESKTOP_GROUP, G_KEY_FILE_DESKTOP_KEY_ACTIONS, nullptr, nullptr)) {
        for (auto* const* identifier = listed; *identifier; ++identifier)
            groups.push_back(std::string(actionGroupPrefix) + *identifier);
        return groups;
    }
    g_auto(GStrv) all = g_key_file_get_groups(file, nullptr);
    for (auto* const* group = all; *group; ++group) {
        if (std::string_view(*group).starts_with(actionGroupPrefix))
            groups.emplace_back(*group);
    }
    return groups;
}

std::string withoutFieldCodes(std::string_view exec)
{
    std::string result;
    for (std::size_t index = 0; index < exec.size(); ++index) {
        if (exec[index] != '%' || index + 1 == exec.size())
            result += exec[index];
        else if (exec[++index] == '%')
            result += '%';
    }
    return result;
}

} // namespace

std::optional<DesktopEntry> parseDesktopEntry(std::string const& text)
{
    g_autoptr(GKeyFile) file = g_key_file_new();
    // The library takes a NUL for the end of a value: something else than what is written would
    // run.
    if (text.find('\0') != std::string::npos
        || !g_key_file_load_from_data(file, text.data(), text.size(), G_KEY_FILE_NONE, nullptr))
        return std::nullopt;
    Group const group(file, G_KEY_FILE_DESKTOP_GROUP);
    if (group.text(G_KEY_FILE_DESKTOP_KEY_TYPE) != G_KEY_FILE_DESKTOP_TYPE_APPLICATION)
        return std::nullopt;

    DesktopEntry entry;
    entry.name = group.translated(G_KEY_FILE_DESKTOP_KEY_NAME);
    entry.exec = group.text(G_KEY_FILE_DESKTOP_KEY_EXEC);
    entry.tryExec = group.text(G_KEY_FILE_DESKTOP_KEY_TRY_EXEC);
    entry.path = group.text(G_KEY_FILE_DESKTOP_KEY_PATH);
    entry.isHidden = group.isTrue(G_KEY_FILE_DESKTOP_KEY_HIDDEN);
    entry.runsInTerminal = group.isTrue(G_KEY_FILE_DESKTOP_KEY_TERMINAL);
    std::set<std::string> known;
    for (auto const& name : actionGroups(file)) {
        Group const action(file, name);
        if (action.exists() && known.insert(name).second)
            entry.actions.push_back({ action.translated(G_KEY_FILE_DESKTOP_KEY_NAME),
                action.text(G_KEY_FILE_DESKTOP_KEY_EXEC) });
    }
    return entry;
}

std::optional<std::vector<std::string>> splitCommandLine(std::string const& exec)
{
    g_auto(GStrv) arguments = nullptr;
    if (!g_shell_parse_argv(withoutFieldCodes(exec).c_str(), nullptr, &arguments, nullptr)
        || !**arguments)
        return std::nullopt;
    return std::vector<std::string>(arguments, arguments + g_strv_length(arguments));
}

} // namespace quillbar::shortcuts
