#pragma once

#include <cstdint>

namespace quillbar::platform {

/// The X server's time, in milliseconds, of the click or key press that the program last acted on;
/// 0 before the first. Window managers that guard against stolen focus want it when a window is
/// raised. Main thread.
[[nodiscard]] std::uint32_t userTime();
void setUserTime(std::uint32_t serverTime);

} // namespace quillbar::platform
