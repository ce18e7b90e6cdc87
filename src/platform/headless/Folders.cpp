#include "platform/Folders.h"

#include "platform/headless/Headless.h"
#include "platform/headless/State.h"

#include <cstdlib>
#include <stdexcept>

namespace quillbar::platform {

namespace {

class TemporaryFolder {
public:
    TemporaryFolder()
        : path_(make())
    {
    }
    TemporaryFolder(TemporaryFolder const&) = delete;
    TemporaryFolder& operator=(TemporaryFolder const&) = delete;
    ~TemporaryFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    [[nodiscard]] std::filesystem::path const& path() const { return path_; }

private:
    static std::filesystem::path make()
    {
        auto name = (std::filesystem::temp_directory_path() / "quillbar-XXXXXX").string();
        if (!mkdtemp(name.data()))
            throw std::runtime_error("no temporary folder can be made");
        return name;
    }

    std::filesystem::path path_;
};

struct Folders {
    std::unique_ptr<TemporaryFolder> home;
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
