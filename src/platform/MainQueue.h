#pragma once

#include <chrono>
#include <functional>

namespace quillbar::platform {

/// Queues `work` for the main thread. Work runs in the order of posting, and goes on while earlier
/// work runs an event loop of its own, as a modal question or an open menu does. Any thread.
void post(std::function<void()> work);

/// Runs `work` on the main thread once, no sooner than `delay` from now. Main thread. A delay of
/// zero goes through the event loop too. Work still waiting when the program ends is dropped.
void postDelayed(std::chrono::milliseconds delay, std::function<void()> work);

} // namespace quillbar::platform
