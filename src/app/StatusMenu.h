#pragma once

#include "model/Config.h"
#include "platform/view/Menu.h"

#include <functional>

namespace quillbar {

/// What the items of the status menu do.
struct StatusMenuActions {
    /// Told the item of a shortcut, which represents the shortcut's name.
    std::function<void(platform::MenuItem const&)> run;
    std::function<void()> runAll;
    std::function<void()> openShortcutsApp;
    std::function<void()> openPalette;
    std::function<void()> openSettings;
    std::function<void()> checkForUpdates;
    std::function<void()> showAbout;
};

/// The whole status menu for a configuration. Main thread.
[[nodiscard]] platform::Menu makeStatusMenu(Config const& config, StatusMenuActions const& actions);

} // namespace quillbar
