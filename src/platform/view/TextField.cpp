#include "platform/view/TextField.h"

namespace quillbar::platform {

void TextField::userTyped(std::string text)
{
    if (!isEnabled() || text == text_)
        return;
    setText(std::move(text));
    if (auto const callback = onTextChange)
        callback();
}

} // namespace quillbar::platform
