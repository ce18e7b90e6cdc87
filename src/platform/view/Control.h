#pragma once

#include "platform/view/Font.h"
#include "platform/view/View.h"

namespace quillbar::platform {

/// A view with a font that can be switched off.
class Control : public View {
public:
    void setEnabled(bool isEnabled) { set(isEnabled_, isEnabled); }
    void setFont(Font font) { set(font_, font); }

    [[nodiscard]] bool isEnabled() const { return isEnabled_; }
    [[nodiscard]] Font const& font() const { return font_; }

    [[nodiscard]] bool acceptsFirstResponder() const override { return isEnabled_; }

protected:
    using View::View;

private:
    bool isEnabled_ = true;
    Font font_;
};

} // namespace quillbar::platform
