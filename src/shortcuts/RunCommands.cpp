#include "shortcuts/Commands.h"
#include "shortcuts/Execute.h"
#include "shortcuts/Names.h"
#include "shortcuts/RunLog.h"
#include "shortcuts/Running.h"

#include <glib.h>

namespace quillbar::shortcuts {

int printLog(std::string const& name)
{
    g_autofree char* text = nullptr;
    gsize size = 0;
    if (g_file_get_contents(logPath(name).c_str(), &text, &size, nullptr))
        return print({ text, size });
    report("no run of " + quoted(name) + " is logged; \"shortcuts log\" shows those that are");
    return status::noSuchShortcut;
}

int printLogs()
{
    std::string text;
    for (auto const& head : logHeads())
        text.append(head).append("\n");
    return print(text);
}

int printRunning()
{
    std::string text;
    for (auto const& shortcut : runningShortcuts())
        text += printable(shortcut.name) + " since " + timeText(shortcut.began) + ", process "
            + std::to_string(shortcut.process) + "\n";
    return print(text);
}

int stopShortcut(std::string const& name)
{
    std::string text;
    for (auto const& shortcut : runningShortcuts()) {
        if (shortcut.name == name)
            text += (stopGroup(shortcut) ? "killed " : "stopped ") + printable(name) + ", process "
                + std::to_string(shortcut.process) + "\n";
    }
    if (!text.empty())
        return print(text);
    report(quoted(name) + " does not run; \"shortcuts running\" shows what does");
    return status::noSuchShortcut;
}

} // namespace quillbar::shortcuts
