// How the settings window looks; SettingsWindowController.cpp holds what it does.

#include "platform/Folders.h"
#include "platform/view/ScrollView.h"
#include "platform/view/Separator.h"
#include "ui/SettingsWindowController.h"
#include "ui/Texts.h"

namespace quillbar {

using platform::ButtonState;
using platform::Rect;
using platform::SystemColor;

namespace {

void sectionLabel(platform::View& content, std::string title, std::string rightHint, double y)
{
    addText(content, { 24, y, 240, 18 }, std::move(title),
        { .font = { .size = 11, .weight = platform::FontWeight::Semibold },
            .color = SystemColor::SecondaryLabel });
    if (rightHint.empty())
        return;
    addText(content, { 210, y, 326, 18 }, std::move(rightHint),
        { .font = { .size = 10 },
            .color = SystemColor::TertiaryLabel,
            .alignment = platform::TextAlignment::Right });
}

void addScrollView(platform::View& content, Rect frame, std::shared_ptr<platform::View> document)
{
    auto const scrollView = content.addSubview(std::make_shared<platform::ScrollView>());
    scrollView->setFrame(frame);
    scrollView->setBorder(platform::ScrollBorder::Bezel);
    scrollView->setVerticalScroller(platform::VerticalScroller::AutoHiding);
    scrollView->setDocumentView(std::move(document));
}

} // namespace

void SettingsWindowController::buildUserInterface()
{
    auto const content = std::make_shared<platform::View>();
    buildGeneral(*content);
    content->addSubview(std::make_shared<platform::Separator>())->setFrame({ 24, 166, 512, 1 });
    buildPinned(*content);
    buildAvailable(*content);
    buildFooter(*content);
    window().setContentView(content);
    watchHotkeys();
}

void SettingsWindowController::buildGeneral(platform::View& content)
{
    sectionLabel(content, "GENERAL", "", 20);
    content.addSubview(launchLoginBox_)->setFrame({ 26, 44, 300, 20 });
    launchLoginBox_->setState(model_.launchAtLoginEff() ? ButtonState::On : ButtonState::Off);

    addText(content, { 28, 88, 120, 20 }, "Menu bar icon:", {});
    content.addSubview(iconPopup_)->setFrame({ 200, 82, 336, 28 });
    iconPopup_->setAccessibilityLabel("Menu bar icon");
    rebuildIconMenu();

    addText(content, { 28, 126, 120, 20 }, "Quick open hotkey:", {})
        ->setLineBreak(platform::LineBreak::Tighten);
    content.addSubview(menuHotkeyRecorder_)->setFrame({ 200, 120, 336, 28 });
    menuHotkeyRecorder_->setAccessibilityLabel("Quick open hotkey");
    menuHotkeyRecorder_->setPlaceholderString("Click to record");
    menuHotkeyRecorder_->setHotkey(model_.menuHotkeyEff());
    menuHotkeyRecorder_->onRecord = weakly(
        *this, [](SettingsWindowController& self, std::int64_t keyCode, std::uint32_t modifiers) {
            self.model_.setMenuHotkey({ keyCode, modifiers });
            self.refreshHotkeyNotes();
        });
}

void SettingsWindowController::buildPinned(platform::View& content)
{
    sectionLabel(content, "PINNED SHORTCUTS", "Drag to reorder · Set a hotkey or login", 182);
    addScrollView(content, { 24, 206, 512, 156 }, pinnedTable_);
    pinnedTable_->setAccessibilityLabel("Pinned shortcuts");
    bindPinnedTable();
}

void SettingsWindowController::buildAvailable(platform::View& content)
{
    sectionLabel(content, "ALL SHORTCUTS", "Turn on the ones you want to pin", 380);
    availableRows_->setFrame({ 0, 0, 490, 156 });
    availableRows_->setAccessibilityLabel("All shortcuts");
    addScrollView(content, { 24, 404, 512, 156 }, availableRows_);
    rebuildAvailable();
}

void SettingsWindowController::buildFooter(platform::View& content)
{
    addText(content, { 26, 638, 180, 16 }, "Quillbar " + platform::bundleVersion(),
        { .font = { .size = 11 }, .color = SystemColor::TertiaryLabel });

    auto const closeButton = content.addSubview(
        std::make_shared<platform::Button>(platform::ButtonStyle::Push, "Close"));
    closeButton->setFrame({ 358, 636, 82, 30 });
    closeButton->onClick
        = weakly(*this, [](SettingsWindowController& self) { self.closeWindow(); });

    content.addSubview(saveButton_)->setFrame({ 456, 636, 80, 30 });
    saveButton_->setKeyEquivalent(platform::ButtonKey::Return);
    saveButton_->onClick = weakly(*this, [](SettingsWindowController& self) { self.save(); });
}

} // namespace quillbar
