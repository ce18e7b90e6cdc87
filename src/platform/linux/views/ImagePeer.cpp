#include "platform/linux/views/CachedImage.h"
#include "platform/linux/views/NativeView.h"
#include "platform/linux/views/TextDrawing.h"
#include "platform/view/ImageView.h"

#include <QPainter>

namespace quillbar::platform {

namespace {

class ImagePeer final : public Peer<QWidget, ImageView> {
public:
    using Peer::Peer;

    void sync() override
    {
        image_.invalidate();
        update();
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        if (!portable || !portableView()->image())
            return;
        QPainter painter(this);
        auto const tint = portableView()->contentTintColor().value_or(SystemColor::Label);
        image_.drawScaled(painter, rect(), *portableView()->image(),
            textColor(*portable, tint, palette()),
            portableView()->scaling() == ImageScaling::ProportionallyUpOrDown);
    }

private:
    CachedImage image_;
};

} // namespace

NativeView* makeImagePeer(View& view, QWidget& parent)
{
    return new ImagePeer(view, parent);
}

} // namespace quillbar::platform
