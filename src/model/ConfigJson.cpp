#include "model/ConfigJson.h"

#include <nlohmann/json.hpp>

#include <cmath>
#include <stdexcept>
#include <utility>

namespace quillbar {

using nlohmann::json;

namespace {

/// The number exactly, however it is written: 17.0 is 17. Throws std::out_of_range for any other
/// value.
template <typename Integer> Integer toInteger(json const& value)
{
    // Below 2^53 a double holds every integer. The parser also makes a double of a whole number
    // beyond 64 bits.
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

} // namespace

// Outside the unnamed namespace: the JSON library finds these two through the type's namespace.
static void from_json(json const& object, Hotkey& hotkey)
{
    hotkey.keyCode = toInteger<std::int64_t>(object.at("keyCode"));
    hotkey.modifiers = toInteger<std::uint32_t>(object.at("modifiers"));
}

static void to_json(json& object, Hotkey const& hotkey)
{
    object = { { "keyCode", hotkey.keyCode }, { "modifiers", hotkey.modifiers } };
}

namespace {

/// Calls `visit` with the key and the field of each optional value of the record.
template <typename Record, typename Visitor>
void forEachOptional(Record& config, Visitor const& visit)
{
    visit("launchAtLogin", config.launchAtLogin);
    visit("autoRunOnLaunch", config.autoRunOnLaunch);
    visit("onboarded", config.onboarded);
    visit("permissionsShown", config.permissionsShown);
    visit("menuHotkey", config.menuHotkey);
    visit("shortcutHotkeys", config.shortcutHotkeys);
    visit("launchAtLoginShortcuts", config.launchAtLoginShortcuts);
    visit("groupOf", config.groupOf);
}

/// Throws json::exception for a missing key or a value of another type, and std::out_of_range for a
/// number that is no exact integer; decodeConfig() catches both.
Config toConfig(json const& object)
{
    Config config;
    object.at("pinned").get_to(config.pinned);
    object.at("iconSymbol").get_to(config.iconSymbol);
    forEachOptional(config, [&](char const* key, auto& field) {
        // Null counts as absent.
        if (auto const found = object.find(key); found != object.end() && !found->is_null())
            found->get_to(field.emplace());
    });
    return config;
}

} // namespace

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
    forEachOptional(config, [&](char const* key, auto const& field) {
        if (field)
            object[key] = *field;
    });
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
