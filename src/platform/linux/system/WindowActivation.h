#pragma once

class QWindow;

namespace quillbar::platform {

/// Brings a shown window before all others and gives it the keyboard, as an answer to what the
/// person did at userTime(). Main thread.
void activateWindow(QWindow& window);

/// The shown window that was last activated, as an answer to what the person did at userTime(), and
/// does not have the keyboard yet. Null if there is none. Main thread.
[[nodiscard]] QWindow* windowAwaitingFocus();

} // namespace quillbar::platform
