#pragma once

#include "platform/KeyMonitor.h"

#include <QKeyEvent>

#include <optional>

namespace quillbar::platform {

/// The press as the portable side sees it; nothing for a modifier key, which is no press of its
/// own, and for a key without a key code.
[[nodiscard]] std::optional<KeyEvent> translateKey(QKeyEvent const& event);

} // namespace quillbar::platform
