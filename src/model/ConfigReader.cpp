#include "model/ConfigReader.h"

#include <cmath>
#include <limits>
#include <string_view>
#include <type_traits>
#include <utility>

namespace quillbar {

namespace {

/// Far more than a configuration has; a text that nests deeper was not written as one.
constexpr std::size_t maximumDepth = 512;

constexpr std::string_view iconSymbolKey = "iconSymbol";
constexpr std::string_view keyCodeKey = "keyCode";
constexpr std::string_view modifiersKey = "modifiers";

/// The flag with that key, or null.
std::optional<bool> Config::*flagMember(std::string_view key)
{
    if (key == "launchAtLogin")
        return &Config::launchAtLogin;
    if (key == "autoRunOnLaunch")
        return &Config::autoRunOnLaunch;
    if (key == "onboarded")
        return &Config::onboarded;
    if (key == "permissionsShown")
        return &Config::permissionsShown;
    return nullptr;
}

/// Null counts as absent; any other type than the target's is a mistake.
template <typename Value, typename Scalar> bool assign(std::optional<Value>& target, Scalar& scalar)
{
    target.reset();
    if (auto* value = std::get_if<Value>(&scalar))
        target = std::move(*value);
    return target.has_value() || std::holds_alternative<std::nullptr_t>(scalar);
}

/// The number exactly as this integer type holds it, however it was written: 17 and 17.0 are the
/// same number.
template <typename Integer, typename Scalar> std::optional<Integer> exactly(Scalar const& scalar)
{
    auto convert = [](auto const& value) -> std::optional<Integer> {
        using Value = std::decay_t<decltype(value)>;
        if constexpr (std::is_same_v<Value, std::int64_t> || std::is_same_v<Value, std::uint64_t>) {
            if (std::in_range<Integer>(value))
                return static_cast<Integer>(value);
        } else if constexpr (std::is_same_v<Value, double>) {
            // The type's largest value may round up as a double, a power of two never does.
            auto const end = std::ldexp(1.0, std::numeric_limits<Integer>::digits);
            auto const begin = std::is_signed_v<Integer> ? -end : 0.0;
            if (value >= begin && value < end && std::trunc(value) == value)
                return static_cast<Integer>(value);
        }
        return std::nullopt;
    };
    return std::visit(convert, scalar);
}

} // namespace

/// The fields that are objects or arrays.
struct ConfigReader::Field {
    std::string_view key;
    Container container;
    Place place;
};

ConfigReader::Field const ConfigReader::fields[] = {
    { "pinned", Container::Array, Place::Pinned },
    { "menuHotkey", Container::Object, Place::MenuHotkey },
    { "shortcutHotkeys", Container::Object, Place::ShortcutHotkeys },
    { "launchAtLoginShortcuts", Container::Object, Place::LaunchAtLoginShortcuts },
    { "groupOf", Container::Object, Place::GroupOf },
};

std::optional<Config> ConfigReader::take()
{
    if (!pinned_ || !iconSymbol_)
        return std::nullopt;
    config_.pinned = std::move(*pinned_);
    config_.iconSymbol = std::move(*iconSymbol_);
    return std::move(config_);
}

bool ConfigReader::enter(Container container)
{
    auto const place = placeOf(container);
    if (!place || places_.size() == maximumDepth)
        return false;
    if (*place == Place::ShortcutHotkey)
        shortcutName_ = key_;
    clear(*place);
    places_.push_back(*place);
    return true;
}

std::optional<ConfigReader::Place> ConfigReader::placeOf(Container container) const
{
    auto const isObject = container == Container::Object;
    if (places_.empty())
        return isObject ? std::optional(Place::Record) : std::nullopt;

    switch (places_.back()) {
    case Place::Record:
        return placeInRecord(container);
    case Place::ShortcutHotkeys:
        return isObject ? std::optional(Place::ShortcutHotkey) : std::nullopt;
    case Place::MenuHotkey:
    case Place::ShortcutHotkey:
        if (key_ == keyCodeKey || key_ == modifiersKey)
            return std::nullopt;
        return Place::Ignored;
    case Place::Ignored:
        return Place::Ignored;
    case Place::Pinned:
    case Place::LaunchAtLoginShortcuts:
    case Place::GroupOf:
        break;
    }
    return std::nullopt;
}

std::optional<ConfigReader::Place> ConfigReader::placeInRecord(Container container) const
{
    for (auto const& field : fields) {
        if (field.key == key_)
            return field.container == container ? std::optional(field.place) : std::nullopt;
    }
    if (key_ == iconSymbolKey || flagMember(key_))
        return std::nullopt;
    return Place::Ignored;
}

/// Makes the field empty but present, so that nothing is left of an equal key before.
void ConfigReader::clear(Place place)
{
    switch (place) {
    case Place::Pinned:
        pinned_.emplace();
        break;
    case Place::MenuHotkey:
    case Place::ShortcutHotkey:
        keyCode_.reset();
        modifiers_.reset();
        break;
    case Place::ShortcutHotkeys:
        config_.shortcutHotkeys.emplace();
        break;
    case Place::LaunchAtLoginShortcuts:
        config_.launchAtLoginShortcuts.emplace();
        break;
    case Place::GroupOf:
        config_.groupOf.emplace();
        break;
    case Place::Record:
    case Place::Ignored:
        break;
    }
}

bool ConfigReader::number_float(number_float_t value, string_t const& text)
{
    // A whole number beyond 64 bits arrives here too, rounded perhaps into their range.
    auto const isWhole = text.find_first_of(".eE") == std::string::npos;
    return scalar(isWhole ? std::numeric_limits<double>::infinity() : value);
}

bool ConfigReader::leave()
{
    places_.pop_back();
    return true;
}

bool ConfigReader::end_object()
{
    auto const place = places_.back();
    leave();
    if (place != Place::MenuHotkey && place != Place::ShortcutHotkey)
        return true;
    if (!keyCode_ || !modifiers_)
        return false;
    Hotkey const hotkey { *keyCode_, *modifiers_ };
    if (place == Place::MenuHotkey)
        config_.menuHotkey = hotkey;
    else
        config_.shortcutHotkeys->insert_or_assign(shortcutName_, hotkey);
    return true;
}

bool ConfigReader::key(string_t& value)
{
    key_ = std::move(value);
    return true;
}

bool ConfigReader::scalar(Scalar value)
{
    if (places_.empty())
        return false;

    auto* const flag = std::get_if<bool>(&value);
    auto* const text = std::get_if<std::string>(&value);
    switch (places_.back()) {
    case Place::Record:
        return recordScalar(value);
    case Place::MenuHotkey:
    case Place::ShortcutHotkey:
        return hotkeyScalar(value);
    case Place::Pinned:
        if (text)
            pinned_->push_back(std::move(*text));
        return text;
    case Place::LaunchAtLoginShortcuts:
        if (flag)
            config_.launchAtLoginShortcuts->insert_or_assign(key_, *flag);
        return flag;
    case Place::GroupOf:
        if (text)
            config_.groupOf->insert_or_assign(key_, std::move(*text));
        return text;
    case Place::ShortcutHotkeys:
        return false;
    case Place::Ignored:
        break;
    }
    return true;
}

bool ConfigReader::recordScalar(Scalar& value)
{
    if (key_ == iconSymbolKey)
        return assign(iconSymbol_, value);
    if (auto const member = flagMember(key_))
        return assign(config_.*member, value);

    auto const isNull = std::holds_alternative<std::nullptr_t>(value);
    if (key_ == "pinned")
        pinned_.reset();
    else if (key_ == "menuHotkey")
        config_.menuHotkey.reset();
    else if (key_ == "shortcutHotkeys")
        config_.shortcutHotkeys.reset();
    else if (key_ == "launchAtLoginShortcuts")
        config_.launchAtLoginShortcuts.reset();
    else if (key_ == "groupOf")
        config_.groupOf.reset();
    else
        return true;
    return isNull;
}

bool ConfigReader::hotkeyScalar(Scalar const& value)
{
    if (key_ == keyCodeKey) {
        keyCode_ = exactly<std::int64_t>(value);
        return keyCode_.has_value();
    }
    if (key_ == modifiersKey) {
        modifiers_ = exactly<std::uint32_t>(value);
        return modifiers_.has_value();
    }
    return true;
}

} // namespace quillbar
