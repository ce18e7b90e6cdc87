#include "platform/MainQueue.h"

#include "platform/linux/process/FileDescriptor.h"

#include <QCoreApplication>
#include <QSocketNotifier>
#include <QTimer>

#include <algorithm>
#include <deque>
#include <limits>
#include <memory>
#include <mutex>
#include <sys/eventfd.h>

namespace quillbar::platform {

namespace {

class MainQueue {
public:
    void attach()
    {
        notifier_ = std::make_unique<QSocketNotifier>(waiting_.get(), QSocketNotifier::Read);
        QObject::connect(notifier_.get(), &QSocketNotifier::activated, [this] { runOne(); });
        timers_ = std::make_unique<QObject>();
    }

    /// Destroys what waits: it may hold windows, which must not outlive the application object.
    void detach()
    {
        std::deque<std::function<void()>> works;
        {
            std::lock_guard const lock(mutex_);
            works.swap(works_);
        }
        notifier_.reset();
        timers_.reset();
    }

    void add(std::function<void()> work)
    {
        {
            std::lock_guard const lock(mutex_);
            works_.push_back(std::move(work));
        }
        ::eventfd_write(waiting_.get(), 1);
    }

    void addDelayed(std::chrono::milliseconds delay, std::function<void()> work)
    {
        auto* const timer = new QTimer(timers_.get());
        timer->setSingleShot(true);
        timer->setTimerType(Qt::PreciseTimer);
        QObject::connect(timer, &QTimer::timeout, timer, [timer, work = std::move(work)] {
            timer->deleteLater();
            work();
        });
        constexpr std::chrono::milliseconds longest { std::numeric_limits<int>::max() };
        timer->start(std::clamp(delay, std::chrono::milliseconds::zero(), longest));
    }

private:
    // One piece of work for each turn, so that work which runs an event loop of its own, for a
    // modal window say, does not hold up what was posted after it.
    void runOne()
    {
        eventfd_t count = 0;
        ::eventfd_read(waiting_.get(), &count);
        std::function<void()> work;
        {
            std::lock_guard const lock(mutex_);
            if (works_.empty())
                return;
            work = std::move(works_.front());
            works_.pop_front();
        }
        work();
    }

    std::mutex mutex_;
    std::deque<std::function<void()>> works_;
    // Counts the works.
    FileDescriptor waiting_ { ::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK | EFD_SEMAPHORE) };
    std::unique_ptr<QSocketNotifier> notifier_;
    std::unique_ptr<QObject> timers_;
};

MainQueue& mainQueue()
{
    // Never destroyed: other threads may post until the process has gone.
    static auto& queue = *new MainQueue;
    return queue;
}

void attachMainQueue()
{
    mainQueue().attach();
    qAddPostRoutine([] { mainQueue().detach(); });
}

Q_COREAPP_STARTUP_FUNCTION(attachMainQueue)

} // namespace

void post(std::function<void()> work)
{
    mainQueue().add(std::move(work));
}

void postDelayed(std::chrono::milliseconds delay, std::function<void()> work)
{
    mainQueue().addDelayed(delay, std::move(work));
}

} // namespace quillbar::platform
