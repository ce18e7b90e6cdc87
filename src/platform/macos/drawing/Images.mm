#include "platform/macos/drawing/Images.h"

#include "platform/macos/drawing/Conversions.h"
#include "platform/macos/text/Strings.h"

#include <algorithm>

namespace quillbar::platform {

namespace {

NSImage* systemSymbol(std::string_view name, std::string_view description = {})
{
    return [NSImage imageWithSystemSymbolName:nsString(name)
                     accessibilityDescription:description.empty() ? nil : nsString(description)];
}

/// The largest rectangle of that shape in the middle of another.
NSRect fitted(NSSize shape, NSRect rect)
{
    auto const scale = std::min(rect.size.width / shape.width, rect.size.height / shape.height);
    auto const size = NSMakeSize(shape.width * scale, shape.height * scale);
    return NSMakeRect(
        NSMidX(rect) - size.width / 2, NSMidY(rect) - size.height / 2, size.width, size.height);
}

void drawImage(NSImage* image, NSRect rect)
{
    [image drawInRect:fitted(image.size, rect)
             fromRect:NSZeroRect
            operation:NSCompositingOperationSourceOver
             fraction:1];
}

/// An image with a place of its own to draw in, so that compositing reaches nothing beneath.
NSImage* layer(NSSize size, void (^draw)(NSRect rect))
{
    NSImage* const image = [NSImage imageWithSize:size
                                          flipped:NO
                                   drawingHandler:^BOOL(NSRect rect) {
                                       draw(rect);
                                       return YES;
                                   }];
    image.cacheMode = NSImageCacheAlways;
    return image;
}

NSImage* colored(NSImage* symbol, NSSize size, NSColor* color)
{
    return layer(size, ^(NSRect rect) {
        drawImage(symbol, rect);
        [color set];
        NSRectFillUsingOperation(rect, NSCompositingOperationSourceAtop);
    });
}

NSImage* imageOf(SymbolImage const& symbol, Font const& font)
{
    NSImage* image = systemSymbol(symbol.name, symbol.accessibilityDescription);
    if (!image) {
        image = [[NSBundle.mainBundle imageForResource:nsString(symbol.name)] copy];
        if (symbol.size)
            image.size = nsSize(*symbol.size);
        return image;
    }
    auto const pointSize = symbol.size ? symbol.size->height : font.size;
    NSImageSymbolConfiguration* const configuration =
        [NSImageSymbolConfiguration configurationWithPointSize:pointSize
                                                        weight:fontWeight(font.weight)];
    NSImage* const shape = [image imageWithSymbolConfiguration:configuration];
    auto const size = symbol.size ? nsSize(*symbol.size) : shape.size;
    if (symbol.tint)
        image = colored(shape, size, nsColor(*symbol.tint));
    else if (symbol.size)
        image = layer(size, ^(NSRect rect) { drawImage(shape, rect); });
    else
        image = shape;
    [image setTemplate:!symbol.tint];
    image.accessibilityDescription = nsString(symbol.accessibilityDescription);
    return image;
}

/// Carries out a drawing's operations, whose rectangles run top-down, in an unflipped context.
struct OperationPainter {
    double height;

    [[nodiscard]] NSRect placed(Rect const& rect) const
    {
        return NSMakeRect(rect.x, height - rect.y - rect.height, rect.width, rect.height);
    }

    void operator()(ClipToRoundedRect const& clip) const
    {
        [[NSBezierPath bezierPathWithRoundedRect:placed(clip.rect)
                                         xRadius:clip.radius
                                         yRadius:clip.radius] addClip];
    }

    void operator()(FillLinearGradient const& fill) const
    {
        NSGradient* const gradient = [[NSGradient alloc] initWithStartingColor:nsColor(fill.start)
                                                                   endingColor:nsColor(fill.end)];
        [gradient drawInRect:placed(fill.rect) angle:fill.angle];
    }

    void operator()(DrawSymbol const& symbol) const
    {
        drawSymbol(symbol.name, placed(symbol.rect), nsColor(symbol.color));
    }
};

NSImage* imageOf(std::shared_ptr<Drawing const> const& shared)
{
    auto const drawing = shared;
    return [NSImage imageWithSize:nsSize(drawing->size)
                          flipped:NO
                   drawingHandler:^BOOL(NSRect) {
                       for (auto const& operation : drawing->operations)
                           std::visit(OperationPainter { drawing->size.height }, operation);
                       return YES;
                   }];
}

} // namespace

NSImage* nsImage(Image const& image, Font const& font)
{
    if (auto const* symbol = std::get_if<SymbolImage>(&image))
        return imageOf(*symbol, font);
    return imageOf(std::get<std::shared_ptr<Drawing const>>(image));
}

void drawSymbol(std::string_view name, NSRect rect, NSColor* color)
{
    if (NSImage* const symbol = systemSymbol(name))
        drawImage(colored(symbol, rect.size, color), rect);
}

} // namespace quillbar::platform
