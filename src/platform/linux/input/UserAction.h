#pragma once

#include "platform/KeyModifiers.h"

#include <QPointer>
#include <QString>
#include <QWindow>

#include <cstdint>

namespace quillbar::platform {

/// What the person did last that the program may answer with a window: a hotkey, a click in the
/// tray, a launch.
struct UserAction {
    /// The X server's time in milliseconds; 0 where it is unknown. Window managers that guard
    /// against stolen focus want it when a window is raised.
    std::uint32_t time = 0;
    /// From a launcher or the desktop: a Wayland compositor gives the focus to one window for it.
    QString activationToken;
    /// The modifiers that are still down from the hotkey that opened a window. What is typed into
    /// it before they come up is meant without them.
    KeyModifiers heldModifiers = 0;
    /// The window that was shown last in answer; may be null.
    QPointer<QWindow> shownWindow;
    /// The window that was activated in answer and has not lost the focus since; may be null.
    QPointer<QWindow> activatedWindow;
};

/// Main thread.
[[nodiscard]] UserAction& lastUserAction();

/// Another action begins, which no window answers yet. Main thread.
void noteUserAction(std::uint32_t time);

} // namespace quillbar::platform
