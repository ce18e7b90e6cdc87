#include "platform/macos/drawing/Conversions.h"

#include "platform/Text.h"
#include "platform/macos/text/Strings.h"

namespace quillbar::platform {

namespace {

NSColor* systemColor(SystemColor color)
{
    switch (color) {
    case SystemColor::Label:
        return NSColor.labelColor;
    case SystemColor::SecondaryLabel:
        return NSColor.secondaryLabelColor;
    case SystemColor::TertiaryLabel:
        return NSColor.tertiaryLabelColor;
    case SystemColor::PlaceholderText:
        return NSColor.placeholderTextColor;
    case SystemColor::Separator:
        return NSColor.separatorColor;
    case SystemColor::Accent:
        return NSColor.controlAccentColor;
    case SystemColor::Red:
        return NSColor.systemRedColor;
    }
    return NSColor.labelColor;
}

} // namespace

NSFontWeight fontWeight(FontWeight weight)
{
    switch (weight) {
    case FontWeight::Regular:
        return NSFontWeightRegular;
    case FontWeight::Medium:
        return NSFontWeightMedium;
    case FontWeight::Semibold:
        return NSFontWeightSemibold;
    }
    return NSFontWeightRegular;
}

NSColor* nsColor(Color const& color)
{
    if (auto const* system = std::get_if<SystemColor>(&color))
        return systemColor(*system);
    auto const& rgba = std::get<Rgba>(color);
    return [NSColor colorWithCalibratedRed:rgba.red
                                     green:rgba.green
                                      blue:rgba.blue
                                     alpha:rgba.alpha];
}

NSFont* nsFont(Font const& font)
{
    auto const weight = fontWeight(font.weight);
    NSFont* const upright = font.family == FontFamily::Monospaced
        ? [NSFont monospacedSystemFontOfSize:font.size weight:weight]
        : [NSFont systemFontOfSize:font.size weight:weight];
    if (font.slant == FontSlant::Upright)
        return upright;
    return [NSFontManager.sharedFontManager convertFont:upright toHaveTrait:NSItalicFontMask];
}

NSAttributedString* attributedString(AttributedText const& text)
{
    NSMutableDictionary* const attributes = [NSMutableDictionary dictionaryWithDictionary:@ {
        NSFontAttributeName : nsFont(text.font),
        NSForegroundColorAttributeName : nsColor(text.color),
    }];
    if (text.isUnderlined)
        attributes[NSUnderlineStyleAttributeName] = @(NSUnderlineStyleSingle);
    return [[NSAttributedString alloc] initWithString:nsString(shortened(text.text))
                                           attributes:attributes];
}

} // namespace quillbar::platform
