#include "platform/SystemHotkeys.h"

#include "platform/HotkeyObstacles.h"

#import <Carbon/Carbon.h>

#include <algorithm>
#include <iterator>
#include <set>

namespace quillbar::platform {

namespace {

std::function<void(std::uint32_t)>& pressHandler()
{
    static std::function<void(std::uint32_t)> handler;
    return handler;
}

/// What this program holds.
std::set<KeyCombination>& claims()
{
    // Never destroyed: tokens may outlive every static object.
    static auto& combinations = *new std::set<KeyCombination>;
    return combinations;
}

OSStatus hotkeyPressed(EventHandlerCallRef, EventRef event, void*)
{
    EventHotKeyID hotkey {};
    GetEventParameter(event, kEventParamDirectObject, typeEventHotKeyID, nullptr, sizeof hotkey,
        nullptr, &hotkey);
    // A copy: the handler may be replaced while it runs.
    if (auto const handler = pressHandler())
        handler(hotkey.id);
    return noErr;
}

/// Null when it is refused.
EventHotKeyRef claim(KeyCombination const& combination, EventHotKeyID identifier)
{
    EventHotKeyRef reference = nullptr;
    auto const status = RegisterEventHotKey(combination.keyCode, combination.modifiers, identifier,
        GetApplicationEventTarget(), 0, &reference);
    return status == noErr ? reference : nullptr;
}

/// What macOS keeps for itself, as the person has set it; it does not refuse a claim of these.
std::set<KeyCombination> systemCombinations()
{
    CFArrayRef copied = nullptr;
    if (CopySymbolicHotKeys(&copied) != noErr)
        return {};
    NSArray<NSDictionary*>* const hotkeys = (__bridge_transfer NSArray*)copied;
    auto const number = [](NSDictionary* hotkey, CFStringRef key) {
        return static_cast<std::uint32_t>([hotkey[(__bridge NSString*)key] unsignedIntValue]);
    };
    std::set<KeyCombination> combinations;
    for (NSDictionary* hotkey in hotkeys) {
        if (number(hotkey, kHISymbolicHotKeyEnabled) != 0)
            combinations.insert({ .keyCode = number(hotkey, kHISymbolicHotKeyCode),
                .modifiers = number(hotkey, kHISymbolicHotKeyModifiers) });
    }
    return combinations;
}

/// The system tells which other program holds a combination only by refusing it.
std::optional<HotkeyObstacle> obstacle(KeyCombination const& combination)
{
    if (claims().contains(combination))
        return std::nullopt;
    EventHotKeyRef const probe = claim(combination, {});
    if (!probe)
        return HotkeyObstacle::Taken;
    UnregisterEventHotKey(probe);
    return std::nullopt;
}

} // namespace

void installHotkeyHandler(std::function<void(std::uint32_t id)> onPressed)
{
    pressHandler() = std::move(onPressed);
    static auto const installed = [] {
        EventTypeSpec const pressed { kEventClassKeyboard, kEventHotKeyPressed };
        return InstallEventHandler(
            GetApplicationEventTarget(), hotkeyPressed, 1, &pressed, nullptr, nullptr);
    }();
    static_cast<void>(installed);
}

Token registerSystemHotkey(std::uint32_t keyCode, std::uint32_t modifiers, std::uint32_t signature,
    std::uint32_t id, std::string const& /*title*/)
{
    KeyCombination const combination { keyCode, modifiers };
    EventHotKeyRef const reference = claim(combination, { signature, id });
    if (!reference)
        return {};
    claims().insert(combination);
    return Token { [reference, combination] {
        UnregisterEventHotKey(reference);
        claims().erase(combination);
    } };
}

std::vector<std::optional<HotkeyObstacle>> hotkeyObstacles(
    std::vector<KeyCombination> const& combinations)
{
    auto const kept = systemCombinations();
    std::vector<std::optional<HotkeyObstacle>> found;
    std::transform(combinations.begin(), combinations.end(), std::back_inserter(found),
        [&kept](KeyCombination const& combination) {
            return kept.contains(combination) ? HotkeyObstacle::Taken : obstacle(combination);
        });
    return found;
}

} // namespace quillbar::platform
