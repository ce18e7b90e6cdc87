#pragma once

#include "platform/view/Menu.h"

#include <functional>
#include <memory>
#include <string>

namespace quillbar::platform {

/// What the process tells the program's one controller. Every call comes on the main thread.
class ApplicationDelegate {
public:
    ApplicationDelegate() = default;
    ApplicationDelegate(ApplicationDelegate const&) = delete;
    ApplicationDelegate& operator=(ApplicationDelegate const&) = delete;
    virtual ~ApplicationDelegate() = default;

    /// Called once, when the event loop has started. What the person asks for is asked of the
    /// delegate only after it has returned.
    virtual void applicationDidFinishLaunching() = 0;

    /// The event loop has ended; called once, unless the program is killed.
    virtual void applicationWillTerminate() = 0;

    /// The person started the program again, or the system asks for its main window.
    virtual void openSettings() = 0;

    /// The system asks for the quick-open palette.
    virtual void openPalette() = 0;

    /// The system asks for a run of this shortcut; false if it is not pinned, and nothing runs.
    virtual bool runPinned(std::string const& name) = 0;
};

/// Runs the program until terminate(); returns the process's exit status. `makeDelegate` is called
/// once, from the event loop, and the delegate lives as long as the loop. Where this session
/// already runs the program, that one is told to open its settings, `makeDelegate` is never called
/// and the result is 0.
[[nodiscard]] int runApplication(int argumentCount, char** arguments,
    std::function<std::shared_ptr<ApplicationDelegate>()> const& makeDelegate);

/// Ends the event loop, and those that run inside it; runApplication() then returns 0.
void terminate();

/// Installs the menu that gives the windows their standard editing keys; it is never shown.
void installMainMenu(Menu menu);

/// The picture for the program in title bars and task lists. `iconOfSize` draws it as a square with
/// edges of that many points, whenever a window needs it.
void setApplicationIcon(std::function<Image(double size)> iconOfSize);

/// Brings the program's windows before those of other programs.
void activateIgnoringOtherApps();

} // namespace quillbar::platform
