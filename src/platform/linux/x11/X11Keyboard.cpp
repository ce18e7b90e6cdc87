#include "platform/linux/x11/X11Keyboard.h"

#include <xkbcommon/xkbcommon-keysyms.h>

#include <algorithm>
#include <array>
#include <span>

// The header has a field called "explicit".
#define explicit explicit_
#include <xcb/xkb.h>
#undef explicit

namespace quillbar::platform {

namespace {

/// The core protocol gives the first two keysyms of the first two layouts, in this order.
constexpr std::size_t keysymsPerLayout = 2;
constexpr std::size_t knownLayouts = 2;

// The five modifiers whose meaning the mapping decides; Shift, Lock and Control come before them.
constexpr std::array<std::uint16_t, 5> freeBits { XCB_MOD_MASK_1, XCB_MOD_MASK_2, XCB_MOD_MASK_3,
    XCB_MOD_MASK_4, XCB_MOD_MASK_5 };
constexpr std::size_t firstFreeBit = 3;

void recordModifier(xcb_keysym_t keysym, std::uint16_t bit, ModifierBits& bits)
{
    auto const take = [bit](std::uint16_t& slot) {
        if (slot == 0)
            slot = bit;
    };
    switch (keysym) {
    case XKB_KEY_Alt_L:
    case XKB_KEY_Alt_R:
        take(bits.alt);
        break;
    case XKB_KEY_Super_L:
    case XKB_KEY_Super_R:
        take(bits.super);
        break;
    case XKB_KEY_Num_Lock:
        take(bits.numLock);
        break;
    default:
        break;
    }
}

} // namespace

void prefetchXkb(xcb_connection_t* connection)
{
    xcb_prefetch_extension_data(connection, &xcb_xkb_id);
}

std::optional<std::uint8_t> useXkb(xcb_connection_t* connection)
{
    auto const* const extension = xcb_get_extension_data(connection, &xcb_xkb_id);
    if (extension == nullptr || extension->present == 0)
        return std::nullopt;

    auto const version
        = xcb_xkb_use_extension(connection, XCB_XKB_MAJOR_VERSION, XCB_XKB_MINOR_VERSION);
    auto const flags = xcb_xkb_per_client_flags(connection, XCB_XKB_ID_USE_CORE_KBD,
        XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT,
        XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT, 0, 0, 0);
    xcb_discard_reply(connection, version.sequence);
    xcb_discard_reply(connection, flags.sequence);

    std::uint16_t const changes
        = XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY;
    xcb_xkb_select_events(connection, XCB_XKB_ID_USE_CORE_KBD, changes, 0, changes, 0, 0, nullptr);
    return extension->first_event;
}

std::uint8_t activeLayout(xcb_connection_t* connection)
{
    XcbPtr<xcb_xkb_get_state_reply_t> const state { xcb_xkb_get_state_reply(
        connection, xcb_xkb_get_state(connection, XCB_XKB_ID_USE_CORE_KBD), nullptr) };
    return state ? state->group : std::uint8_t { 0 };
}

KeysymTable::KeysymTable(xcb_connection_t* connection)
    : firstKeycode_(xcb_get_setup(connection)->min_keycode)
{
    auto const count = xcb_get_setup(connection)->max_keycode - firstKeycode_ + 1;
    auto const request
        = xcb_get_keyboard_mapping(connection, firstKeycode_, static_cast<std::uint8_t>(count));
    layout_ = activeLayout(connection);
    mapping_.reset(xcb_get_keyboard_mapping_reply(connection, request, nullptr));
}

xcb_keysym_t KeysymTable::of(xcb_keycode_t keycode) const
{
    if (!mapping_ || keycode < firstKeycode_)
        return XCB_NO_SYMBOL;
    std::span const keysyms { xcb_get_keyboard_mapping_keysyms(mapping_.get()),
        static_cast<std::size_t>(xcb_get_keyboard_mapping_keysyms_length(mapping_.get())) };
    std::size_t const perKey = mapping_->keysyms_per_keycode;
    auto const first = static_cast<std::size_t>(keycode - firstKeycode_) * perKey;
    auto const column = layout_ < knownLayouts ? layout_ * keysymsPerLayout : 0;
    if (column < perKey && first + column < keysyms.size()
        && keysyms[first + column] != XCB_NO_SYMBOL)
        return keysyms[first + column];
    // Most keys that are no letters are the same in every layout.
    return first < keysyms.size() ? keysyms[first] : xcb_keysym_t { XCB_NO_SYMBOL };
}

std::optional<std::uint16_t> ModifierBits::mask(KeyModifiers modifiers) const
{
    struct Place {
        KeyModifiers modifier;
        std::uint16_t bit;
    };
    std::uint16_t result = 0;
    for (auto const& [modifier, bit] : {
             Place { shiftKey, XCB_MOD_MASK_SHIFT },
             Place { controlKey, XCB_MOD_MASK_CONTROL },
             Place { optionKey, alt },
             Place { commandKey, super },
         }) {
        if ((modifiers & modifier) == 0)
            continue;
        if (bit == 0)
            return std::nullopt;
        result = static_cast<std::uint16_t>(result | bit);
        modifiers &= ~modifier;
    }
    return modifiers == 0 ? std::optional { result } : std::nullopt;
}

std::uint16_t ModifierBits::hotkeyState(std::uint16_t state) const
{
    return static_cast<std::uint16_t>(
        state & (XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_CONTROL | alt | super));
}

ModifierBitsRequest::ModifierBitsRequest(xcb_connection_t* connection)
    : connection_(connection)
    , modifiers_(xcb_get_modifier_mapping(connection))
{
    auto const* const setup = xcb_get_setup(connection);
    auto const count = setup->max_keycode - setup->min_keycode + 1;
    keys_ = xcb_get_keyboard_mapping(
        connection, setup->min_keycode, static_cast<std::uint8_t>(count));
}

ModifierBits ModifierBitsRequest::answer()
{
    XcbPtr<xcb_get_modifier_mapping_reply_t> const modifiers { xcb_get_modifier_mapping_reply(
        connection_, modifiers_, nullptr) };
    XcbPtr<xcb_get_keyboard_mapping_reply_t> const keys { xcb_get_keyboard_mapping_reply(
        connection_, keys_, nullptr) };
    if (!modifiers || !keys)
        return {};

    std::span const keycodes { xcb_get_modifier_mapping_keycodes(modifiers.get()),
        static_cast<std::size_t>(xcb_get_modifier_mapping_keycodes_length(modifiers.get())) };
    std::span const keysyms { xcb_get_keyboard_mapping_keysyms(keys.get()),
        static_cast<std::size_t>(xcb_get_keyboard_mapping_keysyms_length(keys.get())) };
    std::size_t const keysPerModifier = modifiers->keycodes_per_modifier;
    std::size_t const symbolsPerKey = keys->keysyms_per_keycode;
    auto const firstKeycode = xcb_get_setup(connection_)->min_keycode;

    auto const keysOf = [&](std::size_t index) {
        return keycodes.subspan((firstFreeBit + index) * keysPerModifier, keysPerModifier);
    };

    ModifierBits bits;
    bits.keys.insert(keycodes.begin(), keycodes.end());
    for (std::size_t index = 0; index < freeBits.size(); ++index) {
        for (auto const keycode : keysOf(index)) {
            if (keycode < firstKeycode)
                continue;
            auto const first = static_cast<std::size_t>(keycode - firstKeycode) * symbolsPerKey;
            for (auto const keysym : keysyms.subspan(std::min(first, keysyms.size()),
                     std::min(symbolsPerKey, keysyms.size() - std::min(first, keysyms.size()))))
                recordModifier(keysym, freeBits[index], bits);
        }
    }
    for (std::size_t index = 0; index < freeBits.size(); ++index) {
        if (freeBits[index] == bits.super)
            bits.superKeys.insert(keysOf(index).begin(), keysOf(index).end());
    }
    // Fills the places of modifiers that have fewer keys than others.
    bits.superKeys.erase(0);
    return bits;
}

} // namespace quillbar::platform
