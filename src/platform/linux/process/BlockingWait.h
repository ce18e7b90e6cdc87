#pragma once

#include <functional>

namespace quillbar::platform {

/// The main thread answers no event as long as one lives.
class BlockingWait {
public:
    BlockingWait();
    BlockingWait(BlockingWait const&) = delete;
    BlockingWait& operator=(BlockingWait const&) = delete;
    ~BlockingWait();
};

/// Calls `handler` when a wait begins (true) and when it has ended (false), in place of the handler
/// before. Main thread.
void setBlockingWaitHandler(std::function<void(bool isWaiting)> handler);

} // namespace quillbar::platform
