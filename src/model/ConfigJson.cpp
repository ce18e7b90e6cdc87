#include "model/ConfigJson.h"

#include <nlohmann/json.hpp>

#include <cmath>
#include <stdexcept>
#include <utility>

namespace quillbar {

using nlohmann::json;

namespace {

/// The number exactly, however it is written: 17.0 is 17. Throws for any other value.
template <typename Integer> Integer toInteger(json const& value)
{
    // Below it a double holds every integer; a whole number beyond 64 bits arrives as a double too.
    constexpr auto exactDoubles = 0x1p53;
    auto const convert = [](auto number) {
        if (!std::in_range<Integer>(number))
            throw std::out_of_range("the number does not fit");
        return static_cast<Integer>(number);
    };
    if (value.is_number_unsigned())
        return convert(value.get<std::uint64_t>());
    if (value.is_number_integer())
        return convert(value.get<std::int64_t>());
    auto const number = value.is_number_float() ? value.get<double>() : exactDoubles;
    if (std::abs(number) >= exactDoubles || std::trunc(number) != number)
        throw std::out_of_range("not an exact integer");
    return convert(static_cast<std::int64_t>(number));
}

/// Null counts as absent.
template <typename Value>
void readOptional(json const& object, char const* key, std::optional<Value>& field)
{
    if (auto const found = object.find(key); found != object.end() && !found->is_null())
        field = found->get<Value>();
}

template <typename Value>
void writeIfPresent(json& object, char const* key, std::optional<Value> const& field)
{
    if (field)
        object[key] = *field;
}

/// Throws at the first mistake.
Config toConfig(json const& object)
{
    Config config;
    object.at("pinned").get_to(config.pinned);
    object.at("iconSymbol").get_to(config.iconSymbol);
    readOptional(object, "launchAtLogin", config.launchAtLogin);
    readOptional(object, "autoRunOnLaunch", config.autoRunOnLaunch);
    readOptional(object, "onboarded", config.onboarded);
    readOptional(object, "permissionsShown", config.permissionsShown);
    readOptional(object, "menuHotkey", config.menuHotkey);
    readOptional(object, "shortcutHotkeys", config.shortcutHotkeys);
    readOptional(object, "launchAtLoginShortcuts", config.launchAtLoginShortcuts);
    readOptional(object, "groupOf", config.groupOf);
    return config;
}

} // namespace

// Found by the JSON library beside the type.
static void from_json(json const& object, Hotkey& hotkey)
{
    hotkey.keyCode = toInteger<std::int64_t>(object.at("keyCode"));
    hotkey.modifiers = toInteger<std::uint32_t>(object.at("modifiers"));
}

static void to_json(json& object, Hotkey const& hotkey)
{
    object = { { "keyCode", hotkey.keyCode }, { "modifiers", hotkey.modifiers } };
}

std::optional<Config> decodeConfig(std::string_view text)
{
    // The parser takes a zero byte for the end of the text, but no JSON text holds one.
    if (text.find('\0') != std::string_view::npos)
        return std::nullopt;
    try {
        return toConfig(json::parse(text));
    } catch (json::exception const&) {
        return std::nullopt;
    } catch (std::out_of_range const&) {
        return std::nullopt;
    }
}

std::string encodeConfig(Config const& config)
{
    json object { { "pinned", config.pinned }, { "iconSymbol", config.iconSymbol } };
    writeIfPresent(object, "launchAtLogin", config.launchAtLogin);
    writeIfPresent(object, "autoRunOnLaunch", config.autoRunOnLaunch);
    writeIfPresent(object, "onboarded", config.onboarded);
    writeIfPresent(object, "permissionsShown", config.permissionsShown);
    writeIfPresent(object, "menuHotkey", config.menuHotkey);
    writeIfPresent(object, "shortcutHotkeys", config.shortcutHotkeys);
    writeIfPresent(object, "launchAtLoginShortcuts", config.launchAtLoginShortcuts);
    writeIfPresent(object, "groupOf", config.groupOf);
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
