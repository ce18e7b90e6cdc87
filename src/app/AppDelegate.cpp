#include "app/AppDelegate.h"

#include "app/AutoRun.h"
#include "app/MainMenu.h"
#include "app/NoPlaceHint.h"
#include "app/StalePins.h"
#include "app/StatusIcon.h"
#include "platform/Fatal.h"
#include "platform/Folders.h"
#include "platform/MainQueue.h"
#include "platform/Text.h"
#include "platform/Workspace.h"
#include "services/HotkeyManager.h"
#include "services/ShortcutsService.h"
#include "ui/WindowController.h"

#include <limits>
#include <set>
#include <utility>

namespace quillbar {

namespace {

/// How long the start waits for the shortcuts tool.
constexpr std::chrono::seconds startPatience { 2 };

std::uint32_t registerGlobally(
    Hotkey const& hotkey, std::string const& title, std::function<void()> action)
{
    if (hotkey.keyCode < 0 || hotkey.keyCode > std::numeric_limits<std::uint32_t>::max())
        platform::fatalError("a hotkey's key code is negative or too large");
    return hotkeyManager().registerHotkey(
        std::move(action), static_cast<std::uint32_t>(hotkey.keyCode), hotkey.modifiers, title);
}

} // namespace

void AppDelegate::applicationDidFinishLaunching()
{
    updaterController_ = platform::startUpdater();
    statusItem_ = std::make_shared<platform::StatusItem>();
    statusItem_->onNoPlace
        = weakly(*this, [](AppDelegate& self) { self.explainThatThereIsNoPlace(); });
    statusItem_->onMenuOpen = weakly(*this, [](AppDelegate& self) { self.menuOpened(); });
    statusItem_->onMenuMissed = weakly(*this, [](AppDelegate& self) { self.openPalette(); });
    updateIcon();
    cleanupStalePins();
    finishLaunching();
}

// The rest of the start, once.
void AppDelegate::finishLaunching()
{
    // Quitting while the start waited must not use up what is offered only once.
    if (hasLaunched_ || platform::isTerminating())
        return;
    hasLaunched_ = true;
    rebuildMenu();
    platform::installMainMenu(mainMenu());
    applyHotkeys();
    applyLaunchAtLogin(platform::LoginSwitch::Keep);
    runOnboardingIfNeeded();
    showPermissionsTipIfNeeded();
    scheduleAutoRun(config_);
    if (onReady)
        onReady();
}

void AppDelegate::run(platform::MenuItem const& item)
{
    if (item.representedObject)
        trigger(*item.representedObject);
}

void AppDelegate::trigger(std::string const& name)
{
    pulseIcon(statusItem_);
    ShortcutsService::run(name, weakly(*this, [name](AppDelegate& self, bool succeeded) {
        if (succeeded) {
            self.rebuildMenu();
            self.notifications_.notifyRunSuccess(name);
        } else {
            pulseIcon(self.statusItem_, platform::SystemColor::Red);
            self.notifications_.notifyRunFailed(name);
        }
    }));
}

void AppDelegate::runAll()
{
    constexpr std::chrono::milliseconds spacing { 600 };
    std::chrono::milliseconds delay { 0 };
    for (auto const& name : config_.pinned) {
        // The controller is kept alive until all runs have started.
        platform::postDelayed(delay, [self = shared_from_this(), name] { self->trigger(name); });
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
    showIcon(existingStatusItem(), config_.iconSymbol);
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
    for (auto const& [name, hotkey] : config_.shortcutHotkeysEff()) {
        if (!hotkey.isValid() || !pinned.contains(name))
            continue;
        registerGlobally(hotkey, "Run “" + platform::isolated(name) + "”",
            weakly(*this, [name = name](AppDelegate& self) { self.trigger(name); }));
    }
}

void AppDelegate::applyLaunchAtLogin(platform::LoginSwitch loginSwitch)
{
    if (config_.launchAtLoginEff())
        platform::writeLoginEntry(
            { .label = launchAgentLabel_, .executablePath = platform::executablePath() },
            loginSwitch);
    else
        platform::removeLoginEntry(launchAgentLabel_);
}

// Listing and alert let events go on, so the record may have been replaced afterwards.
void AppDelegate::cleanupStalePins()
{
    if (config_.pinned.empty())
        return;
    auto const existing = listAtStart();
    // Late, the question must not take the keyboard from one who types, nor contradict settings
    // that are being edited; the next start asks again.
    if (!existing || settingsWindow_ || paletteWindow_)
        return;
    auto const missing = missingPins(config_.pinned, *existing);
    if (missing.empty() || platform::runModal(stalePinsAlert(missing)).button != 0)
        return;
    removePins(config_, missing);
    paletteList_.reset();
    config_.save();
    if (!hasLaunched_)
        return;
    applyHotkeys();
    rebuildMenu();
}

// A tool that takes its time does not hold up the start, which goes on while it is waited for.
std::optional<std::vector<std::string>> AppDelegate::listAtStart()
{
    auto const isListing = std::make_shared<bool>(true);
    platform::postDelayed(startPatience, weakly(*this, [isListing](AppDelegate& self) {
        if (*isListing)
            self.finishLaunching();
    }));
    auto existing = ShortcutsService::listIfAnswered();
    *isListing = false;
    return existing;
}

void AppDelegate::explainThatThereIsNoPlace() const
{
    // One that is free is not yet claimed for that.
    hotkeyManager().retryRefused();
    tellOnceThatThereIsNoPlace(config_.menuHotkeyEff());
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
