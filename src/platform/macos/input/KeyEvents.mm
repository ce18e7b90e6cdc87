#import "platform/macos/input/KeyEvents.h"

#include <array>

namespace quillbar::platform {

namespace {

struct ModifierKey {
    KeyModifiers portable;
    NSEventModifierFlags native;
};

constexpr std::array<ModifierKey, 4> modifierKeys { {
    { commandKey, NSEventModifierFlagCommand },
    { shiftKey, NSEventModifierFlagShift },
    { optionKey, NSEventModifierFlagOption },
    { controlKey, NSEventModifierFlagControl },
} };

} // namespace

KeyEvent keyEvent(NSEvent* event)
{
    KeyModifiers modifiers = 0;
    for (auto const& key : modifierKeys) {
        if ((event.modifierFlags & key.native) != 0)
            modifiers |= key.portable;
    }
    return { .keyCode = event.keyCode, .modifiers = modifiers };
}

NSEventModifierFlags modifierFlags(KeyModifiers modifiers)
{
    NSEventModifierFlags flags = 0;
    for (auto const& key : modifierKeys) {
        if ((modifiers & key.portable) != 0)
            flags |= key.native;
    }
    return flags;
}

} // namespace quillbar::platform
