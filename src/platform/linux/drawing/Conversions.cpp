#include "platform/linux/drawing/Conversions.h"

#include "platform/Text.h"
#include "platform/linux/input/ModifierTable.h"

#include <QFontDatabase>
#include <QGuiApplication>

#include <algorithm>
#include <cmath>

namespace quillbar::platform {

namespace {

QColor withAlpha(QColor color, double alpha)
{
    color.setAlphaF(static_cast<float>(alpha));
    return color;
}

float component(double value)
{
    return static_cast<float>(std::clamp(value, 0.0, 1.0));
}

QColor systemColor(SystemColor color, QPalette const& palette)
{
    auto const text = palette.color(QPalette::Active, QPalette::WindowText);
    switch (color) {
    case SystemColor::Label:
        return text;
    case SystemColor::SecondaryLabel:
        return withAlpha(text, isDark(palette) ? 0.70 : 0.65);
    case SystemColor::TertiaryLabel:
        return withAlpha(text, isDark(palette) ? 0.55 : 0.50);
    case SystemColor::PlaceholderText:
        return palette.color(QPalette::Active, QPalette::PlaceholderText);
    case SystemColor::Separator:
        return withAlpha(text, 0.15);
    case SystemColor::Accent:
        return palette.color(QPalette::Active, QPalette::Highlight);
    case SystemColor::Red:
        // Stands out from the grey of dark buttons too.
        return isDark(palette) ? QColor(0xff, 0x7b, 0x72) : QColor(0xff, 0x3b, 0x30);
    }
    return text;
}

QFont::Weight toQtWeight(FontWeight weight)
{
    switch (weight) {
    case FontWeight::Regular:
        return QFont::Normal;
    case FontWeight::Medium:
        return QFont::Medium;
    case FontWeight::Semibold:
        return QFont::DemiBold;
    }
    return QFont::Normal;
}

} // namespace

QString toQString(std::string_view text)
{
    return QString::fromStdString(shortened(text));
}

QString withoutTabs(QString text)
{
    constexpr QChar emSpace(0x2003);
    return text.replace(u'\t', QString(2, emSpace));
}

QRectF toQRectF(Rect const& rect)
{
    return { rect.x, rect.y, rect.width, rect.height };
}

QColor toQColor(Color const& color, QPalette const& palette)
{
    if (auto const* system = std::get_if<SystemColor>(&color))
        return systemColor(*system, palette);
    auto const& rgba = std::get<Rgba>(color);
    return QColor::fromRgbF(
        component(rgba.red), component(rgba.green), component(rgba.blue), component(rgba.alpha));
}

QFont toQFont(Font const& font)
{
    auto result = font.family == FontFamily::Monospaced
        ? QFontDatabase::systemFont(QFontDatabase::FixedFont)
        : QGuiApplication::font();
    result.setPixelSize(std::max(1, static_cast<int>(std::lround(font.size))));
    result.setWeight(toQtWeight(font.weight));
    result.setItalic(font.slant == FontSlant::Italic);
    return result;
}

bool isDark(QPalette const& palette)
{
    return palette.color(QPalette::Active, QPalette::Window).lightness() < 128;
}

Qt::KeyboardModifiers toQtModifiers(KeyModifiers modifiers)
{
    Qt::KeyboardModifiers result;
    for (auto const& row : modifierTable)
        result.setFlag(row.qt, (modifiers & row.modifier) != 0);
    return result;
}

KeyModifiers toKeyModifiers(Qt::KeyboardModifiers modifiers)
{
    KeyModifiers result = 0;
    for (auto const& row : modifierTable) {
        if (modifiers.testFlag(row.qt))
            result |= row.modifier;
    }
    return result;
}

} // namespace quillbar::platform
