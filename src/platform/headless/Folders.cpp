#include "platform/Folders.h"

#include "platform/headless/Headless.h"
#include "platform/headless/State.h"
#include "platform/headless/TemporaryFolder.h"

namespace quillbar::platform {

namespace {

struct Folders {
    std::unique_ptr<headless::TemporaryFolder> home;
    std::optional<std::vector<std::filesystem::path>> applicationSupport;
    std::string executablePath = "/opt/Quillbar/quillbar";
    std::string bundleVersion = "1.2.3";
};
headless::State<Folders> folders;

} // namespace

std::vector<std::filesystem::path> applicationSupportFolders()
{
    if (folders->applicationSupport)
        return *folders->applicationSupport;
    return { headless::temporaryHome() / "Application Support" };
}

std::filesystem::path stateFolder()
{
    return headless::temporaryHome() / "State";
}

std::string executablePath()
{
    return folders->executablePath;
}

std::string bundleVersion()
{
    return folders->bundleVersion;
}

namespace headless {

std::filesystem::path const& temporaryHome()
{
    if (!folders->home)
        folders->home = std::make_unique<TemporaryFolder>();
    return folders->home->path();
}

void setApplicationSupportFolders(std::vector<std::filesystem::path> paths)
{
    folders->applicationSupport = std::move(paths);
}

void setExecutablePath(std::string path)
{
    folders->executablePath = std::move(path);
}

void setBundleVersion(std::string version)
{
    folders->bundleVersion = std::move(version);
}

} // namespace headless

} // namespace quillbar::platform
