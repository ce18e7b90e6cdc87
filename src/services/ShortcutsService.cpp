#include "services/ShortcutsService.h"

#include "platform/ChildProcess.h"
#include "services/ShortcutNames.h"

#include <utility>

namespace quillbar {

namespace {

constexpr auto const* tool = QUILLBAR_SHORTCUTS_TOOL;

} // namespace

std::vector<std::string> ShortcutsService::list()
{
    return listIfAnswered().value_or(std::vector<std::string> {});
}

std::optional<std::vector<std::string>> ShortcutsService::listIfAnswered()
{
    auto const output = platform::readChildOutput({ tool, "list" });
    if (!output)
        return std::nullopt;
    return shortcutNames(*output);
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
