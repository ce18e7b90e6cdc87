#pragma once

#import <AppKit/AppKit.h>

/// The target of a control or a menu item: calls its block. Targets are held weakly by controls, so
/// their peer owns it.
@interface QuillbarAction : NSObject
@property (copy) void (^body)(id sender);
+ (SEL)selector;
- (instancetype)initWithBody:(void (^)(id sender))body;
@end
