// What tests/contract/main_queue_threads.cpp needs, without the rest of the backend.
#include "contract/Backend.h"
#include "linux/Support.h"

namespace quillbar::test {

void runUntil(std::function<bool()> const& isDone)
{
    testing::startApplication();
    testing::runUntil(isDone);
}

} // namespace quillbar::test
