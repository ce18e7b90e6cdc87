#include "model/Config.h"

#include "model/ConfigJson.h"
#include "model/PrivateFile.h"
#include "platform/Fatal.h"
#include "platform/Folders.h"
#include "platform/KeyModifiers.h"

#include <utility>

namespace quillbar {

Hotkey Config::menuHotkeyEff() const
{
    constexpr Hotkey optionCommandT { 17, platform::commandKey | platform::optionKey };
    return menuHotkey.value_or(optionCommandT);
}

std::map<std::string, Hotkey> const& Config::shortcutHotkeysEff() const
{
    static std::map<std::string, Hotkey> const none;
    return shortcutHotkeys ? *shortcutHotkeys : none;
}

bool Config::launchesAtLogin(std::string const& name) const
{
    if (!launchAtLoginShortcuts)
        return false;
    auto const flag = launchAtLoginShortcuts->find(name);
    return flag != launchAtLoginShortcuts->end() && flag->second;
}

Config Config::load()
{
    auto const text = readFile(fileURL());
    auto config = text ? decodeConfig(*text) : std::nullopt;
    if (config) {
        migrateAutoRun(*config);
        return std::move(*config);
    }
    // The next save replaces the file, in which one typing error may be all that is wrong.
    if (text && !text->empty()) {
        auto copy = fileURL();
        copy += ".unreadable";
        writePrivateFile(copy, *text);
    }
    return {};
}

bool Config::save() const
{
    createPrivateFolder(baseURL());
    return writePrivateFile(fileURL(), encodeConfig(*this));
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
