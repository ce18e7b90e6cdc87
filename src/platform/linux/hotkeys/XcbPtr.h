#pragma once

#include <cstdlib>
#include <memory>

namespace quillbar::platform {

struct XcbDeleter {
    void operator()(void* reply) const { std::free(reply); }
};

/// A reply, event or error that xcb allocated.
template <typename Reply> using XcbPtr = std::unique_ptr<Reply, XcbDeleter>;

} // namespace quillbar::platform
