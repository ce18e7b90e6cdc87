#include "app/AppDelegate.h"
#include "platform/Application.h"
#include "services/HotkeyManager.h"
#include "ui/AboutWindowController.h"
#include "ui/PaletteList.h"
#include "ui/PaletteWindowController.h"
#include "ui/PermissionWindowController.h"
#include "ui/SettingsWindowController.h"
#include "ui/WelcomeWindowController.h"

#include <map>
#include <utility>

namespace quillbar {

namespace {

void raise(WindowController const& controller)
{
    controller.window().makeKeyAndOrderFront();
    platform::activateIgnoringOtherApps();
}

void present(WindowController& controller)
{
    controller.showWindow();
    controller.window().center();
    raise(controller);
}

} // namespace

AppDelegate::AppDelegate() = default;
AppDelegate::~AppDelegate() = default;

template <typename Controller>
void AppDelegate::hold(Slot<Controller> slot, std::shared_ptr<Controller> controller)
{
    controller->window().addWillCloseObserver(
        weakly(*this, [slot](AppDelegate& self) { (self.*slot).reset(); }));
    this->*slot = std::move(controller);
}

std::shared_ptr<PaletteList const> AppDelegate::paletteList()
{
    if (!paletteList_)
        paletteList_ = std::make_shared<PaletteList const>(
            config_.pinned, config_.groupOf.value_or(std::map<std::string, std::string> {}));
    return paletteList_;
}

void AppDelegate::openPalette()
{
    if (!paletteWindow_)
        hold(&AppDelegate::paletteWindow_,
            makeController<PaletteWindowController>(paletteList(),
                weakly(*this,
                    [](AppDelegate& self, std::string const& name) { self.trigger(name); })));
    paletteWindow_->show();
}

void AppDelegate::openSettingsPanel(SettingsFocus focus)
{
    if (settingsWindow_) {
        raise(*settingsWindow_);
    } else {
        hold(&AppDelegate::settingsWindow_,
            makeController<SettingsWindowController>(config_,
                weakly(*this,
                    [](AppDelegate& self, Config const& edited) { self.applySettings(edited); })));
        present(*settingsWindow_);
    }
    if (focus == SettingsFocus::AvailableShortcuts)
        settingsWindow_->focusAvailableList();
}

void AppDelegate::menuOpened()
{
    if (settingsWindow_)
        settingsWindow_->refreshHotkeyNotes();
    else
        hotkeyManager().retryRefused();
}

// The file is written before any effect is applied, and the menu is rebuilt last.
void AppDelegate::applySettings(Config const& edited)
{
    config_ = edited;
    paletteList_.reset();
    saveConfig();
    updateIcon();
    applyLaunchAtLogin();
    applyHotkeys();
    rebuildMenu();
}

void AppDelegate::showAbout()
{
    if (aboutWindow_) {
        raise(*aboutWindow_);
        return;
    }
    hold(&AppDelegate::aboutWindow_, makeController<AboutWindowController>());
    aboutWindow_->showWindow();
    aboutWindow_->window().center();
    platform::activateIgnoringOtherApps();
}

// The flags are stored before their window appears: each is offered once, whatever the person does.
void AppDelegate::runOnboardingIfNeeded()
{
    if (!config_.pinned.empty() || config_.onboardedEff() || welcomeWindow_)
        return;
    config_.onboarded = true;
    saveConfig();
    justShowedOnboarding_ = true;
    hold(&AppDelegate::welcomeWindow_,
        makeController<WelcomeWindowController>(weakly(*this,
            [](AppDelegate& self) { self.openSettingsPanel(SettingsFocus::AvailableShortcuts); })));
    present(*welcomeWindow_);
}

void AppDelegate::showPermissionsTipIfNeeded()
{
    if (config_.permissionsShownEff() || justShowedOnboarding_ || permissionsWindow_)
        return;
    config_.permissionsShown = true;
    saveConfig();
    hold(&AppDelegate::permissionsWindow_, makeController<PermissionWindowController>());
    present(*permissionsWindow_);
}

} // namespace quillbar
