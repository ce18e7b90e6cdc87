#include "platform/LoginEntry.h"

#include "platform/linux/desktop/ApplicationId.h"
#include "platform/linux/desktop/XdgFolders.h"

#include <glib.h>
#include <optional>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

namespace quillbar::platform {

namespace {

constexpr auto enabledKey = "X-GNOME-Autostart-enabled";

std::string entryFile(std::string const& label)
{
    return configHome() / "autostart" / (label + ".desktop");
}

/// The value of Exec that starts exactly this program, without arguments, whatever its path holds.
/// A path with both `%` and `=` cannot be expressed for every reader; only readers that undo `%%`
/// before they look for the program start it. Key files have escapes of their own on top of this.
std::string execValue(std::string_view program)
{
    // Readers look for the program before they undo `%%`, but in an argument all of them undo it.
    // Other paths go without `env`, which takes one that holds `=` for an assignment.
    auto const needsEnv = program.find('%') != std::string_view::npos
        && program.find('=') == std::string_view::npos;
    std::string quoted = needsEnv ? "/usr/bin/env \"" : "\"";
    for (auto const character : program) {
        if (std::string_view("\"`$\\").find(character) != std::string_view::npos)
            quoted += '\\';
        quoted += character;
        if (character == '%')
            quoted += '%';
    }
    return quoted += '"';
}

/// Takes over what the desktop's own dialog writes to switch an entry off.
void keepOffSwitches(GKeyFile* entry, std::string const& previous)
{
    g_autoptr(GKeyFile) file = g_key_file_new();
    g_key_file_load_from_data(file, previous.data(), previous.size(), G_KEY_FILE_NONE, nullptr);
    auto const* const group = G_KEY_FILE_DESKTOP_GROUP;
    if (g_key_file_has_key(file, group, enabledKey, nullptr)
        && !g_key_file_get_boolean(file, group, enabledKey, nullptr))
        g_key_file_set_boolean(entry, group, enabledKey, FALSE);
    if (g_key_file_get_boolean(file, group, G_KEY_FILE_DESKTOP_KEY_HIDDEN, nullptr))
        g_key_file_set_boolean(entry, group, G_KEY_FILE_DESKTOP_KEY_HIDDEN, TRUE);
}

std::string entryText(LoginEntry const& entry, std::string const& previous)
{
    g_autoptr(GKeyFile) file = g_key_file_new();
    std::pair<char const*, std::string> const lines[] {
        { G_KEY_FILE_DESKTOP_KEY_TYPE, G_KEY_FILE_DESKTOP_TYPE_APPLICATION },
        { G_KEY_FILE_DESKTOP_KEY_NAME, "Quillbar" },
        { G_KEY_FILE_DESKTOP_KEY_COMMENT, "Your shortcuts, one click away" },
        { G_KEY_FILE_DESKTOP_KEY_EXEC, execValue(entry.executablePath) },
        { G_KEY_FILE_DESKTOP_KEY_ICON, applicationId },
        { G_KEY_FILE_DESKTOP_KEY_TERMINAL, "false" },
        { G_KEY_FILE_DESKTOP_KEY_STARTUP_NOTIFY, "false" },
        { "X-Quillbar-Label", entry.label },
        { "X-KDE-autostart-after", "panel" },
        { "X-LXQt-Need-Tray", "true" },
        { enabledKey, "true" },
    };
    for (auto const& [key, value] : lines)
        g_key_file_set_string(file, G_KEY_FILE_DESKTOP_GROUP, key, value.c_str());
    keepOffSwitches(file, previous);
    gsize size = 0;
    g_autofree char* text = g_key_file_to_data(file, &size, nullptr);
    return { text, size };
}

/// What the file says, empty where there is none; nothing when it must be left as it is, because it
/// is no regular file or cannot be read.
std::optional<std::string> replaceableText(std::string const& file)
{
    struct stat status { };
    if (::lstat(file.c_str(), &status) != 0)
        return std::string();
    g_autofree char* text = nullptr;
    gsize size = 0;
    if (!S_ISREG(status.st_mode) || !g_file_get_contents(file.c_str(), &text, &size, nullptr))
        return std::nullopt;
    return std::string(text, size);
}

} // namespace

void writeLoginEntry(LoginEntry const& entry)
{
    auto const file = entryFile(entry.label);
    auto const previous = replaceableText(file);
    if (!previous)
        return;
    auto const text = entryText(entry, *previous);
    if (text == *previous)
        return;
    g_autofree char* folder = g_path_get_dirname(file.c_str());
    g_mkdir_with_parents(folder, S_IRWXU);
    // Written aside and renamed: a session that reads the folder now never sees half an entry.
    g_file_set_contents_full(file.c_str(), text.data(), static_cast<gssize>(text.size()),
        G_FILE_SET_CONTENTS_CONSISTENT, S_IRUSR | S_IWUSR, nullptr);
}

void removeLoginEntry(std::string const& label)
{
    ::unlink(entryFile(label).c_str());
}

} // namespace quillbar::platform
