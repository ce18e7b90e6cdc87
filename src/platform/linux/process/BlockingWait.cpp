#include "platform/linux/process/BlockingWait.h"

#include <utility>

namespace quillbar::platform {

namespace {

std::function<void(bool)>& currentHandler()
{
    static std::function<void(bool)> handler;
    return handler;
}

void tell(bool isWaiting)
{
    if (auto const& handler = currentHandler())
        handler(isWaiting);
}

} // namespace

BlockingWait::BlockingWait()
{
    tell(true);
}

BlockingWait::~BlockingWait()
{
    tell(false);
}

void setBlockingWaitHandler(std::function<void(bool)> handler)
{
    currentHandler() = std::move(handler);
}

} // namespace quillbar::platform
