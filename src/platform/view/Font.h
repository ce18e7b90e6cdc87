#pragma once

#include <cstdint>

namespace quillbar::platform {

enum class FontWeight : std::uint8_t { Regular, Medium, Semibold };
enum class FontFamily : std::uint8_t { System, Monospaced };
enum class FontSlant : std::uint8_t { Upright, Italic };

/// A font of the system; the size is in points of the layout, as frames are.
struct Font {
    double size = 13;
    FontWeight weight = FontWeight::Regular;
    FontFamily family = FontFamily::System;
    FontSlant slant = FontSlant::Upright;

    friend bool operator==(Font const&, Font const&) = default;
};

} // namespace quillbar::platform
