#include "app/AppDelegate.h"

#include "app/MainMenu.h"
#include "app/StalePins.h"
#include "app/StatusItemUnavailable.h"
#include "platform/Fatal.h"
#include "platform/Folders.h"
#include "platform/LoginEntry.h"
#include "platform/MainQueue.h"
#include "platform/Text.h"
#include "platform/Workspace.h"
#include "services/HotkeyManager.h"
#include "services/ShortcutsService.h"
#include "ui/AboutWindowController.h"
#include "ui/Weakly.h"

#include <algorithm>
#include <set>
#include <utility>

namespace quillbar {

namespace {

using std::chrono::milliseconds;

std::uint32_t registerGlobally(
    Hotkey const& hotkey, std::string const& title, std::function<void()> action)
{
    return hotkeyManager().registerHotkey(
        std::move(action), hotkey.systemKeyCode(), hotkey.modifiers, title);
}

} // namespace

void AppDelegate::applicationDidFinishLaunching()
{
    platform::setApplicationIcon(AboutWindowController::appIcon);
    updaterController_ = platform::startUpdater();
    statusItem_ = std::make_unique<platform::StatusItem>();
    statusItem_->onUnavailable
        = weakly(*this, [](AppDelegate& self, std::string const& explanation) {
              self.statusItemUnavailable(explanation);
          });
    statusItem_->onMenuOpen = weakly(*this, [](AppDelegate& self) { self.menuOpened(); });
    statusItem_->onMenuMissed = weakly(*this, [](AppDelegate& self) { self.openPalette(); });
    updateIcon();
    cleanupStalePins();
    rebuildMenu();
    platform::installMainMenu(mainMenu());
    applyHotkeys();
    applyLaunchAtLogin();
    runOnboardingIfNeeded();
    showPermissionsTipIfNeeded();
    autoRunIfNeeded();
}

void AppDelegate::applicationWillTerminate()
{
    if (isSaveOverdue_)
        saveConfig();
}

void AppDelegate::saveConfig()
{
    isSaveOverdue_ = !config_.save();
}

void AppDelegate::run(platform::MenuItem const& item)
{
    if (item.representedObject)
        trigger(*item.representedObject);
}

void AppDelegate::trigger(std::string const& name)
{
    pulseIcon();
    ShortcutsService::run(name, weakly(*this, [name](AppDelegate& self, bool succeeded) {
        if (succeeded) {
            self.rebuildMenu();
            self.notifications_.notifyRunSuccess(name);
        } else {
            self.pulseIcon(platform::SystemColor::Red);
            self.notifications_.notifyRunFailed(name);
        }
    }));
}

bool AppDelegate::runPinned(std::string const& name)
{
    auto const isPinned = std::ranges::find(config_.pinned, name) != config_.pinned.end();
    if (isPinned)
        trigger(name);
    return isPinned;
}

void AppDelegate::runAll()
{
    constexpr milliseconds spacing { 600 };
    milliseconds delay { 0 };
    for (auto const& name : config_.pinned) {
        // The controller is kept alive until all runs have started.
        platform::postDelayed(delay, [self = shared_from_this(), name] { self->trigger(name); });
        delay += spacing;
    }
}

// Captures only the names: the runs are of what is pinned at the start, and go on without the
// controller.
void AppDelegate::autoRunIfNeeded() const
{
    constexpr milliseconds spacing { 2000 };
    milliseconds delay { 1500 };
    for (auto const& name : config_.pinned) {
        if (!config_.launchesAtLogin(name))
            continue;
        platform::postDelayed(delay, [name] { ShortcutsService::run(name); });
        delay += spacing;
    }
}

void AppDelegate::openShortcutsApp()
{
    platform::openAddress("shortcuts://");
}

void AppDelegate::checkForUpdates()
{
    if (updaterController_)
        updaterController_->checkForUpdates();
}

void AppDelegate::updateIcon()
{
    auto& button = existingStatusItem().button();
    constexpr auto const* description = "Quillbar";
    auto image = platform::symbolImage(config_.iconSymbol, description);
    if (!image)
        image = platform::symbolImage("heart.fill", description);
    if (image)
        button.setImage(std::move(*image));
    // A fixed text: it names the default hotkey of the palette even when another is set.
    button.setToolTip("Quillbar · ⌥⌘T");
}

void AppDelegate::pulseIcon(std::optional<platform::Color> const& color)
{
    auto& button = existingStatusItem().button();
    auto const previous = button.contentTintColor();
    if (color)
        button.setContentTintColor(color);
    button.setAlpha(0.35);
    platform::postDelayed(milliseconds(150), weakly(*this, [previous](AppDelegate& self) {
        auto& pulsed = self.statusItem_->button();
        pulsed.setAlpha(1);
        pulsed.setContentTintColor(previous);
    }));
}

void AppDelegate::rebuildMenu()
{
    existingStatusItem().setMenu(makeStatusMenu(config_, statusMenuActions()));
}

void AppDelegate::applyHotkeys()
{
    hotkeyManager().unregisterAll();
    menuHotkeyID_ = registerGlobally(config_.menuHotkeyEff(), "Quick open",
        weakly(*this, [](AppDelegate& self) { self.openPalette(); }));
    std::set<std::string_view> const pinned(config_.pinned.begin(), config_.pinned.end());
    for (auto const& [pin, hotkey] : config_.shortcutHotkeysEff()) {
        if (!hotkey.isValid() || !pinned.contains(pin))
            continue;
        registerGlobally(hotkey, "Run “" + platform::isolated(pin) + "”",
            weakly(*this, [name = pin](AppDelegate& self) { self.trigger(name); }));
    }
}

void AppDelegate::applyLaunchAtLogin()
{
    if (config_.launchAtLoginEff())
        platform::writeLoginEntry(
            { .label = launchAgentLabel_, .executablePath = platform::executablePath() });
    else
        platform::removeLoginEntry(launchAgentLabel_);
}

void AppDelegate::cleanupStalePins()
{
    if (config_.pinned.empty())
        return;
    auto const existing = ShortcutsService::list();
    if (!existing)
        return;
    auto const missing = missingPins(config_.pinned, *existing);
    if (missing.empty() || platform::runModal(stalePinsAlert(missing)).button != 0)
        return;
    removePins(config_, missing);
    saveConfig();
}

void AppDelegate::statusItemUnavailable(std::string const& explanation) const
{
    // A hotkey that was refused and is free now counts as working only once it is claimed.
    hotkeyManager().retryRefused();
    explainUnavailableStatusItem(explanation, config_.menuHotkeyEff());
}

platform::StatusItem& AppDelegate::existingStatusItem() const
{
    if (!statusItem_)
        platform::fatalError("there is no status item yet");
    return *statusItem_;
}

StatusMenuActions AppDelegate::statusMenuActions()
{
    auto const command = [this](void (AppDelegate::*operation)()) {
        return weakly(*this, [operation](AppDelegate& self) { (self.*operation)(); });
    };
    return { .run
        = weakly(*this, [](AppDelegate& self, platform::MenuItem const& item) { self.run(item); }),
        .runAll = command(&AppDelegate::runAll),
        .openShortcutsApp = command(&AppDelegate::openShortcutsApp),
        .openPalette = command(&AppDelegate::openPalette),
        .openSettings = command(&AppDelegate::openSettings),
        .checkForUpdates = command(&AppDelegate::checkForUpdates),
        .showAbout = command(&AppDelegate::showAbout) };
}

} // namespace quillbar
