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

using Monitors = std::vector<std::shared_ptr<Monitor const>>;

Monitors& monitors()
{
    static Monitors list;
    return list;
}

/// Changes the list and tells the backend if that makes a difference to the keyboard grab.
void change(std::function<void(Monitors&)> const& edit)
{
    bool const wasGrabWanted = isKeyboardGrabWanted();
    edit(monitors());
    if (isKeyboardGrabWanted() != wasGrabWanted)
        syncKeyboardGrab();
}

} // namespace

Token addKeyDownMonitor(KeyDownHandler handler, KeyMonitorReach reach)
{
    auto const monitor = std::make_shared<Monitor const>(Monitor { std::move(handler), reach });
    change([&](Monitors& list) { list.push_back(monitor); });
    return Token([monitor] { change([&](Monitors& list) { std::erase(list, monitor); }); });
}

KeyEventResult runKeyDownMonitors(KeyEvent const& event)
{
    // A handler may add and remove monitors; one removed meanwhile is not shown the event.
    auto shown = monitors();
    std::ranges::reverse(shown);
    for (auto const& monitor : shown) {
        if (std::ranges::find(monitors(), monitor) != monitors().end()
            && monitor->handler(event) == KeyEventResult::Consume)
            return KeyEventResult::Consume;
    }
    return KeyEventResult::Pass;
}

bool isKeyboardGrabWanted()
{
    return std::ranges::any_of(monitors(),
        [](auto const& monitor) { return monitor->reach == KeyMonitorReach::GrabKeyboard; });
}

} // namespace quillbar::platform
