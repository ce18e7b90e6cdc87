#pragma once

class QWindow;

namespace quillbar::platform {

/// Brings a shown window before all others and gives it the keyboard, as an answer to what the
/// person did at userTime(). Main thread.
void activateWindow(QWindow& window);

} // namespace quillbar::platform
