#import "platform/macos/drawing/Conversions.h"
#import "platform/macos/drawing/Images.h"
#import "platform/macos/views/NativeView.h"
#include "platform/view/ImageView.h"

namespace quillbar::platform {

namespace {

struct ImagePeer final : NativeView {
    explicit ImagePeer(View& imageView)
        : NativeView(imageView, [[NSImageView alloc] init])
    {
    }

    void sync() override
    {
        auto const& portableView = static_cast<ImageView const&>(*portable);
        auto* const imageView = static_cast<NSImageView*>(view);
        auto const& image = portableView.image();
        auto const& tint = portableView.contentTintColor();
        imageView.imageScaling = portableView.scaling() == ImageScaling::ProportionallyDown
            ? NSImageScaleProportionallyDown
            : NSImageScaleProportionallyUpOrDown;
        imageView.contentTintColor = tint ? nsColor(*tint) : nil;
        imageView.image = image ? nsImage(*image) : nil;
    }
};

} // namespace

NativeView* makeImagePeer(View& view)
{
    return new ImagePeer(view);
}

} // namespace quillbar::platform
