#pragma once

#include "model/Hotkey.h"

namespace quillbar {

/// Tells the person, once for ever, that the program runs although nothing shows its icon, how to
/// reach it and how to quit it: by the palette's hotkey, or what there is instead where it does not
/// work, and by starting it again. By a notification, or by an alert where there are none. Main
/// thread.
void tellOnceThatThereIsNoPlace(Hotkey const& paletteHotkey);

} // namespace quillbar
