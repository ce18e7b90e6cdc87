#include "platform/linux/system/ChildWatcher.h"

#include "platform/linux/system/Spawn.h"

#include <chrono>
#include <utility>
#include <vector>

namespace quillbar::platform {

void ChildWatcher::DeleteLater::operator()(QSocketNotifier* notifier) const
{
    notifier->setEnabled(false);
    notifier->deleteLater();
}

ChildWatcher::ChildWatcher()
{
    sweeper_.setInterval(std::chrono::milliseconds(100));
    QObject::connect(&sweeper_, &QTimer::timeout, [this] { sweep(); });
}

void ChildWatcher::watch(pid_t child, ChildCompletion completion)
{
    auto& watch = watches_[child];
    watch.completion = std::move(completion);
    if (!listen(child, watch))
        sweeper_.start();
}

void ChildWatcher::forgetAll()
{
    sweeper_.stop();
    watches_.clear();
}

bool ChildWatcher::listen(pid_t child, Watch& watch)
{
    watch.descriptor = openChild(child);
    if (!watch.descriptor)
        return false;
    watch.notifier.reset(new QSocketNotifier(watch.descriptor.get(), QSocketNotifier::Read));
    QObject::connect(watch.notifier.get(), &QSocketNotifier::activated, watch.notifier.get(),
        [this, child] { collect(child); });
    return true;
}

void ChildWatcher::collect(pid_t child)
{
    auto const exit = reapChild(child);
    if (!exit)
        return;
    auto const found = watches_.find(child);
    auto const completion = std::move(found->second.completion);
    watches_.erase(found);
    if (completion)
        completion(exit->status);
}

void ChildWatcher::sweep()
{
    std::vector<pid_t> unheard;
    for (auto const& [child, watch] : watches_) {
        if (!watch.descriptor)
            unheard.push_back(child);
    }
    bool isWatchingAll = true;
    for (auto const child : unheard) {
        collect(child);
        if (auto const found = watches_.find(child); found != watches_.end())
            isWatchingAll = listen(child, found->second) && isWatchingAll;
    }
    if (isWatchingAll)
        sweeper_.stop();
}

ChildWatcher& childWatcher()
{
    // Never destroyed: its notifiers must not outlive the application object, which
    // runApplication() sees to, and not be touched after it.
    static auto& watcher = *new ChildWatcher;
    return watcher;
}

} // namespace quillbar::platform
