#include "platform/linux/input/KeyNames.h"

#include "platform/linux/input/ModifierTable.h"
#include "platform/linux/input/VirtualKeyCodes.h"

#include <xkbcommon/xkbcommon.h>

#include <array>
#include <memory>

namespace quillbar::platform {

namespace {

using namespace Qt::StringLiterals;

struct CustomaryName {
    std::uint32_t keysym;
    char const* name;
};
constexpr std::array<CustomaryName, 5> customaryNames { {
    { XKB_KEY_space, "Space" },
    { XKB_KEY_Prior, "Page Up" },
    { XKB_KEY_Next, "Page Down" },
    { XKB_KEY_BackSpace, "Backspace" },
    { XKB_KEY_ISO_Left_Tab, "Tab" },
} };

bool isOnKeypad(std::uint32_t keysym)
{
    return keysym >= XKB_KEY_KP_Space && keysym <= XKB_KEY_KP_Equal;
}

QString systemName(std::uint32_t keysym)
{
    std::array<char, 64> name {};
    if (keysym == XKB_KEY_NoSymbol || xkb_keysym_get_name(keysym, name.data(), name.size()) <= 0)
        return {};
    auto text = QString::fromLatin1(name.data());
    if (text.startsWith("XF86"_L1))
        text.remove(0, 4);
    return text.replace("KP_"_L1, "Keypad "_L1).replace(u'_', u' ');
}

template <auto release> struct Release {
    template <typename Object> void operator()(Object* object) const { release(object); }
};
using Context = std::unique_ptr<xkb_context, Release<xkb_context_unref>>;
using Keymap = std::unique_ptr<xkb_keymap, Release<xkb_keymap_unref>>;

Keymap usKeymap()
{
    Context const context { xkb_context_new(XKB_CONTEXT_NO_ENVIRONMENT_NAMES) };
    if (!context)
        return nullptr;
    xkb_rule_names const names { "evdev", "pc105", "us", "", "" };
    return Keymap { xkb_keymap_new_from_names(context.get(), &names, XKB_KEYMAP_COMPILE_NO_FLAGS) };
}

} // namespace

std::string nameOfKey(std::uint32_t keysym)
{
    for (auto const& [customary, name] : customaryNames) {
        if (customary == keysym)
            return name;
    }
    auto const character = static_cast<char32_t>(xkb_keysym_to_utf32(keysym));
    if (isOnKeypad(keysym) || !QChar::isPrint(character))
        return systemName(keysym).toStdString();
    return QString::fromUcs4(&character, 1).toUpper().toStdString();
}

std::uint32_t usKeysym(std::uint32_t keyCode)
{
    static auto const keymap = usKeymap();
    auto const evdevCode = virtualKeyToEvdev(keyCode);
    if (!keymap || !evdevCode)
        return XKB_KEY_NoSymbol;
    constexpr xkb_keycode_t xkbOffset = 8;
    xkb_keysym_t const* keysyms = nullptr;
    auto const count
        = xkb_keymap_key_get_syms_by_level(keymap.get(), *evdevCode + xkbOffset, 0, 0, &keysyms);
    return count == 1 ? keysyms[0] : XKB_KEY_NoSymbol;
}

std::optional<QString> triggerText(KeyCombination const& combination)
{
    auto const keysym = usKeysym(combination.keyCode);
    std::array<char, 64> key {};
    if (keysym == XKB_KEY_NoSymbol || xkb_keysym_get_name(keysym, key.data(), key.size()) <= 0)
        return std::nullopt;
    return QString::fromStdString(
        modifierText(combination.modifiers, &ModifierRow::trigger) + key.data());
}

} // namespace quillbar::platform
