#import "platform/macos/drawing/Conversions.h"
#import "platform/macos/views/NativeView.h"
#include "platform/view/ScrollView.h"

#include <algorithm>

@interface QuillbarScrollView : NSScrollView
@end

@implementation QuillbarScrollView
// AppKit would show parts of the document before they have their peers.
+ (BOOL)isCompatibleWithResponsiveScrolling
{
    return NO;
}

// The content is as wide as the view, whatever the person prefers.
- (void)setScrollerStyle:(NSScrollerStyle)style
{
    (void)style;
    [super setScrollerStyle:NSScrollerStyleOverlay];
}
@end

namespace quillbar::platform {

namespace {

class ScrollPeer final : public NativeView {
public:
    explicit ScrollPeer(ScrollView& shown)
        : NativeView(shown, [[QuillbarScrollView alloc] initWithFrame:NSZeroRect])
        , scroll_(static_cast<NSScrollView*>(view))
        , shown_(shown)
    {
        scroll_.scrollerStyle = NSScrollerStyleOverlay;
        scroll_.autohidesScrollers = YES;
        scroll_.backgroundColor = NSColor.controlBackgroundColor;
        NSClipView* const clip = scroll_.contentView;
        clip.postsBoundsChangedNotifications = YES;
        observer_ = [NSNotificationCenter.defaultCenter
            addObserverForName:NSViewBoundsDidChangeNotification
                        object:clip
                         queue:nil
                    usingBlock:^(NSNotification*) { shown_.userScrolled(position()); }];
    }
    ScrollPeer(ScrollPeer const&) = delete;
    ScrollPeer& operator=(ScrollPeer const&) = delete;
    ~ScrollPeer() override { [NSNotificationCenter.defaultCenter removeObserver:observer_]; }

    void adopt(NSView* subview) override
    {
        scroll_.documentView = subview;
        subview.frame = nsRect(shown_.documentView()->frame());
        sync();
    }

    void sync() override
    {
        scroll_.borderType = shown_.border() == ScrollBorder::Bezel ? NSBezelBorder : NSNoBorder;
        scroll_.hasVerticalScroller = shown_.verticalScroller() == VerticalScroller::AutoHiding;
        scroll_.drawsBackground = shown_.drawsBackground();
        // Beyond its ends the content is on its way back, which AppKit animates.
        if (std::clamp(position(), 0.0, shown_.maximumOffset()) == shown_.offset())
            return;
        [scroll_.contentView scrollToPoint:NSMakePoint(0, shown_.offset())];
        [scroll_ reflectScrolledClipView:scroll_.contentView];
    }

private:
    [[nodiscard]] double position() const { return NSMinY(scroll_.contentView.bounds); }

    NSScrollView* const scroll_;
    ScrollView& shown_;
    id observer_ = nil;
};

} // namespace

NativeView* makeScrollPeer(View& view)
{
    return new ScrollPeer(static_cast<ScrollView&>(view));
}

} // namespace quillbar::platform
