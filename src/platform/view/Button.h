#pragma once

#include "platform/view/AttributedText.h"
#include "platform/view/Control.h"
#include "platform/view/Image.h"

#include <functional>
#include <optional>

namespace quillbar::platform {

enum class ButtonStyle : std::uint8_t { Push, CheckBox, Borderless };
enum class ButtonState : std::uint8_t { Off, On };

/// The key that clicks a button from anywhere in its window.
enum class ButtonKey : std::uint8_t {
    None,
    /// Return or Enter without modifiers; it marks the window's default button.
    Return,
};

/// Something to click. Shows its image alone when it has no title, else before the title.
class Button : public Control {
public:
    explicit Button(ButtonStyle style = ButtonStyle::Push, std::string title = {})
        : Control(ViewKind::Button)
        , style_(style)
        , title_(std::move(title))
    {
    }

    void setTitle(std::string title) { set(title_, std::move(title)); }
    /// Drawn in place of the title.
    void setAttributedTitle(std::optional<AttributedText> title)
    {
        set(attributedTitle_, std::move(title));
    }
    void setImage(std::optional<Image> image) { set(image_, std::move(image)); }
    /// Colours the title of a borderless button, and its image.
    void setContentTintColor(std::optional<Color> color) { set(contentTintColor_, color); }
    void setState(ButtonState state) { set(state_, state); }
    void setKeyEquivalent(ButtonKey key) { set(keyEquivalent_, key); }

    [[nodiscard]] ButtonStyle style() const { return style_; }
    [[nodiscard]] std::string const& title() const { return title_; }
    [[nodiscard]] std::optional<AttributedText> const& attributedTitle() const
    {
        return attributedTitle_;
    }
    [[nodiscard]] std::optional<Image> const& image() const { return image_; }
    [[nodiscard]] std::optional<Color> const& contentTintColor() const { return contentTintColor_; }
    [[nodiscard]] ButtonState state() const { return state_; }
    [[nodiscard]] ButtonKey keyEquivalent() const { return keyEquivalent_; }

    [[nodiscard]] std::string visibleText() const override;

    /// A person clicked: a checkbox changes its state, then the callback runs. Nothing happens
    /// while the button is off.
    void userClicked();

    /// May destroy the button.
    std::function<void()> onClick;

private:
    ButtonStyle const style_;
    ButtonState state_ = ButtonState::Off;
    std::string title_;
    std::optional<AttributedText> attributedTitle_;
    std::optional<Image> image_;
    std::optional<Color> contentTintColor_;
    ButtonKey keyEquivalent_ = ButtonKey::None;
};

} // namespace quillbar::platform
