#pragma once

#include "platform/view/Color.h"
#include "platform/view/Geometry.h"

#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace quillbar::platform {

/// A symbol of the system. Without a size it takes that of the place it is shown in; without a
/// tint it takes that place's text colour.
struct SymbolImage {
    std::string name;
    std::string accessibilityDescription;
    std::optional<Size> size;
    std::optional<Color> tint;

    friend bool operator==(SymbolImage const&, SymbolImage const&) = default;
};

/// Restricts everything drawn after it.
struct ClipToRoundedRect {
    Rect rect;
    double radius = 0;

    friend bool operator==(ClipToRoundedRect const&, ClipToRoundedRect const&) = default;
};

/// Fills the rectangle along the angle, in degrees counter-clockwise: 0 runs from left to right,
/// 90 from bottom to top. The ends lie where the gradient's normal touches the rectangle's corners.
struct FillLinearGradient {
    Rect rect;
    Rgba start;
    Rgba end;
    double angle = 0;

    friend bool operator==(FillLinearGradient const&, FillLinearGradient const&) = default;
};

/// Draws the shape of a symbol in one colour.
struct DrawSymbol {
    std::string name;
    Rect rect;
    Rgba color;

    friend bool operator==(DrawSymbol const&, DrawSymbol const&) = default;
};

using DrawingOperation = std::variant<ClipToRoundedRect, FillLinearGradient, DrawSymbol>;

/// An image described by what is drawn, in this order, on a clear background.
struct Drawing {
    Size size;
    std::vector<DrawingOperation> operations;

    friend bool operator==(Drawing const&, Drawing const&) = default;
};

/// Drawings are shared because many items show the same one; they never change.
using Image = std::variant<SymbolImage, std::shared_ptr<Drawing const>>;

/// The symbol's image, or nothing when the system has no symbol of that name.
[[nodiscard]] std::optional<Image> symbolImage(
    std::string name, std::string accessibilityDescription = {});

} // namespace quillbar::platform
