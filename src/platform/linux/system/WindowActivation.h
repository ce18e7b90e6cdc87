#pragma once

class QString;
class QWindow;

namespace quillbar::platform {

/// Whether the program's windows are those of a Wayland session.
[[nodiscard]] bool isWaylandSession();

/// Brings a shown window before all others and gives it the keyboard, as an answer to what the
/// person did at userTime(). Main thread.
void activateWindow(QWindow& window);

/// What a launcher or the desktop hands over with what the person did, so that a Wayland compositor
/// lets the next activateWindow() succeed. Main thread.
void setActivationToken(QString const& token);

/// The shown window that was last activated, as an answer to what the person did at userTime(), and
/// does not have the keyboard yet. Null if there is none. Main thread.
[[nodiscard]] QWindow* windowAwaitingFocus();

} // namespace quillbar::platform
