#include "model/Config.h"
#include "model/ConfigJson.h"
#include "model/PrivateFile.h"
#include "platform/Fatal.h"
#include "platform/Folders.h"

namespace quillbar {

namespace {

/// Whether load() could make nothing of the file, which may be there again when it is saved.
bool isUnread = false;

/// A file that cannot be read or is no configuration, perhaps for one slip in an edit by hand,
/// would be lost with the first save: it stays beside the new one. Returns whether the file may be
/// overwritten.
bool keepUnread(std::filesystem::path const& path)
{
    auto copy = path;
    copy += ".unreadable";
    if (auto const text = readFile(path)) {
        bool const isWorthless = text->empty() || (!isUnread && decodeConfig(*text));
        return isWorthless || writePrivateFile(copy, *text);
    }
    return setAsideForbiddenFile(path, copy);
}

} // namespace

Config Config::load()
{
    auto const text = readFile(fileURL());
    auto config = text ? decodeConfig(*text) : std::nullopt;
    isUnread = !config;
    if (!config)
        return {};
    migrateAutoRun(*config);
    return std::move(*config);
}

void Config::save() const
{
    createPrivateFolder(baseURL());
    if (keepUnread(fileURL()) && writePrivateFile(fileURL(), encodeConfig(*this)))
        isUnread = false;
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
