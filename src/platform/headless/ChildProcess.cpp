#include "platform/ChildProcess.h"

#include "platform/MainQueue.h"
#include "platform/headless/Headless.h"

namespace quillbar::platform {

namespace {

using headless::ChildScript;
using headless::ChildStart;
using headless::record;

ChildScript scriptOf(std::vector<std::string> const& arguments)
{
    auto const script = record().childScripts.find(arguments);
    return script == record().childScripts.end() ? ChildScript {} : script->second;
}

} // namespace

void runChild(std::vector<std::string> const& arguments, ChildCompletion completion)
{
    record().journal.emplace_back("runChild");
    record().startedChildren.push_back({ arguments, record().now });
    if (!completion)
        return;
    auto const script = scriptOf(arguments);
    if (script.start == ChildStart::Fails)
        post([completion = std::move(completion)] { completion(std::nullopt); });
    else
        postDelayed(
            script.duration, [completion = std::move(completion), status = script.exitStatus] {
                completion(status);
            });
}

std::optional<std::string> readChildOutput(
    std::vector<std::string> const& arguments, std::chrono::milliseconds /*limit*/)
{
    record().journal.emplace_back("readChildOutput");
    record().readChildren.push_back(arguments);
    auto const script = scriptOf(arguments);
    return script.start == ChildStart::Fails ? std::nullopt : script.output;
}

} // namespace quillbar::platform
