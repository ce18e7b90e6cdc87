#include "platform/linux/hotkeys/KeyNames.h"

#include <QString>
#include <xkbcommon/xkbcommon.h>

#include <array>

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

} // namespace quillbar::platform
