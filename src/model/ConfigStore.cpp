#include "model/Config.h"
#include "model/ConfigJson.h"
#include "model/PrivateFile.h"
#include "platform/Fatal.h"
#include "platform/Folders.h"
#include "platform/MainQueue.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace quillbar {

namespace {

using namespace std::chrono_literals;

constexpr std::chrono::seconds firstRetry = 5s;
constexpr std::chrono::seconds slowestRetry = 10min;

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

bool store(Config const& config)
{
    createPrivateFolder(Config::baseURL());
    if (!keepUnread(Config::fileURL())
        || !writePrivateFile(Config::fileURL(), encodeConfig(config)))
        return false;
    isUnread = false;
    return true;
}

/// Counts the records that were to be saved; a new one replaces what is tried again.
unsigned saves = 0;

/// A disk is not full for ever.
void tryAgain(Config config, unsigned number, std::chrono::seconds delay)
{
    platform::postDelayed(delay, [config = std::move(config), number, delay] {
        if (number == saves && !store(config))
            tryAgain(config, number, std::min(2 * delay, slowestRetry));
    });
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
    ++saves;
    if (!store(*this))
        tryAgain(*this, saves, firstRetry);
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
