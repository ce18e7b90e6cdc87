#include "platform/KeyMonitor.h"

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

namespace quillbar::platform {

namespace {

struct Monitor {
    KeyDownHandler handler;
    KeyMonitorReach reach;
};

// The list holds its monitors weakly, so that one removed while an event is under way is not shown
// the event any more.
std::vector<std::weak_ptr<Monitor const>>& monitors()
{
    static std::vector<std::weak_ptr<Monitor const>> list;
    return list;
}

void removeExpired()
{
    std::erase_if(monitors(), [](auto const& monitor) { return monitor.expired(); });
}

} // namespace

Token addKeyDownMonitor(KeyDownHandler handler, KeyMonitorReach reach)
{
    bool const wasGrabWanted = isKeyboardGrabWanted();
    auto monitor = std::make_shared<Monitor const>(Monitor { std::move(handler), reach });
    monitors().emplace_back(monitor);
    if (isKeyboardGrabWanted() != wasGrabWanted)
        syncKeyboardGrab();
    return Token([held = std::move(monitor)]() mutable {
        bool const wanted = isKeyboardGrabWanted();
        held.reset();
        removeExpired();
        if (isKeyboardGrabWanted() != wanted)
            syncKeyboardGrab();
    });
}

KeyEventResult runKeyDownMonitors(KeyEvent const& event)
{
    auto const shown = monitors();
    for (auto candidate = shown.rbegin(); candidate != shown.rend(); ++candidate) {
        auto const monitor = candidate->lock();
        if (monitor && monitor->handler(event) == KeyEventResult::Consume)
            return KeyEventResult::Consume;
    }
    return KeyEventResult::Pass;
}

bool isKeyboardGrabWanted()
{
    return std::ranges::any_of(monitors(), [](auto const& candidate) {
        auto const monitor = candidate.lock();
        return monitor && monitor->reach == KeyMonitorReach::GrabKeyboard;
    });
}

} // namespace quillbar::platform
