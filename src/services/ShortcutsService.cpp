#include "services/ShortcutsService.h"

#include "platform/ChildProcess.h"
#include "services/ShortcutNames.h"

#include <utility>

namespace quillbar {

namespace {

constexpr auto const* tool = QUILLBAR_SHORTCUTS_TOOL;

} // namespace

std::optional<std::vector<std::string>> ShortcutsService::list()
{
    auto const output = platform::readChildOutput({ tool, "list" });
    return output ? std::optional(shortcutNames(*output)) : std::nullopt;
}

void ShortcutsService::run(std::string const& name, std::function<void(bool succeeded)> completion)
{
    platform::ChildCompletion onExit;
    if (completion)
        onExit = [completion = std::move(completion)](
                     std::optional<int> exitStatus) { completion(exitStatus == 0); };
    platform::runChild({ tool, "run", name }, std::move(onExit));
}

} // namespace quillbar
