#pragma once

#include "platform/KeyMonitor.h"

#include <QKeyEvent>

#include <memory>
#include <optional>

namespace quillbar::platform {

enum class KeyMeaning : std::uint8_t {
    /// The physical key, as hotkeys are stored.
    Place,
    /// What the layout makes of the key, where windows answer to that.
    Layout,
};

/// The press as the portable side sees it; nothing for a modifier key, which is no press of its
/// own, and for a key without a key code.
[[nodiscard]] std::optional<KeyEvent> translateKey(QKeyEvent const& event, KeyMeaning meaning);

/// Follows which of a hotkey's modifiers are still down. Returns the event as it is meant where
/// that is without them, else null.
[[nodiscard]] std::unique_ptr<QKeyEvent> withoutHotkeyModifiers(QKeyEvent const& event);

} // namespace quillbar::platform
