#pragma once

#include "platform/KeyModifiers.h"

namespace quillbar::platform {

/// The modifiers that are still down from the hotkey that opened a window. What is typed into the
/// window before they come up is meant without them. Main thread.
[[nodiscard]] KeyModifiers heldModifiers();
void setHeldModifiers(KeyModifiers modifiers);

} // namespace quillbar::platform
