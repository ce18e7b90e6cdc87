#include "contract/Backend.h"
#include "platform/headless/Headless.h"

namespace quillbar::test {

void settle() { }

void runUntil(std::function<bool()> const& isDone)
{
    while (!isDone())
        platform::headless::advance(std::chrono::milliseconds(1));
}

void closeAlert() { }

} // namespace quillbar::test
