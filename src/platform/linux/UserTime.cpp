#include "platform/linux/UserTime.h"

namespace quillbar::platform {

namespace {

std::uint32_t lastUserTime = 0;

} // namespace

std::uint32_t userTime()
{
    return lastUserTime;
}

void setUserTime(std::uint32_t serverTime)
{
    lastUserTime = serverTime;
}

} // namespace quillbar::platform
