#include "ui/SettingsModel.h"

#include "platform/Text.h"

#include <algorithm>
#include <string_view>
#include <unordered_set>
#include <utility>

namespace quillbar {

namespace {

using Names = std::unordered_set<std::string_view>;

/// The names that are in `listed`, or those that are not.
std::vector<std::string> filtered(
    std::vector<std::string> const& names, std::vector<std::string> const& listed, bool areListed)
{
    Names const lookup(listed.begin(), listed.end());
    std::vector<std::string> kept;
    std::ranges::copy_if(names, std::back_inserter(kept),
        [&](auto const& name) { return lookup.contains(name) == areListed; });
    return kept;
}

/// The pins that are among all names, which may be very many.
std::vector<std::string> existing(
    std::vector<std::string> const& pinned, std::vector<std::string> const& all)
{
    return filtered(pinned, filtered(all, pinned, true), true);
}

/// Ends the program for a key code that no key can have, before that is stored.
bool isStored(Hotkey const& hotkey)
{
    return hotkey.systemKeyCode() != 0;
}

template <typename Value, typename Predicate>
std::map<std::string, Value> entriesOf(
    std::map<std::string, Value> const& map, Names const& names, Predicate isKept)
{
    std::map<std::string, Value> kept;
    for (auto const& [name, value] : map) {
        if (names.contains(name) && isKept(value))
            kept.emplace_hint(kept.end(), name, value);
    }
    return kept;
}

} // namespace

SettingsModel::SettingsModel(Config config, std::vector<std::string> const& all)
    : config_(std::move(config))
    , order_(existing(config_.pinned, all))
    , others_(filtered(all, order_, false))
    , recordedHotkeys_(config_.shortcutHotkeysEff())
    , loginFlags_(config_.launchAtLoginShortcuts.value_or(std::map<std::string, bool> {}))
    , groups_(config_.groupOf.value_or(std::map<std::string, std::string> {}))
    , pendingMenuHotkey_(config_.menuHotkey)
    , customIconName_(config_.iconSymbol)
{
}

bool SettingsModel::pin(std::string const& name)
{
    // Shortcuts of the same name are one shortcut.
    if (std::erase(others_, name) == 0)
        return false;
    order_.push_back(name);
    return true;
}

std::optional<std::string> SettingsModel::unpin(std::size_t row)
{
    if (row >= order_.size())
        return std::nullopt;
    auto const entry = order_.begin() + static_cast<std::ptrdiff_t>(row);
    auto name = std::move(*entry);
    order_.erase(entry);
    recordedHotkeys_.erase(name);
    others_.push_back(name);
    std::ranges::stable_sort(others_, platform::isOrderedBefore);
    return name;
}

bool SettingsModel::move(std::string const& name, std::size_t gap)
{
    auto const entry = std::ranges::find(order_, name);
    if (entry == order_.end())
        return false;
    auto const from = static_cast<std::size_t>(entry - order_.begin());
    // The entry's own place above the gap vanishes.
    moveRow(from, std::min(from < gap ? gap - 1 : gap, order_.size() - 1));
    return true;
}

void SettingsModel::moveRow(std::size_t from, std::size_t target)
{
    auto const place
        = [&](std::size_t row) { return order_.begin() + static_cast<std::ptrdiff_t>(row); };
    auto moved = std::move(order_[from]);
    order_.erase(place(from));
    order_.insert(place(target), std::move(moved));
}

std::optional<Hotkey> SettingsModel::hotkey(std::string const& name) const
{
    auto const found = recordedHotkeys_.find(name);
    return found == recordedHotkeys_.end() ? std::nullopt : std::optional(found->second);
}

std::map<std::string, Hotkey> SettingsModel::pinnedHotkeys() const
{
    return entriesOf(
        recordedHotkeys_, Names(order_.begin(), order_.end()), [](Hotkey const&) { return true; });
}

bool SettingsModel::loginFlag(std::string const& name) const
{
    auto const found = loginFlags_.find(name);
    return found != loginFlags_.end() && found->second;
}

std::string SettingsModel::group(std::string const& name) const
{
    auto const found = groups_.find(name);
    return found == groups_.end() ? std::string() : found->second;
}

Hotkey SettingsModel::menuHotkeyEff() const
{
    return pendingMenuHotkey_.value_or(config_.menuHotkeyEff());
}

Config SettingsModel::configAfterMoving(
    std::string const& name, Move move, Controls const& controls) const
{
    auto pinned = order_;
    if (move == Move::OutOfPinned)
        std::erase(pinned, name);
    else if (std::ranges::find(pinned, name) == pinned.end())
        pinned.push_back(name);
    return record(std::move(pinned), controls);
}

Config const& SettingsModel::save(Controls const& controls)
{
    config_ = record(order_, controls);
    return config_;
}

Config SettingsModel::record(std::vector<std::string> pinned, Controls const& controls) const
{
    auto result = config_;
    result.pinned = std::move(pinned);
    if (controls.iconSymbol)
        result.iconSymbol = *controls.iconSymbol;
    result.launchAtLogin = controls.launchAtLogin;
    result.menuHotkey = pendingMenuHotkey_;
    Names const names(result.pinned.begin(), result.pinned.end());
    result.shortcutHotkeys = entriesOf(recordedHotkeys_, names, isStored);
    result.launchAtLoginShortcuts = entriesOf(loginFlags_, names, [](bool) { return true; });
    result.groupOf
        = entriesOf(groups_, names, [](std::string const& title) { return !title.empty(); });
    return result;
}

} // namespace quillbar
