// What can be said of hotkeys under X11: what keeps them from working, and their keys' names.

#include "platform/linux/input/KeyNames.h"
#include "platform/linux/x11/X11Hotkeys.h"
#include "platform/linux/x11/X11Keyboard.h"

#include <algorithm>
#include <iterator>

namespace quillbar::platform {

/// Nobody but the server knows who holds what: each combination is grabbed and given back at once.
/// A press in between is replayed, so that it reaches whom it was meant for.
std::vector<std::optional<HotkeyObstacle>> X11Hotkeys::obstacles(
    std::vector<KeyCombination> const& combinations)
{
    giveBackReleased();
    Claim const bareSuper { { bits_.superKeys.begin(), bits_.superKeys.end() }, 0, 0 };
    std::vector<Claim> tried { bareSuper };
    for (auto const& [keyCode, modifiers] : combinations)
        tried.push_back(makeClaim(keyCode, modifiers, 0));
    auto const isRefused = tryGrabs(tried);
    // What is told to be free must not be lost any more.
    regainLost();

    std::vector<std::optional<HotkeyObstacle>> found;
    for (std::size_t index = 0; index < combinations.size(); ++index) {
        if (grabsOf(tried[index + 1]).empty())
            found.emplace_back(HotkeyObstacle::NoSuchKey);
        else if (isRefused[index + 1])
            found.emplace_back(HotkeyObstacle::Taken);
        else if (isRefused.front() && (combinations[index].modifiers & commandKey) != 0)
            found.emplace_back(HotkeyObstacle::CommandKeyTaken);
        else
            found.emplace_back();
    }
    return found;
}

std::vector<std::string> X11Hotkeys::keyNames(std::vector<std::uint32_t> const& keyCodes)
{
    auto const keysyms = KeysymTable { connection_.get() };
    std::vector<std::string> names;
    std::transform(keyCodes.begin(), keyCodes.end(), std::back_inserter(names), [&](auto keyCode) {
        auto const keycodes = makeClaim(keyCode, 0, 0).keycodes;
        return keycodes.empty() ? std::string() : nameOfKey(keysyms.of(keycodes.front()));
    });
    return names;
}

std::vector<bool> X11Hotkeys::tryGrabs(std::vector<Claim> const& claims)
{
    // Giving back what is held would end a hotkey. The server may since have let another client
    // have it as well.
    std::vector<Requests> sent;
    std::transform(
        claims.begin(), claims.end(), std::back_inserter(sent), [this](Claim const& claim) {
            return isHeld(claim) ? sendXInputGrabs(claim) : sendGrabs(claim);
        });
    for (auto const& claim : claims) {
        if (!isHeld(claim))
            ungrab(claim);
    }
    std::vector<bool> isRefused;
    std::transform(sent.begin(), sent.end(), std::back_inserter(isRefused),
        [this](Requests const& requests) { return isAnyRefused(requests); });
    return isRefused;
}

} // namespace quillbar::platform
