#include "model/ConfigJson.h"

#include "model/ConfigReader.h"

#include <nlohmann/json.hpp>

namespace quillbar {

namespace {

using nlohmann::json;

template <typename Value> json toJson(Value const& value)
{
    return value;
}

json toJson(Hotkey const& hotkey)
{
    return { { "keyCode", hotkey.keyCode }, { "modifiers", hotkey.modifiers } };
}

json toJson(std::map<std::string, Hotkey> const& hotkeys)
{
    auto object = json::object();
    for (auto const& [name, hotkey] : hotkeys)
        object[name] = toJson(hotkey);
    return object;
}

template <typename Value>
void addIfPresent(json& object, char const* key, std::optional<Value> const& value)
{
    if (value)
        object[key] = toJson(*value);
}

} // namespace

std::optional<Config> decodeConfig(std::string_view text)
{
    // The parser takes a zero byte for the end of the text, but no JSON text holds one.
    if (text.find('\0') != std::string_view::npos)
        return std::nullopt;

    ConfigReader reader;
    if (!json::sax_parse(text.begin(), text.end(), &reader))
        return std::nullopt;
    return reader.take();
}

std::string encodeConfig(Config const& config)
{
    json object;
    object["pinned"] = config.pinned;
    object["iconSymbol"] = config.iconSymbol;
    addIfPresent(object, "launchAtLogin", config.launchAtLogin);
    addIfPresent(object, "autoRunOnLaunch", config.autoRunOnLaunch);
    addIfPresent(object, "onboarded", config.onboarded);
    addIfPresent(object, "permissionsShown", config.permissionsShown);
    addIfPresent(object, "menuHotkey", config.menuHotkey);
    addIfPresent(object, "shortcutHotkeys", config.shortcutHotkeys);
    addIfPresent(object, "launchAtLoginShortcuts", config.launchAtLoginShortcuts);
    addIfPresent(object, "groupOf", config.groupOf);
    return object.dump(-1, ' ', false, json::error_handler_t::replace);
}

void migrateAutoRun(Config& config)
{
    if (config.launchAtLoginShortcuts || !config.autoRunOnLaunchEff() || config.pinned.empty())
        return;
    auto& flags = config.launchAtLoginShortcuts.emplace();
    for (auto const& name : config.pinned)
        flags[name] = true;
}

} // namespace quillbar
