#pragma once

#include "platform/view/Image.h"

#include <array>
#include <cstddef>

namespace quillbar {

/// The coloured badges of pinned shortcuts, drawn once and shared by all items of a menu.
class Badges {
public:
    Badges();

    /// The badge of the pin at that position; the colours repeat after eight.
    [[nodiscard]] platform::Image const& at(std::size_t position) const
    {
        return images_[position % images_.size()];
    }

private:
    std::array<platform::Image, 8> images_;
};

} // namespace quillbar
