#include "platform/Workspace.h"

#include "platform/Notifications.h"
#include "platform/linux/system/DesktopPrograms.h"
#include "platform/linux/system/XdgFolders.h"

#include <glib.h>
#include <sys/stat.h>

namespace quillbar::platform {

namespace {

void tellFailure(std::string const& address)
{
    postNotification({ "open", "Quillbar", "No program could open “" + address + "”.",
        NotificationSound::None });
}

void openShortcutsFolder()
{
    auto const folder = dataHome() / "shortcuts";
    // What lies in it is run: nobody else may look in or write there.
    g_mkdir_with_parents(folder.c_str(), S_IRWXU);
    openWithDesktop(folder.string(), [folder] { tellFailure(folder.string()); });
}

} // namespace

void openAddress(std::string const& address)
{
    auto const* const scheme = g_uri_peek_scheme(address.c_str());
    // Without a scheme it would be a file name or even an option to the opener.
    if (!scheme)
        return;
    auto const isShortcuts = std::string_view(scheme) == "shortcuts";
    openWithDesktop(address, [address, isShortcuts] {
        if (isShortcuts)
            openShortcutsFolder();
        else
            tellFailure(address);
    });
}

} // namespace quillbar::platform
