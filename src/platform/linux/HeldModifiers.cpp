#include "platform/linux/HeldModifiers.h"

namespace quillbar::platform {

namespace {

KeyModifiers held = 0;

} // namespace

KeyModifiers heldModifiers()
{
    return held;
}

void setHeldModifiers(KeyModifiers modifiers)
{
    held = modifiers;
}

} // namespace quillbar::platform
