#include "contract/Backend.h"
#include "platform/headless/Headless.h"

#include <gtest/gtest.h>

namespace quillbar::test {

namespace headless = platform::headless;

void settle() { }

void waitUntil(std::function<bool()> const& isDone)
{
    while (!isDone()) {
        ASSERT_TRUE(headless::isWorkWaiting()) << "nothing is left that could happen";
        headless::advance(std::chrono::milliseconds(1));
    }
}

std::chrono::milliseconds now()
{
    return headless::now();
}

} // namespace quillbar::test
