#pragma once

#include "platform/KeyModifiers.h"

#include <Qt>
#include <QtGlobal>

#include <array>
#include <string>

namespace quillbar::platform {

/// A modifier key as each of the parties calls it.
struct ModifierRow {
    KeyModifiers modifier;
    Qt::KeyboardModifier qt;
    /// On the keyboard, and in a menu that is exported over D-Bus.
    char const* name;
    /// In a trigger of the portal's GlobalShortcuts.
    char const* trigger;
};

/// In the order of the symbols that stand for them in the windows.
inline constexpr std::array<ModifierRow, 4> modifierTable { {
    { commandKey, Qt::MetaModifier, "Super", "LOGO" },
    { optionKey, Qt::AltModifier, "Alt", "ALT" },
    { controlKey, Qt::ControlModifier, "Control", "CTRL" },
    { shiftKey, Qt::ShiftModifier, "Shift", "SHIFT" },
} };

/// The names or the triggers of the modifiers, each followed by a plus: "Super+Alt+".
[[nodiscard]] inline std::string modifierText(
    KeyModifiers modifiers, char const* ModifierRow::*column)
{
    std::string text;
    for (auto const& row : modifierTable) {
        if ((modifiers & row.modifier) != 0)
            text.append(row.*column).append("+");
    }
    return text;
}

} // namespace quillbar::platform
