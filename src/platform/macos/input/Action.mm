#import "platform/macos/input/Action.h"

@implementation QuillbarAction

+ (SEL)selector
{
    return @selector(run:);
}

- (instancetype)initWithBody:(void (^)(id sender))body
{
    self = [super init];
    if (self)
        _body = [body copy];
    return self;
}

- (void)run:(id)sender
{
    // The block may end with this object and its own property.
    void (^const body)(id) = self.body;
    if (body)
        body(sender);
}

@end
