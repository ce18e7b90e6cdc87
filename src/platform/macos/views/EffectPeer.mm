#import "platform/macos/drawing/Conversions.h"
#import "platform/macos/views/NativeView.h"
#include "platform/view/EffectView.h"

#import <QuartzCore/QuartzCore.h>

/// A layer's colour is fixed: the border's is set anew whenever the appearance has changed.
@interface QuillbarEffectView : NSVisualEffectView
@property (nonatomic) NSColor* edgeColor;
@end

@implementation QuillbarEffectView

- (BOOL)isFlipped
{
    return YES;
}

- (void)setEdgeColor:(NSColor*)color
{
    _edgeColor = color;
    [self updateEdge];
}

- (void)viewDidChangeEffectiveAppearance
{
    [super viewDidChangeEffectiveAppearance];
    [self updateEdge];
}

- (void)updateEdge
{
    [self.effectiveAppearance
        performAsCurrentDrawingAppearance:^{ self.layer.borderColor = self.edgeColor.CGColor; }];
}

@end

namespace quillbar::platform {

namespace {

QuillbarEffectView* makeEffectView()
{
    QuillbarEffectView* const effect = [[QuillbarEffectView alloc] init];
    effect.material = NSVisualEffectMaterialPopover;
    effect.blendingMode = NSVisualEffectBlendingModeBehindWindow;
    effect.state = NSVisualEffectStateActive;
    effect.wantsLayer = YES;
    effect.layer.masksToBounds = YES;
    return effect;
}

struct EffectPeer final : NativeView {
    explicit EffectPeer(View& effect)
        : NativeView(effect, makeEffectView())
    {
    }

    void sync() override
    {
        auto const& portableView = static_cast<EffectView const&>(*portable);
        auto* const effect = static_cast<QuillbarEffectView*>(view);
        effect.layer.cornerRadius = portableView.cornerRadius();
        effect.layer.borderWidth = portableView.borderWidth();
        effect.edgeColor = nsColor(portableView.borderColor());
    }
};

} // namespace

NativeView* makeEffectPeer(View& view)
{
    return new EffectPeer(view);
}

} // namespace quillbar::platform
