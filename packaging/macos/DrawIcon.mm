// Writes the program's own icon as an .icns file, which is the argument.
#include "platform/macos/drawing/Images.h"
#include "ui/AboutWindowController.h"

#import <AppKit/AppKit.h>

#include <iterator>

namespace {

/// A picture of the file: the type of its entry and its edge in pixels.
struct Picture {
    char const* type;
    NSInteger edge;
};

// Each a PNG. The two smallest sizes have no type for one; macOS scales the next larger picture.
constexpr Picture pictures[] = {
    { "ic11", 32 },
    { "ic12", 64 },
    { "ic07", 128 },
    { "ic13", 256 },
    { "ic08", 256 },
    { "ic14", 512 },
    { "ic09", 512 },
    { "ic10", 1024 },
};

NSData* drawn(NSInteger edge)
{
    auto const bitmap = [[NSBitmapImageRep alloc] initWithBitmapDataPlanes:nullptr
                                                                pixelsWide:edge
                                                                pixelsHigh:edge
                                                             bitsPerSample:8
                                                           samplesPerPixel:4
                                                                  hasAlpha:YES
                                                                  isPlanar:NO
                                                            colorSpaceName:NSCalibratedRGBColorSpace
                                                               bytesPerRow:0
                                                              bitsPerPixel:0];
    auto const context = [NSGraphicsContext graphicsContextWithBitmapImageRep:bitmap];
    auto const size = static_cast<double>(edge);
    [NSGraphicsContext saveGraphicsState];
    NSGraphicsContext.currentContext = context;
    [quillbar::platform::nsImage(quillbar::AboutWindowController::appIcon(size))
        drawInRect:NSMakeRect(0, 0, size, size)];
    [context flushGraphics];
    [NSGraphicsContext restoreGraphicsState];
    return [bitmap representationUsingType:NSBitmapImageFileTypePNG properties:@ {}];
}

/// A type and a length that counts the eight bytes of both, as every part of the file begins.
void appendHeader(NSMutableData* file, char const* type, NSUInteger contentLength)
{
    auto const length = NSSwapHostIntToBig(static_cast<unsigned>(contentLength + 8));
    [file appendBytes:type length:4];
    [file appendBytes:&length length:sizeof length];
}

} // namespace

int main(int argumentCount, char** arguments)
{
    @autoreleasepool {
        if (argumentCount != 2)
            return 2;
        auto const content = [NSMutableData data];
        for (auto const& picture : pictures) {
            auto const png = drawn(picture.edge);
            appendHeader(content, picture.type, png.length);
            [content appendData:png];
        }
        auto const file = [NSMutableData data];
        appendHeader(file, "icns", content.length);
        [file appendData:content];
        return [file writeToFile:@(arguments[1]) atomically:YES] ? 0 : 1;
    }
}
