#pragma once

#include "app/RunNotifications.h"
#include "app/StatusMenu.h"
#include "model/Config.h"
#include "platform/Application.h"
#include "platform/LoginEntry.h"
#include "platform/Updater.h"
#include "platform/view/StatusItem.h"

#include <cstdint>
#include <memory>
#include <string>

namespace quillbar {

/// The program's one controller: holds the status item and the live configuration, starts
/// everything up in order and carries out the commands. Must be held by a shared pointer, for
/// what outlives a call holds it weakly. Main thread.
class AppDelegate final : public platform::ApplicationDelegate,
                          public std::enable_shared_from_this<AppDelegate> {
public:
    void applicationDidFinishLaunching() override;

    void openPalette() override { }
    void openSettings() override { }

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
    void applyLaunchAtLogin(platform::LoginSwitch loginSwitch);

    [[nodiscard]] Config const& config() const { return config_; }
    /// The registration of the palette's hotkey; 0 when the system refused it.
    [[nodiscard]] std::uint32_t menuHotkeyID() const { return menuHotkeyID_; }

private:
    void cleanupStalePins();
    [[nodiscard]] platform::StatusItem& existingStatusItem() const;
    [[nodiscard]] StatusMenuActions statusMenuActions();

    std::shared_ptr<platform::StatusItem> statusItem_;
    Config config_ = Config::load();
    std::unique_ptr<platform::Updater> updaterController_;
    std::string const launchAgentLabel_ = "com.quillbar.launcher";
    std::uint32_t menuHotkeyID_ = 0;
    RunNotifications notifications_;
};

} // namespace quillbar
