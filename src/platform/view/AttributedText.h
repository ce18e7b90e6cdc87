#pragma once

#include "platform/view/Color.h"
#include "platform/view/Font.h"

#include <string>

namespace quillbar::platform {

/// A text in one style.
struct AttributedText {
    std::string text;
    Font font;
    Color color = SystemColor::Label;
    bool isUnderlined = false;

    friend bool operator==(AttributedText const&, AttributedText const&) = default;
};

} // namespace quillbar::platform
