#include "app/Badge.h"

#include "platform/Symbols.h"

#include <memory>

namespace quillbar {

namespace {

struct ColorPair {
    platform::Rgba start;
    platform::Rgba end;
};

constexpr std::array<ColorPair, 8> colorPairs {
    ColorPair { { 0.37, 0.58, 0.98, 1 }, { 0.12, 0.33, 0.78, 1 } },
    ColorPair { { 0.66, 0.44, 0.99, 1 }, { 0.45, 0.20, 0.80, 1 } },
    ColorPair { { 0.98, 0.45, 0.68, 1 }, { 0.82, 0.20, 0.52, 1 } },
    ColorPair { { 0.24, 0.82, 0.78, 1 }, { 0.05, 0.55, 0.56, 1 } },
    ColorPair { { 1.00, 0.62, 0.30, 1 }, { 0.86, 0.34, 0.09, 1 } },
    ColorPair { { 0.36, 0.83, 0.55, 1 }, { 0.13, 0.59, 0.38, 1 } },
    ColorPair { { 0.42, 0.47, 0.98, 1 }, { 0.28, 0.27, 0.76, 1 } },
    ColorPair { { 0.98, 0.80, 0.32, 1 }, { 0.83, 0.58, 0.10, 1 } },
};

platform::Image drawBadge(ColorPair const& colors)
{
    constexpr auto side = 16.0;
    constexpr auto cornerRadius = 4.48;
    constexpr auto glyphSide = 9.28;
    constexpr auto glyphOrigin = 3.36;
    constexpr auto bottomToTop = 90.0;
    constexpr platform::Rect square { 0, 0, side, side };

    platform::Drawing badge { .size = { side, side },
        .operations = {
            platform::ClipToRoundedRect { .rect = square, .radius = cornerRadius },
            platform::FillLinearGradient {
                .rect = square, .start = colors.start, .end = colors.end, .angle = bottomToTop },
        } };
    if (platform::symbolExists("sparkle"))
        badge.operations.emplace_back(platform::DrawSymbol { .name = "sparkle",
            .rect = { glyphOrigin, glyphOrigin, glyphSide, glyphSide },
            .color = platform::white });
    return std::make_shared<platform::Drawing const>(std::move(badge));
}

} // namespace

Badges::Badges()
{
    for (std::size_t i = 0; i < images_.size(); ++i)
        images_[i] = drawBadge(colorPairs[i]);
}

} // namespace quillbar
