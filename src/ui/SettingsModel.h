#pragma once

#include "model/Config.h"

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace quillbar {

/// What the settings window edits: which shortcuts are pinned in which order, and what belongs to
/// each of them. Knows no views. A shortcut that is not pinned keeps its flag and section here;
/// only the records leave them out.
class SettingsModel {
public:
    /// What the records take from the window's controls.
    struct Controls {
        /// Absent when the chosen entry of the icon menu carries no symbol.
        std::optional<std::string> iconSymbol;
        bool launchAtLogin = true;
    };

    enum class Move : std::uint8_t { IntoPinned, OutOfPinned };

    /// `all` is what the shortcuts tool lists; pinned names that it lacks are left out.
    SettingsModel(Config config, std::vector<std::string> const& all);

    /// Puts the shortcut at the end of the pinned ones; whether it was available.
    bool pin(std::string const& name);
    /// Makes the shortcut of that row available again, in sorted place, without its hotkey. Returns
    /// its name, or nothing for a row that does not exist.
    std::optional<std::string> unpin(std::size_t row);
    /// Moves the first entry of that name into the gap above row `gap`; whether there is one.
    bool move(std::string const& name, std::size_t gap);
    /// Moves the entry at row `from` so that it is row `target`; both exist.
    void moveRow(std::size_t from, std::size_t target);

    void setHotkey(std::string const& name, Hotkey hotkey) { recordedHotkeys_[name] = hotkey; }
    void setLoginFlag(std::string const& name, bool isOn) { loginFlags_[name] = isOn; }
    /// An empty title means no section.
    void setGroup(std::string const& name, std::string title) { groups_[name] = std::move(title); }
    void setMenuHotkey(Hotkey hotkey) { pendingMenuHotkey_ = hotkey; }
    void setCustomIconName(std::string symbol) { customIconName_ = std::move(symbol); }

    [[nodiscard]] std::vector<std::string> const& order() const { return order_; }
    [[nodiscard]] std::vector<std::string> const& others() const { return others_; }
    [[nodiscard]] std::optional<Hotkey> hotkey(std::string const& name) const;
    /// Of the pinned shortcuts, also those with key code 0, which are not saved.
    [[nodiscard]] std::map<std::string, Hotkey> pinnedHotkeys() const;
    [[nodiscard]] bool loginFlag(std::string const& name) const;
    /// Empty without a section.
    [[nodiscard]] std::string group(std::string const& name) const;
    /// The quick-open hotkey as it will be in force.
    [[nodiscard]] Hotkey menuHotkeyEff() const;
    /// The symbol that the icon menu starts from.
    [[nodiscard]] std::string const& customIconName() const { return customIconName_; }
    [[nodiscard]] bool launchAtLoginEff() const { return config_.launchAtLoginEff(); }

    /// The record as it is once the shortcut has moved; every pending edit is in it.
    [[nodiscard]] Config configAfterMoving(
        std::string const& name, Move move, Controls const& controls) const;
    /// Takes every edit over and returns the record.
    [[nodiscard]] Config const& save(Controls const& controls);

private:
    [[nodiscard]] Config record(std::vector<std::string> pinned, Controls const& controls) const;

    Config config_;
    std::vector<std::string> order_;
    std::vector<std::string> others_;
    std::map<std::string, Hotkey> recordedHotkeys_;
    std::map<std::string, bool> loginFlags_;
    std::map<std::string, std::string> groups_;
    std::optional<Hotkey> pendingMenuHotkey_;
    std::string customIconName_;
};

} // namespace quillbar
