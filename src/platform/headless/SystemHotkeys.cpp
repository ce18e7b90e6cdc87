#include "platform/SystemHotkeys.h"

#include "platform/headless/Headless.h"
#include "platform/headless/State.h"

#include <algorithm>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <utility>

namespace quillbar::platform {

namespace {

using headless::RegisteredHotkey;
using Combination = std::pair<std::uint32_t, std::uint32_t>;

struct Hotkeys {
    std::set<Combination> refused;
    std::map<KeyCombination, HotkeyObstacle> obstacles;
    std::map<std::uint64_t, std::function<void()>> observers;
    int installCount = 0;
};
headless::State<Hotkeys> hotkeys;

// Outlive a reset, as the process's one hotkey manager does: it installs its handler only once.
std::function<void(std::uint32_t)> handler;
std::map<std::uint64_t, RegisteredHotkey> registrations;
std::uint64_t nextRegistration = 0;
// Nor may a token that outlives a reset end a later observation.
std::uint64_t nextObserver = 0;

RegisteredHotkey const* findRegistered(Combination combination)
{
    auto const found = std::ranges::find_if(registrations, [&](auto const& entry) {
        return Combination { entry.second.keyCode, entry.second.modifiers } == combination;
    });
    return found == registrations.end() ? nullptr : &found->second;
}

} // namespace

void installHotkeyHandler(std::function<void(std::uint32_t id)> onPressed)
{
    ++hotkeys->installCount;
    handler = std::move(onPressed);
}

Token registerSystemHotkey(std::uint32_t keyCode, std::uint32_t modifiers, std::uint32_t signature,
    std::uint32_t id, std::string const& title)
{
    headless::note("registerSystemHotkey");
    Combination const combination { keyCode, modifiers };
    if (hotkeys->refused.contains(combination) || findRegistered(combination))
        return {};
    auto const registration = nextRegistration++;
    registrations[registration] = { keyCode, modifiers, signature, id, title };
    return Token([registration] { registrations.erase(registration); });
}

std::vector<std::optional<HotkeyObstacle>> hotkeyObstacles(
    std::vector<KeyCombination> const& combinations)
{
    std::vector<std::optional<HotkeyObstacle>> found;
    found.reserve(combinations.size());
    for (auto const& combination : combinations) {
        auto const prepared = hotkeys->obstacles.find(combination);
        found.push_back(
            prepared == hotkeys->obstacles.end() ? std::nullopt : std::optional(prepared->second));
    }
    return found;
}

std::vector<std::string> hotkeyNames(std::vector<KeyCombination> const& combinations)
{
    std::vector<std::string> names;
    names.reserve(combinations.size());
    for (auto const& [keyCode, modifiers] : combinations)
        names.push_back("keys " + std::to_string(modifiers) + "+" + std::to_string(keyCode));
    return names;
}

std::string hotkeyAlternative()
{
    return "Use the menu instead.";
}

Token observeHotkeyObstacles(std::function<void()> onChange)
{
    auto const number = nextObserver++;
    hotkeys->observers.emplace(number, std::move(onChange));
    return Token([number] { hotkeys->observers.erase(number); });
}

namespace headless {

std::vector<RegisteredHotkey> registeredHotkeys()
{
    std::vector<RegisteredHotkey> all;
    all.reserve(registrations.size());
    for (auto const& [registration, hotkey] : registrations)
        all.push_back(hotkey);
    return all;
}

void fire(std::uint32_t keyCode, std::uint32_t modifiers)
{
    if (auto const* const hotkey = findRegistered({ keyCode, modifiers }))
        fire(hotkey->id);
}

void fire(std::uint32_t id)
{
    if (handler)
        handler(id);
}

void refuseHotkey(std::uint32_t keyCode, std::uint32_t modifiers)
{
    hotkeys->refused.emplace(keyCode, modifiers);
}

void setHotkeyObstacle(KeyCombination combination, std::optional<HotkeyObstacle> obstacle)
{
    hotkeys->obstacles.erase(combination);
    if (obstacle)
        hotkeys->obstacles.emplace(combination, *obstacle);
}

void tellHotkeyObstacleObservers()
{
    for (auto const& [number, observer] : std::map { hotkeys->observers })
        observer();
}

int hotkeyHandlerInstallCount()
{
    return hotkeys->installCount;
}

} // namespace headless

} // namespace quillbar::platform
