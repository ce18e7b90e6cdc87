#pragma once

#include "platform/view/Menu.h"

#include <QKeyEvent>
#include <QString>

namespace quillbar::platform {

/// As a menu shows it, for example "Super+Alt+T"; empty when there is none.
[[nodiscard]] QString keyText(KeyEquivalent const& equivalent);

/// Whether the key press is the equivalent. Digits are found on their row by position too, because
/// some layouts have them behind Shift; so are letters on layouts without Latin ones.
[[nodiscard]] bool isKeyEquivalent(QKeyEvent const& press, KeyEquivalent const& equivalent);

} // namespace quillbar::platform
