#include "platform/linux/system/AutostartEntry.h"

#include "platform/linux/system/ApplicationId.h"
#include "platform/linux/system/KeyFile.h"

namespace quillbar::platform {

namespace {

struct OffSwitches {
    bool isHidden = false;
    bool isDisabled = false;
};

OffSwitches offSwitches(std::string_view entry)
{
    OffSwitches result;
    for (auto const& line : parseKeyFile(entry)) {
        if (line.group != "Desktop Entry")
            continue;
        if (line.key == "Hidden")
            result.isHidden = line.value == "true";
        else if (line.key == "X-GNOME-Autostart-enabled")
            result.isDisabled = line.value == "false";
    }
    return result;
}

std::string quotedArgument(std::string_view argument)
{
    std::string quoted = "\"";
    for (auto const character : argument) {
        if (std::string_view("\"`$\\").find(character) != std::string_view::npos)
            quoted += '\\';
        quoted += character;
        if (character == '%')
            quoted += '%';
    }
    return quoted += '"';
}

std::string keyFileString(std::string_view text)
{
    std::string escaped;
    for (auto const character : text) {
        switch (character) {
        case '\\':
            escaped += "\\\\";
            break;
        case '\n':
            escaped += "\\n";
            break;
        case '\t':
            escaped += "\\t";
            break;
        case '\r':
            escaped += "\\r";
            break;
        default:
            escaped += character;
        }
    }
    return escaped;
}

} // namespace

std::string execValue(std::string_view program)
{
    // Readers look for the program before they undo `%%`, but in an argument all of them undo it.
    // Other paths go without `env`, which takes one that holds `=` for an assignment.
    bool const needsEnv = program.find('%') != std::string_view::npos
        && program.find('=') == std::string_view::npos;
    return keyFileString((needsEnv ? "/usr/bin/env " : "") + quotedArgument(program));
}

std::string autostartEntry(
    LoginEntry const& entry, LoginSwitch loginSwitch, std::string_view previous)
{
    auto const switches = loginSwitch == LoginSwitch::Keep ? offSwitches(previous) : OffSwitches {};
    std::string text = "[Desktop Entry]\n"
                       "Type=Application\n"
                       "Name=Quillbar\n"
                       "Comment=Your shortcuts, one click away\n";
    text += "Exec=" + execValue(entry.executablePath) + '\n';
    text += "Icon=" + std::string(applicationId) + '\n';
    text += "Terminal=false\n"
            "StartupNotify=false\n";
    text += "X-Quillbar-Label=" + keyFileString(entry.label) + '\n';
    text += "X-KDE-autostart-after=panel\n"
            "X-LXQt-Need-Tray=true\n";
    text += switches.isDisabled ? "X-GNOME-Autostart-enabled=false\n"
                                : "X-GNOME-Autostart-enabled=true\n";
    if (switches.isHidden)
        text += "Hidden=true\n";
    return text;
}

} // namespace quillbar::platform
