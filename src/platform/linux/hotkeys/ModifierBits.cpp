#include "platform/linux/hotkeys/ModifierBits.h"

#include "platform/linux/hotkeys/XcbPtr.h"

#include <xkbcommon/xkbcommon-keysyms.h>

#include <algorithm>
#include <array>
#include <span>

namespace quillbar::platform {

namespace {

// The five modifiers whose meaning the mapping decides; Shift, Lock and Control come before them.
constexpr std::array<std::uint16_t, 5> freeBits { XCB_MOD_MASK_1, XCB_MOD_MASK_2, XCB_MOD_MASK_3,
    XCB_MOD_MASK_4, XCB_MOD_MASK_5 };
constexpr std::size_t firstFreeBit = 3;

void note(xcb_keysym_t keysym, std::uint16_t bit, ModifierBits& bits)
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
                note(keysym, freeBits[index], bits);
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
