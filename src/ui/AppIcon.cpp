#include "platform/Fatal.h"
#include "platform/Symbols.h"
#include "ui/AboutWindowController.h"

#include <memory>

namespace quillbar {

using platform::Rect;

platform::Image AboutWindowController::appIcon(double size)
{
    if (auto image = platform::bundleImage("AppIcon", { size, size }))
        return *image;
    return makeIcon(size);
}

platform::Image AboutWindowController::makeIcon(double size)
{
    constexpr auto heart = "heart.fill";
    constexpr platform::Rgba pink { .red = 0.95, .green = 0.40, .blue = 0.65, .alpha = 1 };
    constexpr platform::Rgba violet { .red = 0.55, .green = 0.25, .blue = 0.75, .alpha = 1 };
    if (!platform::symbolExists(heart))
        platform::fatalError("the system has no heart.fill symbol");

    Rect const square { 0, 0, size, size };
    auto const heartSize = 0.62 * size;
    auto const margin = (size - heartSize) / 2;
    return std::make_shared<platform::Drawing const>(platform::Drawing {
        .size = { size, size },
        .operations = {
            platform::ClipToRoundedRect { .rect = square, .radius = 0.22 * size },
            platform::FillLinearGradient {
                .rect = square, .start = pink, .end = violet, .angle = -60 },
            platform::DrawSymbol { .name = heart,
                .rect = { margin, margin, heartSize, heartSize },
                .color = platform::white },
        },
    });
}

} // namespace quillbar
