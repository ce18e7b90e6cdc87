#include "platform/view/Button.h"

namespace quillbar::platform {

std::string Button::visibleText() const
{
    if (attributedTitle_)
        return attributedTitle_->text;
    if (!title_.empty() || !image_)
        return title_;
    auto const* const symbol = std::get_if<SymbolImage>(&*image_);
    return symbol ? symbol->accessibilityDescription : std::string();
}

void Button::userClicked()
{
    if (!isEnabled())
        return;
    if (style_ == ButtonStyle::CheckBox)
        setState(state_ == ButtonState::On ? ButtonState::Off : ButtonState::On);
    if (auto const callback = onClick)
        callback();
}

} // namespace quillbar::platform
