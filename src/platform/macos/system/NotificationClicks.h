#pragma once

namespace quillbar::platform {

/// Shows notifications while the program is active, too, and opens the address of one that is
/// clicked. To be called before the program has finished launching, as a click may have started it.
/// Main thread.
void followNotifications();

} // namespace quillbar::platform
