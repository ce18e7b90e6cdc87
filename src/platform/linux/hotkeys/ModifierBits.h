#pragma once

#include "platform/KeyModifiers.h"

#include <xcb/xcb.h>

#include <cstdint>
#include <optional>
#include <set>

namespace quillbar::platform {

/// Where the keyboard mapping puts the modifiers that have no fixed place in X; 0 for a modifier
/// that no key has.
struct ModifierBits {
    std::uint16_t alt = 0;
    std::uint16_t super = 0;
    std::uint16_t numLock = 0;
    /// Every key that is a modifier.
    std::set<xcb_keycode_t> keys;
    /// The keys that give `super`.
    std::set<xcb_keycode_t> superKeys;

    /// The X mask for a hotkey's modifiers; none when the keyboard lacks one of them.
    [[nodiscard]] std::optional<std::uint16_t> mask(KeyModifiers modifiers) const;

    /// The part of an event's state that tells hotkeys apart: no locks, no buttons, no layout.
    [[nodiscard]] std::uint16_t hotkeyState(std::uint16_t state) const;

    friend bool operator==(ModifierBits const&, ModifierBits const&) = default;
};

/// Asks the server for the mapping; made and answered apart, so that other requests can share the
/// wait.
class ModifierBitsRequest {
public:
    explicit ModifierBitsRequest(xcb_connection_t* connection);

    /// Waits for the answer; once.
    [[nodiscard]] ModifierBits answer();

private:
    xcb_connection_t* connection_;
    xcb_get_modifier_mapping_cookie_t modifiers_;
    xcb_get_keyboard_mapping_cookie_t keys_;
};

} // namespace quillbar::platform
