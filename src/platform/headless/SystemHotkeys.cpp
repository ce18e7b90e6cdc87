#include "platform/SystemHotkeys.h"

#include "platform/headless/Headless.h"

#include <algorithm>
#include <utility>

namespace quillbar::platform {

namespace {

using headless::record;
using headless::RegisteredHotkey;

// Not in the record, which reset() clears: the process's one hotkey manager installs its handler
// and observers only once.
std::function<void(std::uint32_t)> handler;
std::map<std::uint64_t, std::function<void()>> observers;

// Each combination is registered once at most.
auto findRegistered(KeyCombination const& combination)
{
    return std::ranges::find_if(record().registeredHotkeys, [&](RegisteredHotkey const& hotkey) {
        return KeyCombination { hotkey.keyCode, hotkey.modifiers } == combination;
    });
}

void unregister(KeyCombination const& combination)
{
    auto const found = findRegistered(combination);
    if (found != record().registeredHotkeys.end())
        record().registeredHotkeys.erase(found);
}

} // namespace

void installHotkeyHandler(std::function<void(std::uint32_t id)> onPressed)
{
    handler = std::move(onPressed);
}

Token registerSystemHotkey(std::uint32_t keyCode, std::uint32_t modifiers, std::uint32_t signature,
    std::uint32_t id, std::string const& title)
{
    record().journal.emplace_back("registerSystemHotkey");
    KeyCombination const combination { keyCode, modifiers };
    auto& registered = record().registeredHotkeys;
    if (record().refusedHotkeys.contains(combination)
        || findRegistered(combination) != registered.end())
        return {};
    registered.push_back({ keyCode, modifiers, signature, id, title });
    return Token([combination] { unregister(combination); });
}

std::vector<std::optional<HotkeyObstacle>> hotkeyObstacles(
    std::vector<KeyCombination> const& combinations)
{
    std::vector<std::optional<HotkeyObstacle>> found;
    found.reserve(combinations.size());
    for (auto const& combination : combinations) {
        auto const prepared = record().hotkeyObstacles.find(combination);
        found.push_back(prepared == record().hotkeyObstacles.end()
                ? std::nullopt
                : std::optional(prepared->second));
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

std::string hotkeyObstacleText(HotkeyObstacle /*obstacle*/)
{
    return "It does not work.\nUse the menu instead.";
}

Token observeHotkeyObstacles(std::function<void()> onChange)
{
    static std::uint64_t nextNumber = 0;
    auto const number = nextNumber++;
    observers.emplace(number, std::move(onChange));
    return Token([number] { observers.erase(number); });
}

namespace headless {

void fire(std::uint32_t keyCode, std::uint32_t modifiers)
{
    auto const hotkey = findRegistered({ keyCode, modifiers });
    if (hotkey != record().registeredHotkeys.end())
        handler(hotkey->id);
}

void tellHotkeyObstacleObservers()
{
    for (auto const& [number, observer] : std::map { observers })
        observer();
}

} // namespace headless

} // namespace quillbar::platform
