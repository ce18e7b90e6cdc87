#pragma once

#include <QKeyEvent>

#include <memory>

namespace quillbar::platform {

/// Follows which of a hotkey's modifiers are still down. Returns the event as it is meant where
/// that is without them, else null.
[[nodiscard]] std::unique_ptr<QKeyEvent> withoutHotkeyModifiers(QKeyEvent const& event);

} // namespace quillbar::platform
