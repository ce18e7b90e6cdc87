#import "platform/macos/views/NativeView.h"

namespace quillbar::platform {

NativeView* makeSeparatorPeer(View& view)
{
    NSBox* const line = [[NSBox alloc] init];
    line.boxType = NSBoxSeparator;
    return new NativeView(view, line);
}

} // namespace quillbar::platform
