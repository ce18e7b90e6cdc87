#include "platform/Notifications.h"

#include "platform/MainQueue.h"
#include "platform/Workspace.h"
#include "platform/macos/system/NotificationClicks.h"
#include "platform/macos/text/Strings.h"

#import <UserNotifications/UserNotifications.h>

static NSString* const addressKey = @"address";

@interface QuillbarNotificationDelegate : NSObject <UNUserNotificationCenterDelegate>
@end

@implementation QuillbarNotificationDelegate
- (void)userNotificationCenter:(UNUserNotificationCenter*)center
       willPresentNotification:(UNNotification*)notification
         withCompletionHandler:
             (void (^)(UNNotificationPresentationOptions options))completionHandler
{
    completionHandler(UNNotificationPresentationOptionBanner | UNNotificationPresentationOptionList
        | UNNotificationPresentationOptionSound);
}
- (void)userNotificationCenter:(UNUserNotificationCenter*)center
    didReceiveNotificationResponse:(UNNotificationResponse*)response
             withCompletionHandler:(void (^)(void))completionHandler
{
    id const address = response.notification.request.content.userInfo[addressKey];
    if ([address isKindOfClass:NSString.class]) {
        quillbar::platform::post(
            [text = quillbar::platform::utf8(address)] { quillbar::platform::openAddress(text); });
    }
    completionHandler();
}
@end

namespace quillbar::platform {

namespace {

/// Nil for a program that is in no bundle, for which asking would raise an exception.
UNUserNotificationCenter* center()
{
    return NSBundle.mainBundle.bundleIdentifier ? UNUserNotificationCenter.currentNotificationCenter
                                                : nil;
}

NotificationAuthorization authorization(UNAuthorizationStatus status)
{
    switch (status) {
    case UNAuthorizationStatusNotDetermined:
        return NotificationAuthorization::NotDetermined;
    case UNAuthorizationStatusAuthorized:
        return NotificationAuthorization::Authorized;
    case UNAuthorizationStatusProvisional:
        return NotificationAuthorization::Provisional;
    default:
        return NotificationAuthorization::Denied;
    }
}

/// Takes the notification off the system's list when its banner, which stays for about five
/// seconds, has gone.
void removeLater(NSString* identifier)
{
    constexpr std::int64_t seconds = 10;
    dispatch_after(dispatch_time(DISPATCH_TIME_NOW, seconds * std::int64_t { NSEC_PER_SEC }),
        dispatch_get_global_queue(QOS_CLASS_DEFAULT, 0),
        ^{ [center() removeDeliveredNotificationsWithIdentifiers:@[ identifier ]]; });
}

} // namespace

void followNotifications()
{
    static QuillbarNotificationDelegate* const delegate =
        [[QuillbarNotificationDelegate alloc] init];
    center().delegate = delegate;
}

void requestNotificationAuthorization(std::function<void()> done)
{
    if (!center())
        return done();
    [center()
        requestAuthorizationWithOptions:UNAuthorizationOptionAlert | UNAuthorizationOptionSound
                      completionHandler:^(BOOL, NSError*) { done(); }];
}

void queryNotificationAuthorization(std::function<void(NotificationAuthorization)> done)
{
    if (!center())
        return done(NotificationAuthorization::Denied);
    [center() getNotificationSettingsWithCompletionHandler:^(
        UNNotificationSettings* settings) { done(authorization(settings.authorizationStatus)); }];
}

void postNotification(Notification notification)
{
    UNMutableNotificationContent* const content = [[UNMutableNotificationContent alloc] init];
    content.title = nsString(notification.title);
    content.body = nsString(notification.body);
    if (notification.sound == NotificationSound::Default)
        content.sound = UNNotificationSound.defaultSound;
    if (!notification.address.empty())
        content.userInfo = @ { addressKey : nsString(notification.address) };
    NSString* const identifier = nsString(notification.identifier);
    [center() addNotificationRequest:[UNNotificationRequest requestWithIdentifier:identifier
                                                                          content:content
                                                                          trigger:nil]
               withCompletionHandler:nil];
    if (notification.life == NotificationLife::Passing)
        removeLater(identifier);
}

} // namespace quillbar::platform
