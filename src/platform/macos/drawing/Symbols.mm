#include "platform/Symbols.h"

#include "platform/macos/text/Strings.h"

#import <AppKit/AppKit.h>

namespace quillbar::platform {

bool symbolExists(std::string_view name)
{
    return [NSImage imageWithSystemSymbolName:nsString(name) accessibilityDescription:nil] != nil;
}

std::optional<Image> bundleImage(std::string_view name, Size size)
{
    if (![NSBundle.mainBundle imageForResource:nsString(name)])
        return std::nullopt;
    // nsImage() finds it by its name, as no system symbol has it.
    return SymbolImage {
        .name = std::string(name),
        .accessibilityDescription = {},
        .size = size,
        .tint = std::nullopt,
    };
}

} // namespace quillbar::platform
