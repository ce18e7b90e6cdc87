#pragma once

class QWindow;

namespace quillbar::platform {

/// Whether the program's windows are those of a Wayland session.
[[nodiscard]] bool isWaylandSession();

/// Brings a shown window before all others and gives it the keyboard, as an answer to the last
/// UserAction. Main thread.
void activateWindow(QWindow& window);

/// The shown window that was activated as an answer to the last UserAction and does not have the
/// keyboard yet. Null if there is none. Main thread.
[[nodiscard]] QWindow* windowAwaitingFocus();

} // namespace quillbar::platform
