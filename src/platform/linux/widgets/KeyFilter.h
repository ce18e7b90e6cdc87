#pragma once

#include "platform/KeyMonitor.h"

#include <QKeyEvent>

#include <optional>

namespace quillbar::platform {

/// Has every key press of the application pass through the monitors and the portable windows
/// before a widget gets it. Once is enough; lasts as long as the application.
void installKeyFilter();

enum class KeyMeaning : std::uint8_t {
    /// The physical key, as hotkeys are stored.
    Place,
    /// What the layout makes of the key, where windows answer to that.
    Layout,
};

/// The press as the portable side sees it; nothing for a modifier key, which is no press of its
/// own, and for a key without a key code.
[[nodiscard]] std::optional<KeyEvent> translateKey(QKeyEvent const& event, KeyMeaning meaning);

} // namespace quillbar::platform
