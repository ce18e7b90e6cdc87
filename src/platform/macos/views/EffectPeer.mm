#import "platform/macos/drawing/Conversions.h"
#import "platform/macos/views/NativeView.h"
#include "platform/view/EffectView.h"

#import <QuartzCore/QuartzCore.h>

/// A layer's colour is fixed: the border's is set anew whenever the appearance has changed.
@interface QuillbarEffectView : NSVisualEffectView
@property (nonatomic) NSColor* borderColor;
@end

@implementation QuillbarEffectView

- (BOOL)isFlipped
{
    return YES;
}

- (void)setBorderColor:(NSColor*)color
{
    _borderColor = color;
    [self updateBorder];
}

- (void)viewDidChangeEffectiveAppearance
{
    [super viewDidChangeEffectiveAppearance];
    [self updateBorder];
}

- (void)updateBorder
{
    [self.effectiveAppearance
        performAsCurrentDrawingAppearance:^{ self.layer.borderColor = self.borderColor.CGColor; }];
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
        effect.borderColor = nsColor(portableView.borderColor());
    }
};

} // namespace

NativeView* makeEffectPeer(View& view)
{
    return new EffectPeer(view);
}

} // namespace quillbar::platform
