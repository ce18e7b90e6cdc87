#pragma once

#import <AppKit/AppKit.h>

/// A target whose action calls `body`. Controls and menu items do not retain their targets: the
/// peer of the control, or an association of the menu item, does.
@interface QuillbarAction : NSObject
@property (copy) void (^body)(id sender);
+ (SEL)selector;
- (instancetype)initWithBody:(void (^)(id sender))body;
@end
