#include "platform/MainQueue.h"

#import <CoreFoundation/CoreFoundation.h>
#import <Foundation/Foundation.h>

#include <algorithm>
#include <deque>
#include <mutex>
#include <utility>

namespace quillbar::platform {

namespace {

/// Work for the run loop of the main thread, in the modes that menus and alerts run it in, too. The
/// main dispatch queue would carry out nothing as long as one of its blocks runs an event loop.
class MainQueue {
public:
    void add(std::function<void()> work)
    {
        std::lock_guard const lock(mutex_);
        works_.push_back(std::move(work));
        if (works_.size() == 1)
            schedule();
    }

private:
    // The run loop takes all of its blocks at once: one that waits behind a block with an event
    // loop of its own is not carried out in there. So there is never more than one.
    void schedule()
    {
        CFRunLoopPerformBlock(CFRunLoopGetMain(), kCFRunLoopCommonModes, ^{ runOne(); });
        CFRunLoopWakeUp(CFRunLoopGetMain());
    }

    void runOne()
    {
        @autoreleasepool {
            std::function<void()> work;
            {
                std::lock_guard const lock(mutex_);
                work = std::move(works_.front());
                works_.pop_front();
                if (!works_.empty())
                    schedule();
            }
            work();
        }
    }

    std::mutex mutex_;
    std::deque<std::function<void()>> works_;
};

MainQueue& mainQueue()
{
    // Never destroyed: other threads may post until the process has gone.
    static auto& queue = *new MainQueue;
    return queue;
}

} // namespace

void post(std::function<void()> work)
{
    mainQueue().add(std::move(work));
}

void postDelayed(std::chrono::milliseconds delay, std::function<void()> work)
{
    auto const seconds = std::chrono::duration<double>(delay).count();
    NSTimer* const timer = [NSTimer timerWithTimeInterval:std::max(seconds, 0.0)
                                                  repeats:NO
                                                    block:^(NSTimer*) { work(); }];
    [NSRunLoop.mainRunLoop addTimer:timer forMode:NSRunLoopCommonModes];
}

} // namespace quillbar::platform
