#include "model/Config.h"
#include "model/ConfigJson.h"
#include "model/PrivateFile.h"
#include "platform/Fatal.h"
#include "platform/Folders.h"

namespace quillbar {

namespace {

/// A file that is no configuration, perhaps for one slip in an edit by hand, would be lost with
/// the first save: a copy of it stays beside the new one.
void keepUndecodable(std::filesystem::path const& path)
{
    auto const text = readFile(path);
    if (!text || text->empty() || decodeConfig(*text))
        return;
    auto copy = path;
    copy += ".unreadable";
    writePrivateFile(copy, *text);
}

} // namespace

Config Config::load()
{
    auto const text = readFile(fileURL());
    auto config = text ? decodeConfig(*text) : std::nullopt;
    if (!config)
        return {};
    migrateAutoRun(*config);
    return std::move(*config);
}

void Config::save() const
{
    createPrivateFolder(baseURL());
    keepUndecodable(fileURL());
    writePrivateFile(fileURL(), encodeConfig(*this));
}

std::filesystem::path Config::baseURL()
{
    auto const folders = platform::applicationSupportFolders();
    if (folders.empty())
        platform::fatalError("the system names no folder for application data");
    return folders.front() / "Quillbar";
}

std::filesystem::path Config::fileURL()
{
    return baseURL() / "config.json";
}

} // namespace quillbar
