#include "ui/Texts.h"

#include <utility>

namespace quillbar {

std::shared_ptr<platform::Label> addText(
    platform::View& container, platform::Rect frame, std::string text, TextStyle const& style)
{
    auto label = std::make_shared<platform::Label>(std::move(text));
    label->setFrame(frame);
    label->setFont(style.font);
    label->setColor(style.color);
    label->setAlignment(style.alignment);
    label->setLineBreak(style.lineBreak);
    return container.addSubview(std::move(label));
}

} // namespace quillbar
