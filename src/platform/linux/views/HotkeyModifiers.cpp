#include "platform/linux/views/HotkeyModifiers.h"

#include "platform/linux/UserAction.h"

#include <xkbcommon/xkbcommon.h>

#include <array>

namespace quillbar::platform {

namespace {

struct Modifier {
    KeyModifiers portable;
    Qt::KeyboardModifier qt;
    std::array<Qt::Key, 2> keys;
};

constexpr std::array modifiers {
    Modifier { commandKey, Qt::MetaModifier, { Qt::Key_Super_L, Qt::Key_Super_R } },
    Modifier { optionKey, Qt::AltModifier, { Qt::Key_Alt, Qt::Key_Meta } },
    Modifier { controlKey, Qt::ControlModifier, { Qt::Key_Control, Qt::Key_Control } },
    Modifier { shiftKey, Qt::ShiftModifier, { Qt::Key_Shift, Qt::Key_Shift } },
};

} // namespace

std::unique_ptr<QKeyEvent> withoutHotkeyModifiers(QKeyEvent const& event)
{
    auto& held = lastUserAction().heldModifiers;
    Qt::KeyboardModifiers dropped;
    for (auto const& [portable, qt, keys] : modifiers) {
        bool const isOwnKey = event.key() == keys[0] || event.key() == keys[1];
        if (isOwnKey || !event.modifiers().testFlag(qt))
            held &= ~portable;
        else if ((held & portable) != 0)
            dropped |= qt;
    }
    if (!dropped)
        return nullptr;
    auto text = event.text();
    // Control has turned the letter into a control character.
    if (dropped.testFlag(Qt::ControlModifier)) {
        char32_t const character = xkb_keysym_to_utf32(event.nativeVirtualKey());
        text = character == 0 ? QString() : QString::fromUcs4(&character, 1);
    }
    return std::make_unique<QKeyEvent>(event.type(), event.key(), event.modifiers() & ~dropped,
        event.nativeScanCode(), event.nativeVirtualKey(), event.nativeModifiers(), text,
        event.isAutoRepeat(), static_cast<quint16>(event.count()));
}

} // namespace quillbar::platform
