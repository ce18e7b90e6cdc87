#pragma once

#include <atomic>

namespace quillbar::platform {

/// The main thread answers no event as long as one lives. One at a time.
class BlockingWait {
public:
    BlockingWait() { isOngoing_ = true; }
    BlockingWait(BlockingWait const&) = delete;
    BlockingWait& operator=(BlockingWait const&) = delete;
    ~BlockingWait() { isOngoing_ = false; }

    /// Any thread.
    [[nodiscard]] static bool isOngoing() { return isOngoing_; }

private:
    static inline std::atomic<bool> isOngoing_ = false;
};

} // namespace quillbar::platform
