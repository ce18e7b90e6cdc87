#pragma once

#include "app/RunNotifications.h"
#include "app/StatusMenu.h"
#include "model/Config.h"
#include "platform/Application.h"
#include "platform/Updater.h"
#include "platform/view/StatusItem.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace quillbar {

class AboutWindowController;
class PaletteList;
class PaletteWindowController;
class PermissionWindowController;
class SettingsWindowController;
class WelcomeWindowController;

/// Where the keyboard goes in the settings window.
enum class SettingsFocus : std::uint8_t { Unchanged, AvailableShortcuts };

/// The program's one controller: holds the status item and the live configuration, starts
/// everything up in order and carries out the commands. Must be held by a shared pointer, for
/// what outlives a call holds it weakly. Main thread.
class AppDelegate final : public platform::ApplicationDelegate,
                          public std::enable_shared_from_this<AppDelegate> {
public:
    AppDelegate();
    AppDelegate(AppDelegate const&) = delete;
    AppDelegate& operator=(AppDelegate const&) = delete;
    ~AppDelegate() override;

    void applicationDidFinishLaunching() override;
    /// Saves once more what could not be saved.
    void applicationWillTerminate() override;

    /// Shows the palette of the pinned shortcuts, or raises the one that is open.
    void openPalette() override;
    void openSettings() override { openSettingsPanel(SettingsFocus::Unchanged); }
    bool runPinned(std::string const& name) override;

    /// Shows the settings window, or raises the open one with its unsaved edits.
    void openSettingsPanel(SettingsFocus focus);
    void showAbout();

    /// Runs the shortcut that the menu item represents, if it represents one.
    void run(platform::MenuItem const& item);

    /// Runs one shortcut with feedback on the icon and by notification.
    void trigger(std::string const& name);

    /// Triggers every pinned shortcut, spaced apart in time.
    void runAll();

    void openShortcutsApp();
    void checkForUpdates();

    void updateIcon();
    void rebuildMenu();

    /// Registers every hotkey of the configuration anew. Ends the program for a key code that no
    /// key can have.
    void applyHotkeys();
    void applyLaunchAtLogin();

    [[nodiscard]] Config const& config() const { return config_; }
    /// The registration of the palette's hotkey; 0 when the system refused it.
    [[nodiscard]] std::uint32_t menuHotkeyID() const { return menuHotkeyID_; }

private:
    void saveConfig();
    void cleanupStalePins();
    void runOnboardingIfNeeded();
    void showPermissionsTipIfNeeded();
    void autoRunIfNeeded() const;
    /// Dims the icon for a moment, in that colour if one is given. Pulses that overlap each restore
    /// the tint that they found, so a red one may leave the icon red until the next.
    void pulseIcon(std::optional<platform::Color> const& color = std::nullopt);
    void statusItemUnavailable(std::string const& explanation) const;
    void menuOpened();
    void applySettings(Config const& edited);
    [[nodiscard]] platform::StatusItem& existingStatusItem() const;
    [[nodiscard]] StatusMenuActions statusMenuActions();
    [[nodiscard]] std::shared_ptr<PaletteList const> paletteList();

    template <typename Controller> using Slot = std::shared_ptr<Controller> AppDelegate::*;
    /// Fills the slot until the controller's window closes.
    template <typename Controller>
    void hold(Slot<Controller> slot, std::shared_ptr<Controller> controller);

    std::unique_ptr<platform::StatusItem> statusItem_;
    Config config_ = Config::load();
    // Whether the file lacks the last change, because saving it failed.
    bool isSaveOverdue_ = false;
    std::shared_ptr<SettingsWindowController> settingsWindow_;
    std::shared_ptr<AboutWindowController> aboutWindow_;
    std::shared_ptr<WelcomeWindowController> welcomeWindow_;
    std::shared_ptr<PaletteWindowController> paletteWindow_;
    std::shared_ptr<PermissionWindowController> permissionsWindow_;
    std::unique_ptr<platform::Updater> updaterController_;
    std::string const launchAgentLabel_ = "com.quillbar.launcher";
    std::uint32_t menuHotkeyID_ = 0;
    RunNotifications notifications_;
    bool justShowedOnboarding_ = false;
    // Made from the configuration on first use, for every palette that opens on it.
    std::shared_ptr<PaletteList const> paletteList_;
};

} // namespace quillbar
