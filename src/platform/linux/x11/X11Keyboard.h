#pragma once

#include "platform/KeyModifiers.h"
#include "platform/linux/x11/X11Connection.h"

#include <xcb/xcb.h>

#include <cstdint>
#include <optional>
#include <set>

namespace quillbar::platform {

/// Asks for XKB's presence without waiting; useXkb() later reads the answer.
void prefetchXkb(xcb_connection_t* connection);

/// Makes held keys repeat as presses without releases between, and has the server tell about
/// changes of the keyboard or its mapping. Returns the type of the events that tell it; none where
/// the server has no XKB.
[[nodiscard]] std::optional<std::uint8_t> useXkb(xcb_connection_t* connection);

/// The layout that is in use of those that the person has set up, counted from 0. Waits.
[[nodiscard]] std::uint8_t activeLayout(xcb_connection_t* connection);

/// What the keys give without modifiers in the layout that is in use now.
class KeysymTable {
public:
    /// Waits for the server.
    explicit KeysymTable(xcb_connection_t* connection);

    /// 0 for a key that gives nothing.
    [[nodiscard]] xcb_keysym_t of(xcb_keycode_t keycode) const;

private:
    XcbPtr<xcb_get_keyboard_mapping_reply_t> mapping_;
    xcb_keycode_t firstKeycode_;
    std::size_t layout_;
};

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
