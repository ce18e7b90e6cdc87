#pragma once

#include "platform/view/Label.h"

#include <memory>
#include <string>

namespace quillbar {

/// How a label of a window looks.
struct TextStyle {
    platform::Font font;
    platform::Color color = platform::SystemColor::Label;
    platform::TextAlignment alignment = platform::TextAlignment::Left;
    platform::LineBreak lineBreak = platform::LineBreak::TruncateTail;
};

/// Adds a label to the container and returns it.
std::shared_ptr<platform::Label> addText(
    platform::View& container, platform::Rect frame, std::string text, TextStyle const& style);

} // namespace quillbar
