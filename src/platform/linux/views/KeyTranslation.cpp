#include "platform/linux/views/KeyTranslation.h"

#include "platform/linux/hotkeys/VirtualKeyCodes.h"

#include <algorithm>
#include <array>
#include <utility>

namespace quillbar::platform {

namespace {

constexpr std::uint32_t scanCodeOffset = 8;
// The key codes from right Command to Function are those of the modifier keys.
constexpr std::uint32_t firstModifierKey = 54;
constexpr std::uint32_t lastModifierKey = 63;

struct NamedKey {
    int qtKey;
    std::uint32_t keyCode;
};

// For presses without a scan code: on-screen keyboards and other programs that make them up. The
// places are those of a US keyboard.
constexpr std::array namedKeys {
    NamedKey { Qt::Key_A, 0 },
    NamedKey { Qt::Key_S, 1 },
    NamedKey { Qt::Key_D, 2 },
    NamedKey { Qt::Key_F, 3 },
    NamedKey { Qt::Key_H, 4 },
    NamedKey { Qt::Key_G, 5 },
    NamedKey { Qt::Key_Z, 6 },
    NamedKey { Qt::Key_X, 7 },
    NamedKey { Qt::Key_C, 8 },
    NamedKey { Qt::Key_V, 9 },
    NamedKey { Qt::Key_B, 11 },
    NamedKey { Qt::Key_Q, 12 },
    NamedKey { Qt::Key_W, 13 },
    NamedKey { Qt::Key_E, 14 },
    NamedKey { Qt::Key_R, 15 },
    NamedKey { Qt::Key_Y, 16 },
    NamedKey { Qt::Key_T, 17 },
    NamedKey { Qt::Key_1, 18 },
    NamedKey { Qt::Key_2, 19 },
    NamedKey { Qt::Key_3, 20 },
    NamedKey { Qt::Key_4, 21 },
    NamedKey { Qt::Key_6, 22 },
    NamedKey { Qt::Key_5, 23 },
    NamedKey { Qt::Key_9, 25 },
    NamedKey { Qt::Key_7, 26 },
    NamedKey { Qt::Key_8, 28 },
    NamedKey { Qt::Key_0, 29 },
    NamedKey { Qt::Key_O, 31 },
    NamedKey { Qt::Key_U, 32 },
    NamedKey { Qt::Key_I, 34 },
    NamedKey { Qt::Key_P, 35 },
    NamedKey { Qt::Key_Return, 36 },
    NamedKey { Qt::Key_L, 37 },
    NamedKey { Qt::Key_J, 38 },
    NamedKey { Qt::Key_K, 40 },
    NamedKey { Qt::Key_N, 45 },
    NamedKey { Qt::Key_M, 46 },
    NamedKey { Qt::Key_Tab, 48 },
    NamedKey { Qt::Key_Backtab, 48 },
    NamedKey { Qt::Key_Space, 49 },
    NamedKey { Qt::Key_Backspace, 51 },
    NamedKey { Qt::Key_Escape, 53 },
    NamedKey { Qt::Key_Enter, 76 },
    NamedKey { Qt::Key_F5, 96 },
    NamedKey { Qt::Key_F6, 97 },
    NamedKey { Qt::Key_F7, 98 },
    NamedKey { Qt::Key_F3, 99 },
    NamedKey { Qt::Key_F8, 100 },
    NamedKey { Qt::Key_F9, 101 },
    NamedKey { Qt::Key_F11, 103 },
    NamedKey { Qt::Key_F10, 109 },
    NamedKey { Qt::Key_F12, 111 },
    NamedKey { Qt::Key_Home, 115 },
    NamedKey { Qt::Key_PageUp, 116 },
    NamedKey { Qt::Key_Delete, 117 },
    NamedKey { Qt::Key_F4, 118 },
    NamedKey { Qt::Key_End, 119 },
    NamedKey { Qt::Key_F2, 120 },
    NamedKey { Qt::Key_PageDown, 121 },
    NamedKey { Qt::Key_F1, 122 },
    NamedKey { Qt::Key_Left, 123 },
    NamedKey { Qt::Key_Right, 124 },
    NamedKey { Qt::Key_Down, 125 },
    NamedKey { Qt::Key_Up, 126 },
};

std::optional<std::uint32_t> keyCodeOf(QKeyEvent const& event)
{
    if (event.nativeScanCode() > scanCodeOffset)
        return evdevToVirtualKey(event.nativeScanCode() - scanCodeOffset);
    auto const* const found = std::ranges::find(namedKeys, event.key(), &NamedKey::qtKey);
    return found == namedKeys.end() ? std::nullopt : std::optional(found->keyCode);
}

} // namespace

std::optional<KeyEvent> translateKey(QKeyEvent const& event)
{
    auto const keyCode = keyCodeOf(event);
    if (!keyCode || (*keyCode >= firstModifierKey && *keyCode <= lastModifierKey))
        return std::nullopt;
    KeyModifiers modifiers = 0;
    for (auto const& [qtModifier, bit] :
        { std::pair { Qt::MetaModifier, commandKey }, std::pair { Qt::AltModifier, optionKey },
            std::pair { Qt::ControlModifier, controlKey },
            std::pair { Qt::ShiftModifier, shiftKey } }) {
        if (event.modifiers().testFlag(qtModifier))
            modifiers |= bit;
    }
    return KeyEvent { *keyCode, modifiers };
}

} // namespace quillbar::platform
