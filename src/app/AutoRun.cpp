#include "app/AutoRun.h"

#include "platform/MainQueue.h"
#include "services/ShortcutsService.h"

namespace quillbar {

void scheduleAutoRun(Config const& config)
{
    using std::chrono::milliseconds;
    constexpr milliseconds spacing { 2000 };
    milliseconds delay { 1500 };
    for (auto const& name : config.pinned) {
        if (!config.launchesAtLogin(name))
            continue;
        platform::postDelayed(delay, [name] { ShortcutsService::run(name); });
        delay += spacing;
    }
}

} // namespace quillbar
