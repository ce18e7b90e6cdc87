#include "contract/Backend.h"
#include "platform/headless/Headless.h"

#include <gtest/gtest.h>

namespace quillbar::test {

namespace headless = platform::headless;

namespace {

Arguments scripted(Arguments const& arguments, headless::ChildScript const& script)
{
    headless::scriptChild(arguments, script);
    return arguments;
}

} // namespace

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

Arguments childExiting(int status)
{
    headless::ChildScript script;
    script.exitStatus = status;
    return scripted({ "/child", "exits", std::to_string(status) }, script);
}

Arguments childThatCannotStart()
{
    headless::ChildScript script;
    script.start = headless::ChildStart::Fails;
    return scripted({ "/no/such/child" }, script);
}

} // namespace quillbar::test
