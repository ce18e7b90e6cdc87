#pragma once

#include "platform/Token.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

namespace quillbar::platform {

/// Tells `onPressed` the id of every registered hotkey that is pressed, once a press however long
/// the keys are held. A later call replaces the handler. Main thread, both ways.
void installHotkeyHandler(std::function<void(std::uint32_t id)> onPressed);

/// Claims a key combination system-wide. `keyCode` is a macOS virtual key code, `modifiers` a mask
/// of the bits in KeyModifiers.h; `signature` and `id` name the registration. Systems that ask the
/// person show `title`, which tells what the hotkey is for; they may decide later, and the token is
/// not empty then. Empty when the combination is taken, has no key on this system, or the system
/// offers no hotkeys; destroying the token frees the combination for others. Main thread.
[[nodiscard]] Token registerSystemHotkey(std::uint32_t keyCode, std::uint32_t modifiers,
    std::uint32_t signature, std::uint32_t id, std::string const& title = {});

/// A key and its modifiers, numbered as for registerSystemHotkey().
struct KeyCombination {
    std::uint32_t keyCode = 0;
    std::uint32_t modifiers = 0;

    friend bool operator==(KeyCombination const&, KeyCombination const&) = default;
    friend bool operator<(KeyCombination const& left, KeyCombination const& right)
    {
        return std::tie(left.keyCode, left.modifiers) < std::tie(right.keyCode, right.modifiers);
    }
};

/// Why a key combination starts nothing.
enum class HotkeyObstacle : std::uint8_t {
    /// Another program has claimed it.
    Taken,
    /// The keyboard lacks the key or one of the modifiers.
    NoSuchKey,
    /// Another program has claimed the Command key (Super) alone, and may keep what is pressed
    /// with it.
    CommandKeyTaken,
    /// The system or this session offers no hotkeys.
    NoService,
    /// The system asked the person, who declined.
    Declined,
};

/// What keeps each of the combinations from working, in their order; nothing for one that works,
/// that is free, or that this program alone has registered. Changes no registration, except that
/// one which the system took back is claimed again where it can be. Several in one call cost little
/// more than one. Main thread.
[[nodiscard]] std::vector<std::optional<HotkeyObstacle>> hotkeyObstacles(
    std::vector<KeyCombination> const& combinations);

/// The combinations as people know them from their keyboard, in the present layout, for example
/// "Super+Alt+T"; empty where that is unknown. Main thread.
[[nodiscard]] std::vector<std::string> hotkeyNames(std::vector<KeyCombination> const& combinations);

/// What a person can do where there are no hotkeys, as sentences; empty when nothing.
[[nodiscard]] std::string hotkeyAlternative();

/// Calls `onChange` when the system reports something that may have changed an obstacle; other
/// programs' claims come and go unreported. Main thread.
[[nodiscard]] Token observeHotkeyObstacles(std::function<void()> onChange);

} // namespace quillbar::platform
