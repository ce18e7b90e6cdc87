#include "platform/Workspace.h"

#include "platform/macos/text/Strings.h"

#import <AppKit/AppKit.h>

namespace quillbar::platform {

void openAddress(std::string const& address)
{
    NSURL* const url = [NSURL URLWithString:nsString(address)];
    // Without a scheme it would be a file name.
    if (!url.scheme)
        return;
    [NSWorkspace.sharedWorkspace openURL:url
                           configuration:[NSWorkspaceOpenConfiguration configuration]
                       completionHandler:nil];
}

bool hasSecuritySettings()
{
    return true;
}

void openSecuritySettings()
{
    openAddress("x-apple.systempreferences:com.apple.preference.security");
}

} // namespace quillbar::platform
