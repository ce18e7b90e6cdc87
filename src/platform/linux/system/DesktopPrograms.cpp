#include "platform/linux/system/DesktopPrograms.h"

#include "platform/ChildProcess.h"

#include <glib.h>

namespace quillbar::platform {

std::string findProgram(std::string const& name)
{
    auto const* const searchPath = g_getenv("PATH");
    g_auto(GStrv) folders = g_strsplit(searchPath ? searchPath : "", ":", -1);
    for (auto* const* folder = folders; *folder; ++folder) {
        g_autofree char* path = g_build_filename(*folder, name.c_str(), nullptr);
        // A relative one would stand for whatever folder this program was started in.
        if (g_path_is_absolute(path) && g_file_test(path, G_FILE_TEST_IS_EXECUTABLE)
            && g_file_test(path, G_FILE_TEST_IS_REGULAR))
            return path;
    }
    return {};
}

void openWithDesktop(std::string const& address, std::function<void()> onFailure)
{
    // A program of its own: GIO would take half a megabyte and a thread here, and waits for the
    // bus.
    runChild({ findProgram("gio"), "open", address },
        [onFailure = std::move(onFailure)](std::optional<int> exitStatus) {
            if (exitStatus != 0)
                onFailure();
        });
}

} // namespace quillbar::platform
