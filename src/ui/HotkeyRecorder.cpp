#include "ui/HotkeyRecorder.h"

#include "platform/Fatal.h"
#include "platform/KeyModifiers.h"

#include <utility>

namespace quillbar {

namespace {

/// Command comes first, unlike in the platform's own menus.
constexpr std::pair<platform::KeyModifiers, char const*> modifierSymbols[] = {
    { platform::commandKey, "⌘" },
    { platform::optionKey, "⌥" },
    { platform::controlKey, "⌃" },
    { platform::shiftKey, "⇧" },
};

std::string keyName(std::uint32_t keyCode)
{
    // Counted through the alphabet although the keys with these codes are A, S, D, F, H, G and Z:
    // people know their hotkeys by these labels.
    if (keyCode <= 6)
        return std::string(1, static_cast<char>('A' + keyCode));

    switch (keyCode) {
    case 36:
        return "Return";
    case 48:
        return "Tab";
    case 49:
        return "Space";
    case 51:
        return "Delete";
    case 53:
        return "Esc";
    default:
        return "·" + std::to_string(keyCode);
    }
}

} // namespace

std::string HotkeyRecorder::label(std::int64_t keyCode, std::uint32_t modifiers)
{
    if (!std::in_range<std::uint32_t>(keyCode))
        platform::fatalError("a hotkey's key code is negative or too large");

    std::string text;
    for (auto const& [bit, symbol] : modifierSymbols) {
        if (modifiers & bit)
            text += symbol;
    }
    return text + keyName(static_cast<std::uint32_t>(keyCode));
}

} // namespace quillbar
