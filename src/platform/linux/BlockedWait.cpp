#include "platform/linux/BlockedWait.h"

#include <utility>

namespace quillbar::platform {

namespace {

BlockedService& current()
{
    static BlockedService service;
    return service;
}

} // namespace

void setBlockedService(BlockedService service)
{
    current() = std::move(service);
}

BlockedService const& blockedService()
{
    return current();
}

} // namespace quillbar::platform
