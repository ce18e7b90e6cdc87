#include "platform/MainQueue.h"

#include "platform/headless/Headless.h"

#include <algorithm>
#include <mutex>

namespace quillbar::platform {

namespace {

using headless::record;
using std::chrono::milliseconds;

// For post(), which any thread may call.
std::mutex mutex;

std::function<void()> takeDue(milliseconds until)
{
    std::lock_guard const lock(mutex);
    auto& waiting = record().waitingWork;
    auto const next = waiting.begin();
    if (next == waiting.end() || next->first > until)
        return {};
    // Another thread may have posted it a moment before the clock moved on.
    record().now = std::max(record().now, next->first);
    auto work = std::move(next->second);
    waiting.erase(next);
    return work;
}

} // namespace

void post(std::function<void()> work)
{
    postDelayed(milliseconds(0), std::move(work));
}

void postDelayed(milliseconds delay, std::function<void()> work)
{
    std::lock_guard const lock(mutex);
    record().waitingWork.emplace(record().now + delay, std::move(work));
}

namespace headless {

void advance(milliseconds duration)
{
    auto const until = record().now + duration;
    while (auto const work = takeDue(until))
        work();
    std::lock_guard const lock(mutex);
    // The work may have called advance() itself.
    record().now = std::max(record().now, until);
}

void runPosted()
{
    advance(milliseconds(0));
}

} // namespace headless

} // namespace quillbar::platform
