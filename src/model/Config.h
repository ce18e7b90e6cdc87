#pragma once

#include "model/Hotkey.h"

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace quillbar {

/// The one persisted record. Optional fields stay three-valued; only the accessors that end in
/// `Eff` apply defaults. Shortcuts are identified by their exact names throughout.
struct Config {
    std::vector<std::string> pinned;
    std::string iconSymbol = "heart.fill";
    std::optional<bool> launchAtLogin;
    /// Legacy switch; load() turns it into launchAtLoginShortcuts.
    std::optional<bool> autoRunOnLaunch;
    std::optional<bool> onboarded;
    std::optional<bool> permissionsShown;
    std::optional<Hotkey> menuHotkey;
    std::optional<std::map<std::string, Hotkey>> shortcutHotkeys;
    std::optional<std::map<std::string, bool>> launchAtLoginShortcuts;
    std::optional<std::map<std::string, std::string>> groupOf;

    [[nodiscard]] bool launchAtLoginEff() const { return launchAtLogin.value_or(true); }
    [[nodiscard]] bool autoRunOnLaunchEff() const { return autoRunOnLaunch.value_or(false); }
    [[nodiscard]] bool onboardedEff() const { return onboarded.value_or(false); }
    [[nodiscard]] bool permissionsShownEff() const { return permissionsShown.value_or(false); }
    [[nodiscard]] Hotkey menuHotkeyEff() const;
    /// Empty when the field is absent; valid as long as this record is unchanged.
    [[nodiscard]] std::map<std::string, Hotkey> const& shortcutHotkeysEff() const;
    [[nodiscard]] bool launchesAtLogin(std::string const& name) const;

    /// The stored record; a fresh one when the file is missing, unreadable or not a configuration.
    /// A text that is none is copied to config.json.unreadable, where that can be written.
    [[nodiscard]] static Config load();

    /// Replaces the stored record. Returns whether that succeeded; if not, the file is as it was.
    bool save() const;

    /// The folder of the store. Ends the program when the system names no folder for it.
    [[nodiscard]] static std::filesystem::path baseURL();
    [[nodiscard]] static std::filesystem::path fileURL();

    friend bool operator==(Config const&, Config const&) = default;
};

} // namespace quillbar
