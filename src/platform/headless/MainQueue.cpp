#include "platform/MainQueue.h"

#include "platform/headless/Headless.h"
#include "platform/headless/State.h"

#include <algorithm>
#include <map>
#include <mutex>

namespace quillbar::platform {

namespace {

using std::chrono::milliseconds;

std::mutex mutex;

struct Queue {
    milliseconds now { 0 };
    // Work of one time keeps the order in which it came.
    std::multimap<milliseconds, std::function<void()>> work;
};
headless::State<Queue> queue;

std::function<void()> takeDue(milliseconds until)
{
    std::lock_guard const lock(mutex);
    auto const next = queue->work.begin();
    if (next == queue->work.end() || next->first > until)
        return {};
    queue->now = next->first;
    auto work = std::move(next->second);
    queue->work.erase(next);
    return work;
}

} // namespace

void post(std::function<void()> work)
{
    std::lock_guard const lock(mutex);
    queue->work.emplace(queue->now, std::move(work));
}

void postDelayed(milliseconds delay, std::function<void()> work)
{
    std::lock_guard const lock(mutex);
    queue->work.emplace(queue->now + delay, std::move(work));
}

namespace headless {

void advance(milliseconds duration)
{
    auto const until = queue->now + duration;
    while (auto const work = takeDue(until))
        work();
    std::lock_guard const lock(mutex);
    // The work may have moved the clock itself.
    queue->now = std::max(queue->now, until);
}

void runPosted()
{
    advance(milliseconds(0));
}

milliseconds now()
{
    return queue->now;
}

bool isWorkWaiting()
{
    std::lock_guard const lock(mutex);
    return !queue->work.empty();
}

} // namespace headless

} // namespace quillbar::platform
