#include "platform/Folders.h"

#include "platform/macos/text/Strings.h"

#import <Foundation/Foundation.h>

namespace quillbar::platform {

std::vector<std::filesystem::path> applicationSupportFolders()
{
    std::vector<std::filesystem::path> folders;
    for (NSURL* folder in
        [NSFileManager.defaultManager URLsForDirectory:NSApplicationSupportDirectory
                                             inDomains:NSUserDomainMask])
        folders.emplace_back(utf8(folder.path));
    return folders;
}

// Not the folder for caches, which the system empties when the disk is full.
std::filesystem::path stateFolder()
{
    auto const folders = applicationSupportFolders();
    return folders.empty() ? std::filesystem::path() : folders.front();
}

std::string executablePath()
{
    return utf8(NSBundle.mainBundle.executablePath);
}

std::string bundleVersion()
{
    id const version =
        [NSBundle.mainBundle objectForInfoDictionaryKey:@"CFBundleShortVersionString"];
    return [version isKindOfClass:NSString.class] ? utf8(version) : std::string();
}

} // namespace quillbar::platform
