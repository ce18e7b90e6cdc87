#include "platform/Application.h"

#include "platform/Folders.h"
#include "platform/MainQueue.h"
#include "platform/macos/drawing/Images.h"
#include "platform/macos/menus/NativeMenu.h"
#include "platform/macos/system/NotificationClicks.h"
#include "platform/macos/text/Strings.h"

#import <AppKit/AppKit.h>

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <sys/file.h>
#include <utility>

namespace quillbar::platform {

namespace {

using MakeDelegate = std::function<std::shared_ptr<ApplicationDelegate>()>;

NSString* const openSettingsRequest = @"com.quillbar.Quillbar.openSettings";

} // namespace

} // namespace quillbar::platform

/// What AppKit and other starts of the program tell this one.
@interface QuillbarApplicationDelegate : NSObject <NSApplicationDelegate>
- (instancetype)initWithMakeDelegate:(quillbar::platform::MakeDelegate)makeDelegate;
/// Closes the open menu, whose event loop would go on after -[NSApplication stop:].
- (void)closeMenu;
@end

@implementation QuillbarApplicationDelegate {
    quillbar::platform::MakeDelegate _makeDelegate;
    std::shared_ptr<quillbar::platform::ApplicationDelegate> _delegate;
    BOOL _hasLaunched;
    BOOL _wantsSettings;
    __weak NSMenu* _openMenu;
}

- (instancetype)initWithMakeDelegate:(quillbar::platform::MakeDelegate)makeDelegate
{
    if ((self = [super init])) {
        _makeDelegate = std::move(makeDelegate);
        [NSNotificationCenter.defaultCenter addObserver:self
                                               selector:@selector(menuDidBeginTracking:)
                                                   name:NSMenuDidBeginTrackingNotification
                                                 object:nil];
        [NSDistributedNotificationCenter.defaultCenter
                   addObserver:self
                      selector:@selector(openSettings:)
                          name:quillbar::platform::openSettingsRequest
                        object:nil
            suspensionBehavior:NSNotificationSuspensionBehaviorDeliverImmediately];
    }
    return self;
}

- (void)applicationWillFinishLaunching:(NSNotification*)notification
{
    quillbar::platform::followNotifications();
}

- (void)applicationDidFinishLaunching:(NSNotification*)notification
{
    _delegate = _makeDelegate();
    _delegate->applicationDidFinishLaunching();
    _hasLaunched = YES;
    if (_wantsSettings)
        _delegate->openSettings();
}

// The system ends the program by exit() after this.
- (void)applicationWillTerminate:(NSNotification*)notification
{
    if (_delegate)
        _delegate->applicationWillTerminate();
}

- (BOOL)applicationShouldHandleReopen:(NSApplication*)sender
                    hasVisibleWindows:(BOOL)hasVisibleWindows
{
    [self openSettings:nil];
    return NO;
}

- (BOOL)applicationSupportsSecureRestorableState:(NSApplication*)application
{
    return YES;
}

- (void)openSettings:(NSNotification*)notification
{
    // An alert may hold the launch up.
    if (_hasLaunched)
        _delegate->openSettings();
    else
        _wantsSettings = YES;
}

- (void)menuDidBeginTracking:(NSNotification*)notification
{
    _openMenu = notification.object;
}

- (void)closeMenu
{
    [_openMenu cancelTracking];
}

@end

namespace quillbar::platform {

namespace {

/// Whether no other process of this person runs the program; it holds a lock until its end.
bool isOnlyOne()
{
    auto const folder = stateFolder() / "Quillbar";
    [NSFileManager.defaultManager createDirectoryAtPath:nsString(folder.native())
                            withIntermediateDirectories:YES
                                             attributes:@{
                                                 NSFilePosixPermissions : @0700
                                             }
                                                  error:nil];
    auto const lock = ::open((folder / "running").c_str(), O_RDONLY | O_CREAT | O_CLOEXEC, 0600);
    return lock < 0 || ::flock(lock, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
}

/// For as long as the program runs: terminates it when one of the signals comes. A second one ends
/// the process at once, and one that was ignored when the program started stays so.
void terminateOnSignals()
{
    for (int const number : { SIGTERM, SIGINT, SIGHUP }) {
        if (::signal(number, SIG_IGN) == SIG_IGN)
            continue;
        dispatch_source_t const source = dispatch_source_create(DISPATCH_SOURCE_TYPE_SIGNAL,
            static_cast<uintptr_t>(number), 0, dispatch_get_global_queue(QOS_CLASS_DEFAULT, 0));
        dispatch_source_set_event_handler(source, ^{
            ::signal(number, SIG_DFL);
            dispatch_source_cancel(source);
            terminate();
        });
        dispatch_resume(source);
    }
}

/// Posts an event without effect: -[NSApplication run] looks whether it was stopped only after one.
void postEmptyEvent()
{
    [NSApp postEvent:[NSEvent otherEventWithType:NSEventTypeApplicationDefined
                                        location:NSZeroPoint
                                   modifierFlags:0
                                       timestamp:0
                                    windowNumber:0
                                         context:nil
                                         subtype:0
                                           data1:0
                                           data2:0]
             atStart:YES];
}

/// Ends the innermost event loop and then those around it.
void endEventLoops()
{
    [static_cast<QuillbarApplicationDelegate*>(NSApp.delegate) closeMenu];
    if (NSApp.modalWindow) {
        [NSApp stopModalWithCode:NSModalResponseAbort];
        post(endEventLoops);
    } else {
        [NSApp stop:nil];
    }
    postEmptyEvent();
}

} // namespace

int runApplication(int /*argumentCount*/, char** /*arguments*/, MakeDelegate const& makeDelegate)
{
    @autoreleasepool {
        if (!isOnlyOne()) {
            [NSDistributedNotificationCenter.defaultCenter postNotificationName:openSettingsRequest
                                                                         object:nil
                                                                       userInfo:nil
                                                             deliverImmediately:YES];
            return 0;
        }
        QuillbarApplicationDelegate* const delegate =
            [[QuillbarApplicationDelegate alloc] initWithMakeDelegate:makeDelegate];
        NSApplication.sharedApplication.delegate = delegate;
        [NSApp setActivationPolicy:NSApplicationActivationPolicyAccessory];
        terminateOnSignals();
        [NSApp run];
        [delegate
            applicationWillTerminate:[NSNotification
                                         notificationWithName:NSApplicationWillTerminateNotification
                                                       object:NSApp]];
        return 0;
    }
}

void terminate()
{
    post(endEventLoops);
}

void installMainMenu(Menu menu)
{
    NSApp.mainMenu = nsMenu(menu);
}

void setApplicationIcon(std::function<Image(double size)> iconOfSize)
{
    // Alerts show it in this size.
    constexpr double size = 64;
    NSApp.applicationIconImage = nsImage(iconOfSize(size));
}

void activateIgnoringOtherApps()
{
    [NSApp activateIgnoringOtherApps:YES];
}

} // namespace quillbar::platform
