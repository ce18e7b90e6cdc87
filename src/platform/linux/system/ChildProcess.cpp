#include "platform/ChildProcess.h"

#include "platform/MainQueue.h"
#include "platform/linux/system/ChildWatcher.h"
#include "platform/linux/system/Spawn.h"

#include <utility>

namespace quillbar::platform {

void runChild(std::vector<std::string> const& arguments, ChildCompletion completion)
{
    if (auto const child = spawnChild(arguments, ChildOutput {})) {
        childWatcher().watch(*child, std::move(completion));
        return;
    }
    if (completion)
        post([completion = std::move(completion)] { completion(std::nullopt); });
}

} // namespace quillbar::platform
