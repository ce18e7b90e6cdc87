#pragma once

#include "model/Hotkey.h"

#include <optional>

namespace quillbar {

/// Tells the person, once for ever, that the program runs although nothing shows its icon, and how
/// to reach it: by the palette's hotkey, if one works, and by starting it again. By a notification,
/// or by an alert where there are none. Main thread.
void tellOnceThatThereIsNoPlace(std::optional<Hotkey> const& paletteHotkey);

} // namespace quillbar
