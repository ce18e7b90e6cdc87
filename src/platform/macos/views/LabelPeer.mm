#include "platform/Text.h"
#import "platform/macos/drawing/Conversions.h"
#import "platform/macos/text/Strings.h"
#import "platform/macos/views/NativeView.h"
#include "platform/view/Label.h"

#include <cmath>

/// Puts a single line in the middle of the height; NSTextFieldCell draws from the top.
@interface QuillbarLabelCell : NSTextFieldCell
@end

@implementation QuillbarLabelCell

- (NSRect)drawingRectForBounds:(NSRect)bounds
{
    NSRect const rect = [super drawingRectForBounds:bounds];
    CGFloat const spare = NSHeight(bounds) - [self cellSizeForBounds:bounds].height;
    if (!self.usesSingleLineMode || spare <= 0)
        return rect;
    return NSInsetRect(rect, 0, std::floor(spare / 2));
}

@end

namespace quillbar::platform {

namespace {

NSTextAlignment nsAlignment(TextAlignment alignment)
{
    switch (alignment) {
    case TextAlignment::Left:
        return NSTextAlignmentLeft;
    case TextAlignment::Center:
        return NSTextAlignmentCenter;
    case TextAlignment::Right:
        return NSTextAlignmentRight;
    }
    return NSTextAlignmentLeft;
}

NSTextField* makeLabel()
{
    NSTextField* const field = [[NSTextField alloc] init];
    field.cell = [[QuillbarLabelCell alloc] initTextCell:@""];
    field.editable = NO;
    field.selectable = NO;
    field.bezeled = NO;
    field.drawsBackground = NO;
    return field;
}

struct LabelPeer final : NativeView {
    explicit LabelPeer(View& label)
        : NativeView(label, makeLabel())
    {
    }

    void sync() override
    {
        auto const& label = static_cast<Label const&>(*portable);
        auto* const field = static_cast<NSTextField*>(view);
        NSTextFieldCell* const cell = field.cell;
        bool const isWrapped = label.lineBreak() == LineBreak::WordWrap;
        cell.wraps = isWrapped;
        cell.usesSingleLineMode = !isWrapped;
        cell.lineBreakMode = isWrapped ? NSLineBreakByWordWrapping : NSLineBreakByTruncatingTail;
        cell.truncatesLastVisibleLine = isWrapped;
        field.allowsDefaultTighteningForTruncation = label.lineBreak() == LineBreak::Tighten;
        field.allowsExpansionToolTips = label.lineBreak() == LineBreak::TruncateTail;
        field.font = nsFont(label.font());
        field.alignment = nsAlignment(label.alignment());
        field.textColor = nsColor(label.color());
        field.stringValue = nsString(shortened(label.text()));
    }
};

} // namespace

NativeView* makeLabelPeer(View& view)
{
    return new LabelPeer(view);
}

} // namespace quillbar::platform
