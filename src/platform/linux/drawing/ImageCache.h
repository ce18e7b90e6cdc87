#pragma once

#include "platform/view/Image.h"

#include <cstddef>
#include <memory>
#include <utility>
#include <variant>
#include <vector>

namespace quillbar::platform {

/// Drawings are equal when their operations are, even as two objects.
[[nodiscard]] inline bool isSameImage(Image const& left, Image const& right)
{
    auto const* a = std::get_if<std::shared_ptr<Drawing const>>(&left);
    auto const* b = std::get_if<std::shared_ptr<Drawing const>>(&right);
    if (a == nullptr || b == nullptr || *a == nullptr || *b == nullptr)
        return left == right;
    return *a == *b || **a == **b;
}

/// Keeps what was made of an image, for the rows of a menu show few different ones.
template <typename Value> class ImageCache {
public:
    template <typename Make> Value const& get(Image const& image, Make const& make)
    {
        for (auto const& entry : entries_) {
            if (isSameImage(entry.first, image))
                return entry.second;
        }
        constexpr std::size_t mostEntries = 64;
        if (entries_.size() == mostEntries)
            entries_.clear();
        return entries_.emplace_back(image, make(image)).second;
    }

private:
    std::vector<std::pair<Image, Value>> entries_;
};

} // namespace quillbar::platform
