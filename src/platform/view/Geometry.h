#pragma once

namespace quillbar::platform {

/// All measures are points. Coordinates run top-down: the origin is at the top left.
struct Point {
    double x = 0;
    double y = 0;

    friend bool operator==(Point const&, Point const&) = default;
};

struct Size {
    double width = 0;
    double height = 0;

    friend bool operator==(Size const&, Size const&) = default;
};

struct Rect {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;

    friend bool operator==(Rect const&, Rect const&) = default;
};

/// Whether the two share an area; edges that only touch do not.
[[nodiscard]] constexpr bool intersects(Rect const& left, Rect const& right)
{
    return left.x < right.x + right.width && right.x < left.x + left.width
        && left.y < right.y + right.height && right.y < left.y + left.height;
}

[[nodiscard]] constexpr bool contains(Rect const& rect, Point const& point)
{
    return point.x >= rect.x && point.x < rect.x + rect.width && point.y >= rect.y
        && point.y < rect.y + rect.height;
}

[[nodiscard]] constexpr Rect offsetBy(Rect const& rect, Point const& distance)
{
    return { rect.x + distance.x, rect.y + distance.y, rect.width, rect.height };
}

} // namespace quillbar::platform
