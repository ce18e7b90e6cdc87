#include "platform/linux/views/KeyTranslation.h"

#include "platform/linux/UserAction.h"
#include "platform/linux/drawing/Conversions.h"
#include "platform/linux/hotkeys/VirtualKeyCodes.h"

#include <xkbcommon/xkbcommon.h>

namespace quillbar::platform {

namespace {

constexpr std::uint32_t scanCodeOffset = 8;

// The modifier that a key gives; 0 for any other key. Alt with Shift is Qt's Meta key.
KeyModifiers modifierOf(int qtKey)
{
    switch (qtKey) {
    case Qt::Key_Super_L:
    case Qt::Key_Super_R:
        return commandKey;
    case Qt::Key_Alt:
    case Qt::Key_Meta:
        return optionKey;
    case Qt::Key_Control:
        return controlKey;
    case Qt::Key_Shift:
        return shiftKey;
    default:
        return 0;
    }
}

bool isModifierKey(int qtKey)
{
    return modifierOf(qtKey) != 0 || qtKey == Qt::Key_AltGr || qtKey == Qt::Key_Mode_switch
        || qtKey == Qt::Key_CapsLock || qtKey == Qt::Key_Hyper_L || qtKey == Qt::Key_Hyper_R;
}

// Layouts can put these keys elsewhere, for example Escape on the CapsLock key.
std::optional<std::uint32_t> keyCodeInWindows(int qtKey)
{
    switch (qtKey) {
    case Qt::Key_Return:
        return key::returnKey;
    case Qt::Key_Enter:
        return key::keypadEnter;
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        return key::tab;
    case Qt::Key_Space:
        return key::space;
    case Qt::Key_Escape:
        return key::escape;
    case Qt::Key_Down:
        return key::downArrow;
    case Qt::Key_Up:
        return key::upArrow;
    default:
        return std::nullopt;
    }
}

} // namespace

std::optional<KeyEvent> translateKey(QKeyEvent const& event, KeyMeaning meaning)
{
    if (isModifierKey(event.key()))
        return std::nullopt;
    auto keyCode = meaning == KeyMeaning::Layout ? keyCodeInWindows(event.key()) : std::nullopt;
    if (!keyCode && event.nativeScanCode() > scanCodeOffset)
        keyCode = evdevToVirtualKey(event.nativeScanCode() - scanCodeOffset);
    if (!keyCode)
        return std::nullopt;
    return KeyEvent { *keyCode, toKeyModifiers(event.modifiers()) };
}

std::unique_ptr<QKeyEvent> withoutHotkeyModifiers(QKeyEvent const& event)
{
    auto const pressed = toKeyModifiers(event.modifiers()) & ~modifierOf(event.key());
    auto const held = lastUserAction().heldModifiers &= pressed;
    if (held == 0)
        return nullptr;
    auto text = event.text();
    // Control has turned the letter into a control character.
    if ((held & controlKey) != 0) {
        char32_t const character = xkb_keysym_to_utf32(event.nativeVirtualKey());
        text = character == 0 ? QString() : QString::fromUcs4(&character, 1);
    }
    return std::make_unique<QKeyEvent>(event.type(), event.key(),
        event.modifiers() & ~toQtModifiers(held), event.nativeScanCode(), event.nativeVirtualKey(),
        event.nativeModifiers(), text, event.isAutoRepeat(), static_cast<quint16>(event.count()));
}

} // namespace quillbar::platform
