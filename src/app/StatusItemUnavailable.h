#pragma once

#include "model/Hotkey.h"

#include <string>

namespace quillbar {

/// Tells the person that the program runs although nothing shows its icon, and whether the
/// palette's hotkey works: by a notification, or by an alert where there are none. Once only: later
/// calls, in later runs too, do nothing. `explanation` is the system's own. Main thread.
void explainUnavailableStatusItem(std::string const& explanation, Hotkey const& paletteHotkey);

} // namespace quillbar
