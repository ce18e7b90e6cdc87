#include "platform/LoginEntry.h"

#include "platform/LaunchAgent.h"
#include "platform/macos/text/Strings.h"

#import <Foundation/Foundation.h>

namespace quillbar::platform {

namespace {

NSString* agentFile(std::string const& label)
{
    NSString* const folder =
        [NSHomeDirectory() stringByAppendingPathComponent:@"Library/LaunchAgents"];
    return [folder stringByAppendingPathComponent:nsString(label + ".plist")];
}

} // namespace

// What the person switches off in the system's settings is kept by launchd, by the label, and not
// in the file.
void writeLoginEntry(LoginEntry const& entry)
{
    NSString* const file = agentFile(entry.label);
    auto const text = launchAgentPropertyList(entry);
    [NSFileManager.defaultManager createDirectoryAtPath:file.stringByDeletingLastPathComponent
                            withIntermediateDirectories:YES
                                             attributes:nil
                                                  error:nil];
    [[NSData dataWithBytes:text.data() length:text.size()] writeToFile:file
                                                               options:NSDataWritingAtomic
                                                                 error:nil];
}

void removeLoginEntry(std::string const& label)
{
    [NSFileManager.defaultManager removeItemAtPath:agentFile(label) error:nil];
}

} // namespace quillbar::platform
