#pragma once

#include <functional>

namespace quillbar::platform {

/// Makes this process known to the desktop as the application, however it was started: desktops
/// take the application's name from that of the systemd unit, which is the bus's for a program that
/// the bus started, and the terminal's for one that was typed there. A process in another unit is
/// moved into a scope of the application's name; without systemd all stays as it is. `done` is
/// called once, through the event loop unless there is nothing to do. Main thread.
void enterApplicationScope(std::function<void()> done);

} // namespace quillbar::platform
