#import "platform/macos/drawing/Conversions.h"
#import "platform/macos/text/Strings.h"
#import "platform/macos/views/NativeView.h"
#include "platform/view/TextField.h"

/// Tells the portable field what a person typed.
@interface QuillbarTextFieldDelegate : NSObject <NSTextFieldDelegate>
@property quillbar::platform::TextField* portable;
@end

@implementation QuillbarTextFieldDelegate

- (void)controlTextDidChange:(NSNotification*)notification
{
    NSTextField* const field = notification.object;
    self.portable->userTyped(quillbar::platform::utf8(field.stringValue));
}

@end

namespace quillbar::platform {

namespace {

NSTextField* makeTextField(TextFieldStyle style)
{
    NSTextField* const field = [[NSTextField alloc] init];
    NSTextFieldCell* const cell = field.cell;
    cell.usesSingleLineMode = YES;
    cell.scrollable = YES;
    if (style == TextFieldStyle::Plain) {
        field.bezeled = NO;
        field.drawsBackground = NO;
    }
    return field;
}

struct TextFieldPeer final : NativeView {
    explicit TextFieldPeer(TextField& field)
        : NativeView(field, makeTextField(field.style()))
        , delegate([[QuillbarTextFieldDelegate alloc] init])
    {
        delegate.portable = &field;
        static_cast<NSTextField*>(view).delegate = delegate;
    }
    ~TextFieldPeer() override { static_cast<NSTextField*>(view).delegate = nil; }

    void sync() override
    {
        auto const& portableField = static_cast<TextField const&>(*portable);
        auto* const field = static_cast<NSTextField*>(view);
        if (NSFont* const font = nsFont(portableField.font()); ![font isEqual:field.font])
            field.font = font;
        field.placeholderString = nsString(portableField.placeholder());
        // Setting the same text would move the caret and end a composition.
        NSString* const text = nsString(portableField.text());
        if ([text isEqualToString:field.stringValue])
            return;
        if (NSText* const editor = field.currentEditor)
            editor.string = text;
        else
            field.stringValue = text;
    }

    // The NSTextField does not own it.
    QuillbarTextFieldDelegate* const delegate;
};

} // namespace

NativeView* makeTextFieldPeer(View& view)
{
    return new TextFieldPeer(static_cast<TextField&>(view));
}

} // namespace quillbar::platform
