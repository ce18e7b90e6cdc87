#include "platform/linux/hotkeys/TriggerText.h"

#include "platform/KeyModifiers.h"
#include "platform/linux/hotkeys/VirtualKeyCodes.h"

#include <xkbcommon/xkbcommon.h>

#include <array>
#include <memory>

namespace quillbar::platform {

namespace {

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
    struct Modifier {
        KeyModifiers bit;
        char const* name;
    };
    constexpr std::array modifiers { Modifier { controlKey, "CTRL+" },
        Modifier { optionKey, "ALT+" }, Modifier { shiftKey, "SHIFT+" },
        Modifier { commandKey, "LOGO+" } };

    auto const keysym = usKeysym(combination.keyCode);
    std::array<char, 64> key {};
    if (keysym == XKB_KEY_NoSymbol || xkb_keysym_get_name(keysym, key.data(), key.size()) <= 0)
        return std::nullopt;
    QString text;
    for (auto const& modifier : modifiers) {
        if ((combination.modifiers & modifier.bit) != 0)
            text += QLatin1String(modifier.name);
    }
    return text + QLatin1String(key.data());
}

} // namespace quillbar::platform
