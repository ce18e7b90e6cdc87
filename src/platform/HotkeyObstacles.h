#pragma once

#include "platform/Token.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

/// What the system knows about key combinations that do not work. Main thread.
namespace quillbar::platform {

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
    /// Another program has claimed the Command key alone, and may keep what is pressed with it.
    CommandKeyTaken,
    /// The system or this session offers no hotkeys.
    NoService,
    /// The system asked the person for permission, and the person refused it.
    Declined,
};

/// What keeps each of the combinations from working, in their order; nothing for one that works,
/// that is free, or that this program alone has registered. Changes no registration, except that
/// one which the system took back is claimed again where it can be. Several in one call cost little
/// more than one.
[[nodiscard]] std::vector<std::optional<HotkeyObstacle>> hotkeyObstacles(
    std::vector<KeyCombination> const& combinations);

/// The obstacle and what the person can do about it, as sentences in the system's words.
[[nodiscard]] std::string hotkeyObstacleText(HotkeyObstacle obstacle);

/// The combinations by the names that are printed on the keyboard, in the present layout; empty
/// where that is unknown.
[[nodiscard]] std::vector<std::string> hotkeyNames(std::vector<KeyCombination> const& combinations);

/// Calls `onChange` when the system reports something that may have changed an obstacle; other
/// programs' claims come and go unreported.
[[nodiscard]] Token observeHotkeyObstacles(std::function<void()> onChange);

} // namespace quillbar::platform
