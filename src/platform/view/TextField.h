#pragma once

#include "platform/view/Control.h"

#include <functional>

namespace quillbar::platform {

enum class TextFieldStyle : std::uint8_t {
    Bezeled,
    /// Neither border nor background.
    Plain,
};

/// One line of text that a person edits.
class TextField : public Control {
public:
    explicit TextField(TextFieldStyle style = TextFieldStyle::Bezeled)
        : Control(ViewKind::TextField)
        , style_(style)
    {
    }

    void setText(std::string text) { set(text_, std::move(text)); }
    void setPlaceholder(std::string placeholder) { set(placeholder_, std::move(placeholder)); }

    [[nodiscard]] TextFieldStyle style() const { return style_; }
    [[nodiscard]] std::string const& text() const { return text_; }
    [[nodiscard]] std::string const& placeholder() const { return placeholder_; }

    [[nodiscard]] std::string visibleText() const override
    {
        return text_.empty() ? placeholder_ : text_;
    }

    /// A person edited the text, which is now `text`.
    void userTyped(std::string text);

    /// Told of every edit by a person. May destroy the field.
    std::function<void()> onTextChange;

private:
    TextFieldStyle const style_;
    std::string text_;
    std::string placeholder_;
};

} // namespace quillbar::platform
