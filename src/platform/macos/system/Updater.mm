#include "platform/Updater.h"

#include "platform/Application.h"
#include "platform/view/Alert.h"

#import <Foundation/Foundation.h>

/// What is used of the class that the update framework brings.
@protocol QuillbarUpdaterController <NSObject>
- (instancetype)initWithStartingUpdater:(BOOL)startUpdater
                        updaterDelegate:(id)updaterDelegate
                     userDriverDelegate:(id)userDriverDelegate;
- (void)checkForUpdates:(id)sender;
@end

namespace quillbar::platform {

namespace {

id<QuillbarUpdaterController> startController()
{
    NSURL* const framework =
        [NSBundle.mainBundle.privateFrameworksURL URLByAppendingPathComponent:@"Sparkle.framework"];
    if (!framework || ![[NSBundle bundleWithURL:framework] load])
        return nil;
    id const controller = [NSClassFromString(@"SPUStandardUpdaterController") alloc];
    return [controller initWithStartingUpdater:YES updaterDelegate:nil userDriverDelegate:nil];
}

class FrameworkUpdater final : public Updater {
public:
    explicit FrameworkUpdater(id<QuillbarUpdaterController> controller)
        : controller_(controller)
    {
    }

    void checkForUpdates() override { [controller_ checkForUpdates:nil]; }

private:
    id<QuillbarUpdaterController> const controller_;
};

/// Used when Sparkle.framework is not in the bundle: shows an alert.
class UpdateAdvice final : public Updater {
public:
    void checkForUpdates() override
    {
        activateIgnoringOtherApps();
        static_cast<void>(runModal({ .style = AlertStyle::Informational,
            .messageText = "Quillbar cannot look for updates here.",
            .informativeText = "The next version comes from where you got this one.",
            .buttons = { "OK" },
            .accessory = std::nullopt }));
    }
};

} // namespace

std::unique_ptr<Updater> startUpdater()
{
    if (id<QuillbarUpdaterController> const controller = startController())
        return std::make_unique<FrameworkUpdater>(controller);
    return std::make_unique<UpdateAdvice>();
}

} // namespace quillbar::platform
