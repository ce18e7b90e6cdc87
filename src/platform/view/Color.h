#pragma once

#include <cstdint>
#include <variant>

namespace quillbar::platform {

/// Components from 0 to 1, not premultiplied.
struct Rgba {
    double red = 0;
    double green = 0;
    double blue = 0;
    double alpha = 1;

    friend bool operator==(Rgba const&, Rgba const&) = default;
};

/// A colour that the system chooses to suit its theme.
enum class SystemColor : std::uint8_t {
    Label,
    SecondaryLabel,
    TertiaryLabel,
    PlaceholderText,
    Separator,
    Accent,
    Red,
};

using Color = std::variant<SystemColor, Rgba>;

inline constexpr Rgba white { .red = 1, .green = 1, .blue = 1, .alpha = 1 };

} // namespace quillbar::platform
