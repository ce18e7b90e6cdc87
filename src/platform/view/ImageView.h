#pragma once

#include "platform/view/Image.h"
#include "platform/view/View.h"

#include <optional>

namespace quillbar::platform {

enum class ImageScaling : std::uint8_t {
    /// Only an image that is larger than the frame is scaled.
    ProportionallyDown,
    ProportionallyUpOrDown,
};

/// Shows an image in the middle of its frame, or nothing.
class ImageView : public View {
public:
    explicit ImageView(std::optional<Image> image = std::nullopt)
        : View(ViewKind::ImageView)
        , image_(std::move(image))
    {
    }

    void setImage(std::optional<Image> image) { set(image_, std::move(image)); }
    /// Colours a symbol that brings no tint of its own.
    void setContentTintColor(std::optional<Color> color) { set(contentTintColor_, color); }
    void setScaling(ImageScaling scaling) { set(scaling_, scaling); }

    [[nodiscard]] std::optional<Image> const& image() const { return image_; }
    [[nodiscard]] std::optional<Color> const& contentTintColor() const { return contentTintColor_; }
    [[nodiscard]] ImageScaling scaling() const { return scaling_; }

    [[nodiscard]] std::string visibleText() const override
    {
        auto const* const symbol = image_ ? std::get_if<SymbolImage>(&*image_) : nullptr;
        return symbol ? symbol->accessibilityDescription : std::string();
    }

private:
    std::optional<Image> image_;
    std::optional<Color> contentTintColor_;
    ImageScaling scaling_ = ImageScaling::ProportionallyDown;
};

} // namespace quillbar::platform
