#import "platform/macos/drawing/Conversions.h"
#import "platform/macos/drawing/Images.h"
#import "platform/macos/input/Action.h"
#import "platform/macos/text/Strings.h"
#import "platform/macos/views/NativeView.h"
#include "platform/view/Button.h"

namespace quillbar::platform {

namespace {

NSButton* makeButton(ButtonStyle style)
{
    NSButton* const button = style == ButtonStyle::CheckBox
        ? [NSButton checkboxWithTitle:@"" target:nil action:nil]
        : [NSButton buttonWithTitle:@"" target:nil action:nil];
    if (style == ButtonStyle::Borderless)
        button.bordered = NO;
    button.imageScaling = NSImageScaleProportionallyDown;
    return button;
}

// An attributed title brings its own alignment along; without one it is not centred.
NSAttributedString* centred(NSAttributedString* text)
{
    NSMutableParagraphStyle* const style = [[NSMutableParagraphStyle alloc] init];
    style.alignment = NSTextAlignmentCenter;
    style.lineBreakMode = NSLineBreakByTruncatingTail;
    NSMutableAttributedString* const result = [text mutableCopy];
    [result addAttribute:NSParagraphStyleAttributeName
                   value:style
                   range:NSMakeRange(0, result.length)];
    return result;
}

class ButtonPeer final : public NativeView {
public:
    explicit ButtonPeer(Button& shown)
        : NativeView(shown, makeButton(shown.style()))
        , button_(static_cast<NSButton*>(view))
        , shown_(shown)
        , action_([[QuillbarAction alloc] initWithBody:^(id) { clicked(); }])
    {
        button_.target = action_;
        button_.action = QuillbarAction.selector;
    }
    ButtonPeer(ButtonPeer const&) = delete;
    ButtonPeer& operator=(ButtonPeer const&) = delete;
    ~ButtonPeer() override { action_.body = nil; }

    void sync() override
    {
        button_.font = nsFont(shown_.font());
        if (shown_.attributedTitle())
            button_.attributedTitle = centred(attributedString(*shown_.attributedTitle()));
        else
            button_.title = nsString(shown_.title());
        button_.lineBreakMode = NSLineBreakByTruncatingTail;
        auto const& tint = shown_.contentTintColor();
        button_.contentTintColor = tint ? nsColor(*tint) : nil;
        button_.keyEquivalent = shown_.keyEquivalent() == ButtonKey::Return ? @"\r" : @"";
        if (shown_.style() == ButtonStyle::CheckBox)
            showState();
        else
            showImage();
    }

private:
    void showState()
    {
        button_.state
            = shown_.state() == ButtonState::On ? NSControlStateValueOn : NSControlStateValueOff;
    }

    void showImage()
    {
        bool const hasTitle = !shown_.title().empty() || shown_.attributedTitle();
        button_.image = shown_.image() ? nsImage(*shown_.image(), shown_.font()) : nil;
        if (!shown_.image())
            button_.imagePosition = NSNoImage;
        else
            button_.imagePosition = hasTitle ? NSImageLeading : NSImageOnly;
    }

    void clicked()
    {
        // AppKit has changed the state of a check box by itself; the portable button decides.
        showState();
        shown_.userClicked();
    }

    NSButton* const button_;
    Button& shown_;
    QuillbarAction* const action_;
};

} // namespace

NativeView* makeButtonPeer(View& view)
{
    return new ButtonPeer(static_cast<Button&>(view));
}

} // namespace quillbar::platform
