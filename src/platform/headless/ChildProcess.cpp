#include "platform/ChildProcess.h"

#include "platform/MainQueue.h"
#include "platform/headless/Headless.h"
#include "platform/headless/State.h"

#include <map>

namespace quillbar::platform {

namespace {

using headless::ChildScript;
using headless::ChildStart;

struct Children {
    std::map<std::vector<std::string>, ChildScript> scripts;
    std::vector<headless::StartedChild> started;
    std::vector<std::vector<std::string>> read;
};
headless::State<Children> children;

ChildScript scriptOf(std::vector<std::string> const& arguments)
{
    auto const script = children->scripts.find(arguments);
    return script == children->scripts.end() ? ChildScript {} : script->second;
}

} // namespace

void runChild(std::vector<std::string> const& arguments, ChildCompletion completion)
{
    headless::note("runChild");
    children->started.push_back({ arguments, headless::now() });
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
    headless::note("readChildOutput");
    children->read.push_back(arguments);
    auto const script = scriptOf(arguments);
    return script.start == ChildStart::Fails ? std::nullopt : script.output;
}

namespace headless {

void scriptChild(std::vector<std::string> arguments, ChildScript script)
{
    children->scripts.insert_or_assign(std::move(arguments), std::move(script));
}

std::vector<StartedChild> const& startedChildren()
{
    return children->started;
}

std::vector<std::vector<std::string>> const& readChildren()
{
    return children->read;
}

} // namespace headless

} // namespace quillbar::platform
