#pragma once

#include "ui/HotkeyRecorder.h"
#include "ui/SettingsModel.h"

#include <map>
#include <string>

namespace quillbar {

/// The notes on all hotkeys of the settings.
struct HotkeyNotes {
    HotkeyNote quickOpen;
    /// By the names of the pinned shortcuts that have a hotkey.
    std::map<std::string, HotkeyNote> shortcuts;
};

/// Asks the system about every hotkey as it would be after saving.
[[nodiscard]] HotkeyNotes hotkeyNotes(SettingsModel const& model);

} // namespace quillbar
