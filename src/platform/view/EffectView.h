#pragma once

#include "platform/view/Color.h"
#include "platform/view/View.h"

namespace quillbar::platform {

/// The background of a floating panel: what lies behind the window, blurred, where the system can
/// draw that; opaque elsewhere.
class EffectView : public View {
public:
    EffectView()
        : View(ViewKind::EffectView)
    {
    }

    void setCornerRadius(double radius) { set(cornerRadius_, radius); }
    void setBorderWidth(double width) { set(borderWidth_, width); }
    void setBorderColor(Color color) { set(borderColor_, color); }

    [[nodiscard]] double cornerRadius() const { return cornerRadius_; }
    [[nodiscard]] double borderWidth() const { return borderWidth_; }
    [[nodiscard]] Color const& borderColor() const { return borderColor_; }

private:
    double cornerRadius_ = 0;
    double borderWidth_ = 0;
    Color borderColor_ = SystemColor::Separator;
};

} // namespace quillbar::platform
