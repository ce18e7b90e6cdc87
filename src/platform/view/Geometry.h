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

} // namespace quillbar::platform
