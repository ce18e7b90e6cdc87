#include "platform/linux/input/VirtualKeyCodes.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <linux/input-event-codes.h>

namespace quillbar::platform {

namespace {

constexpr std::uint16_t noKey = 0;

// Indexed by virtual key code; the number at the end of a row is that of its first entry.
constexpr std::array<std::uint16_t, 128> evdevCodes {
    KEY_A, KEY_S, KEY_D, KEY_F, KEY_H, KEY_G, KEY_Z, KEY_X, // 0
    KEY_C, KEY_V, KEY_102ND, KEY_B, KEY_Q, KEY_W, KEY_E, KEY_R, // 8
    KEY_Y, KEY_T, KEY_1, KEY_2, KEY_3, KEY_4, KEY_6, KEY_5, // 16
    KEY_EQUAL, KEY_9, KEY_7, KEY_MINUS, KEY_8, KEY_0, KEY_RIGHTBRACE, KEY_O, // 24
    KEY_U, KEY_LEFTBRACE, KEY_I, KEY_P, KEY_ENTER, KEY_L, KEY_J, KEY_APOSTROPHE, // 32
    KEY_K, KEY_SEMICOLON, KEY_BACKSLASH, KEY_COMMA, KEY_SLASH, KEY_N, KEY_M, KEY_DOT, // 40
    KEY_TAB, KEY_SPACE, KEY_GRAVE, KEY_BACKSPACE, noKey, KEY_ESC, KEY_RIGHTMETA, KEY_LEFTMETA, // 48
    KEY_LEFTSHIFT, KEY_CAPSLOCK, KEY_LEFTALT, KEY_LEFTCTRL, KEY_RIGHTSHIFT, KEY_RIGHTALT,
    KEY_RIGHTCTRL, KEY_FN, // 56
    KEY_F17, KEY_KPDOT, noKey, KEY_KPASTERISK, noKey, KEY_KPPLUS, noKey, KEY_NUMLOCK, // 64
    KEY_VOLUMEUP, KEY_VOLUMEDOWN, KEY_MUTE, KEY_KPSLASH, KEY_KPENTER, noKey, KEY_KPMINUS,
    KEY_F18, // 72
    KEY_F19, KEY_KPEQUAL, KEY_KP0, KEY_KP1, KEY_KP2, KEY_KP3, KEY_KP4, KEY_KP5, // 80
    KEY_KP6, KEY_KP7, KEY_F20, KEY_KP8, KEY_KP9, KEY_YEN, KEY_RO, KEY_KPCOMMA, // 88
    KEY_F5, KEY_F6, KEY_F7, KEY_F3, KEY_F8, KEY_F9, KEY_HANJA, KEY_F11, // 96
    KEY_HANGEUL, KEY_F13, KEY_F16, KEY_F14, noKey, KEY_F10, KEY_COMPOSE, KEY_F12, // 104
    noKey, KEY_F15, KEY_INSERT, KEY_HOME, KEY_PAGEUP, KEY_DELETE, KEY_F4, KEY_END, // 112
    KEY_F2, KEY_PAGEDOWN, KEY_F1, KEY_LEFT, KEY_RIGHT, KEY_DOWN, KEY_UP, noKey, // 120
};

struct ExtraKey {
    std::uint16_t evdevCode;
    std::uint8_t keyCode;
};

// PC keys that stand where a Mac keyboard has another one, or that Macs take for another one.
constexpr std::array extraKeys {
    ExtraKey { KEY_SYSRQ, 105 },
    ExtraKey { KEY_SCROLLLOCK, 107 },
    ExtraKey { KEY_PAUSE, 113 },
    ExtraKey { KEY_HELP, 114 },
    ExtraKey { KEY_MUHENKAN, 102 },
    ExtraKey { KEY_KATAKANAHIRAGANA, 104 },
};

constexpr std::array<std::uint32_t, 3> pairedKeyCodes { 105, 107, 113 };

std::optional<std::uint32_t> standardKeyCode(std::uint32_t evdevCode)
{
    auto const* const found = std::find(evdevCodes.begin(), evdevCodes.end(), evdevCode);
    if (found != evdevCodes.end())
        return static_cast<std::uint32_t>(std::distance(evdevCodes.begin(), found));
    auto const* const extra = std::find_if(extraKeys.begin(), extraKeys.end(),
        [=](ExtraKey const& key) { return key.evdevCode == evdevCode; });
    if (extra != extraKeys.end())
        return extra->keyCode;
    return std::nullopt;
}

} // namespace

std::optional<std::uint32_t> virtualKeyToEvdev(std::uint32_t keyCode)
{
    if (keyCode < evdevCodes.size()) {
        auto const evdevCode = evdevCodes[keyCode];
        return evdevCode == noKey ? std::nullopt : std::optional<std::uint32_t> { evdevCode };
    }
    auto const evdevCode = keyCode - firstEvdevKeyCode;
    if (keyCode <= firstEvdevKeyCode || evdevCode > KEY_MAX || standardKeyCode(evdevCode))
        return std::nullopt;
    return evdevCode;
}

std::vector<std::uint32_t> evdevKeysFor(std::uint32_t keyCode)
{
    auto const evdevCode = virtualKeyToEvdev(keyCode);
    if (!evdevCode)
        return {};
    std::vector<std::uint32_t> keys { *evdevCode };
    if (std::find(pairedKeyCodes.begin(), pairedKeyCodes.end(), keyCode) == pairedKeyCodes.end())
        return keys;
    for (auto const& extra : extraKeys) {
        if (extra.keyCode == keyCode)
            keys.push_back(extra.evdevCode);
    }
    return keys;
}

std::optional<std::uint32_t> evdevToVirtualKey(std::uint32_t evdevCode)
{
    if (evdevCode == noKey || evdevCode > KEY_MAX)
        return std::nullopt;
    return standardKeyCode(evdevCode).value_or(firstEvdevKeyCode + evdevCode);
}

} // namespace quillbar::platform
