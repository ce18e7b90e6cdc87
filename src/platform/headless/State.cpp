#include "platform/headless/State.h"

#include "platform/headless/Headless.h"
#include "platform/headless/Windows.h"

namespace quillbar::platform::headless {

namespace {

// A local static, for the topics' states of other files are made before main() in any order.
std::vector<std::function<void()>>& resets()
{
    static std::vector<std::function<void()>> all;
    return all;
}

std::vector<std::string>& journalLines()
{
    static std::vector<std::string> lines;
    return lines;
}

} // namespace

void addReset(std::function<void()> forget)
{
    resets().push_back(std::move(forget));
}

void note(char const* effect)
{
    journalLines().emplace_back(effect);
}

void reset()
{
    resetWindows();
    for (auto const& forget : resets())
        forget();
    journalLines().clear();
}

std::vector<std::string> const& journal()
{
    return journalLines();
}

} // namespace quillbar::platform::headless
