#pragma once

#include <functional>

namespace quillbar::platform {

/// What cannot stand still while the main thread waits for a child: `serve` is called when a wait
/// begins and whenever the descriptor can be read meanwhile.
struct BlockedService {
    /// -1 where there is nothing to serve.
    int descriptor = -1;
    std::function<void()> serve;
};

/// Replaces the one service. Main thread.
void setBlockedService(BlockedService service);
[[nodiscard]] BlockedService const& blockedService();

} // namespace quillbar::platform
