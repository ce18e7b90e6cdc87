#include "platform/linux/drawing/Contrast.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace quillbar::platform {

namespace {

constexpr double flare = 0.05;

/// Red, green and blue by their share of the light.
using Light = std::array<double, 3>;

double decoded(double component)
{
    return component <= 0.04045 ? component / 12.92 : std::pow((component + 0.055) / 1.055, 2.4);
}

float encoded(double light)
{
    auto const component
        = light <= 0.0031308 ? light * 12.92 : 1.055 * std::pow(light, 1 / 2.4) - 0.055;
    return static_cast<float>(std::clamp(component, 0.0, 1.0));
}

Light lightOf(QColor const& color)
{
    return { decoded(color.redF()), decoded(color.greenF()), decoded(color.blueF()) };
}

double luminance(Light const& light)
{
    return 0.2126 * light[0] + 0.7152 * light[1] + 0.0722 * light[2];
}

double contrastOf(double one, double other)
{
    return (std::max(one, other) + flare) / (std::min(one, other) + flare);
}

} // namespace

QColor blended(QColor const& color, QColor const& background)
{
    auto const mix = [share = color.alphaF()](
                         float over, float under) { return over * share + under * (1 - share); };
    return QColor::fromRgbF(mix(color.redF(), background.redF()),
        mix(color.greenF(), background.greenF()), mix(color.blueF(), background.blueF()));
}

QColor legible(QColor const& color, QColor const& background, double contrast)
{
    auto light = lightOf(blended(color, background));
    auto const own = luminance(light);
    auto const under = luminance(lightOf(background));
    if (contrastOf(own, under) >= contrast)
        return color;
    double end = own > under ? 1 : 0;
    if (contrastOf(end, under) < contrast)
        end = contrastOf(1, under) > contrastOf(0, under) ? 1 : 0;
    double const wanted
        = end == 1 ? contrast * (under + flare) - flare : (under + flare) / contrast - flare;
    double const share = std::clamp((wanted - own) / (end - own), 0.0, 1.0);
    for (auto& component : light)
        component += (end - component) * share;
    return QColor::fromRgbF(encoded(light[0]), encoded(light[1]), encoded(light[2]));
}

} // namespace quillbar::platform
