#pragma once

#include "platform/view/Color.h"
#include "platform/view/Font.h"
#include "platform/view/View.h"

namespace quillbar::platform {

enum class TextAlignment : std::uint8_t { Left, Center, Right };
enum class LineBreak : std::uint8_t {
    /// One line; what does not fit ends in an ellipsis.
    TruncateTail,
    /// One line; letters that do not fit move closer together. For fixed texts.
    Tighten,
    /// As many lines as fit, from the top.
    WordWrap,
};

/// A text that nobody edits. Plain text throughout; a single line stands in the middle of the
/// frame's height.
class Label : public View {
public:
    explicit Label(std::string text = {})
        : View(ViewKind::Label)
        , text_(std::move(text))
    {
    }

    void setText(std::string text) { set(text_, std::move(text)); }
    void setFont(Font font) { set(font_, font); }
    void setColor(Color color) { set(color_, color); }
    void setAlignment(TextAlignment alignment) { set(alignment_, alignment); }
    void setLineBreak(LineBreak lineBreak) { set(lineBreak_, lineBreak); }

    [[nodiscard]] std::string const& text() const { return text_; }
    [[nodiscard]] Font const& font() const { return font_; }
    [[nodiscard]] Color const& color() const { return color_; }
    [[nodiscard]] TextAlignment alignment() const { return alignment_; }
    [[nodiscard]] LineBreak lineBreak() const { return lineBreak_; }

    [[nodiscard]] std::string visibleText() const override { return text_; }

private:
    std::string text_;
    Font font_;
    Color color_ = SystemColor::Label;
    TextAlignment alignment_ = TextAlignment::Left;
    LineBreak lineBreak_ = LineBreak::TruncateTail;
};

} // namespace quillbar::platform
