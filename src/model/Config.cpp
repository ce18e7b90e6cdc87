#include "model/Config.h"

#include "platform/KeyModifiers.h"

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

} // namespace quillbar
