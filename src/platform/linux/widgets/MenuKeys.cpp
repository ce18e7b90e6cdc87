#include "platform/linux/widgets/MenuKeys.h"

#include "platform/linux/drawing/Conversions.h"
#include "platform/linux/input/ModifierTable.h"

#include <cctype>
#include <string_view>

namespace quillbar::platform {

using namespace std::string_view_literals;

namespace {

// What the key at this position is called on a US keyboard; 0 for keys that type no such character.
char usCharacter(quint32 scanCode)
{
    struct Run {
        quint32 first;
        std::string_view characters;
    };
    static constexpr Run runs[] = {
        { 10, "1234567890"sv },
        { 24, "qwertyuiop"sv },
        { 38, "asdfghjkl"sv },
        { 52, "zxcvbnm,"sv },
    };
    for (auto const& [first, characters] : runs) {
        if (scanCode >= first && scanCode - first < characters.size())
            return characters[scanCode - first];
    }
    return 0;
}

} // namespace

QString keyText(KeyEquivalent const& equivalent)
{
    if (equivalent.key.empty())
        return {};
    return QString::fromStdString(modifierText(equivalent.allModifiers(), &ModifierRow::name))
        + toQString(equivalent.key).toUpper();
}

bool isKeyEquivalent(QKeyEvent const& press, KeyEquivalent const& equivalent)
{
    if (equivalent.key.size() != 1)
        return false;
    auto const wanted = static_cast<unsigned char>(equivalent.key.front());
    auto const isDigit = std::isdigit(wanted) != 0;
    auto pressed = press.modifiers()
        & (Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
    auto const isSameKey = press.key() == std::toupper(wanted);
    // Where digits need Shift to be typed, that Shift is part of the digit.
    if (isDigit && isSameKey)
        pressed.setFlag(Qt::ShiftModifier, false);
    if (pressed != toQtModifiers(equivalent.allModifiers()))
        return false;
    constexpr int lastAscii = 0x7f;
    auto const isByPosition = isDigit || press.key() > lastAscii;
    return isSameKey
        || (isByPosition && usCharacter(press.nativeScanCode()) == std::tolower(wanted));
}

} // namespace quillbar::platform
