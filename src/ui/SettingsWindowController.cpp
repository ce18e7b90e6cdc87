#include "ui/SettingsWindowController.h"

#include "platform/Application.h"
#include "platform/Folders.h"
#include "platform/MainQueue.h"
#include "platform/view/ScrollView.h"
#include "platform/view/Separator.h"
#include "services/ShortcutsService.h"
#include "ui/IconMenu.h"
#include "ui/Texts.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace quillbar {

using platform::Button;
using platform::ButtonState;
using platform::ButtonStyle;
using platform::Rect;
using platform::SystemColor;

namespace {

constexpr std::chrono::milliseconds savedFeedback { 1200 };

// Making many checkboxes takes time, and only six are visible.
constexpr std::size_t rowsAtOnce = 2000;

// Without the tool's answer the pins are the only shortcuts known, and all of them stay.
SettingsModel makeModel(Config config)
{
    auto const all = ShortcutsService::list().value_or(config.pinned);
    return SettingsModel(std::move(config), all);
}

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

SettingsWindowController::SettingsWindowController(
    Config config, std::function<void(Config const&)> onSave)
    : WindowController({ 560, 700 }, "Quillbar Settings")
    , model_(makeModel(std::move(config)))
    , onSave_(std::move(onSave))
    , availableRows_(std::make_shared<platform::View>())
    , pinnedTable_(std::make_shared<platform::TableView>())
    , iconPopup_(std::make_shared<platform::PopUpButton>())
    , launchLoginBox_(std::make_shared<Button>(ButtonStyle::CheckBox, "Start Quillbar at login"))
    , menuHotkeyRecorder_(std::make_shared<HotkeyRecorder>())
    , saveButton_(std::make_shared<Button>(ButtonStyle::Push, "Save"))
{
}

void SettingsWindowController::buildUserInterface()
{
    auto& content = window().contentView();
    buildGeneral(content);
    content.addSubview(std::make_shared<platform::Separator>())->setFrame({ 24, 166, 512, 1 });
    buildPinned(content);
    buildAvailable(content);
    buildFooter(content);
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

    auto const closeButton
        = content.addSubview(std::make_shared<Button>(ButtonStyle::Push, "Close"));
    closeButton->setFrame({ 358, 636, 82, 30 });
    closeButton->onClick = weakly(*this, [](SettingsWindowController& self) {
        self.window().close();
        platform::activateIgnoringOtherApps();
    });

    content.addSubview(saveButton_)->setFrame({ 456, 636, 80, 30 });
    saveButton_->setKeyEquivalent(platform::ButtonKey::Return);
    saveButton_->onClick = weakly(*this, [](SettingsWindowController& self) { self.save(); });
}

void SettingsWindowController::save()
{
    handOver(model_.save(controls()));
    refreshHotkeyNotes();
    platform::activateIgnoringOtherApps();
    flashSaved();
}

void SettingsWindowController::focusAvailableList()
{
    auto const& rows = availableRows_->subviews();
    if (!rows.empty())
        window().makeFirstResponder(rows.front());
}

void SettingsWindowController::rebuildAvailable(std::size_t rowsNeeded)
{
    availableRows_->removeAllSubviews();
    auto const count = static_cast<double>(model_.others().size());
    availableRows_->setFrame({ 0, 0, 490, std::max(156.0, 26 * count + 12) });
    addAvailableRows(++availableVersion_, std::max(rowsNeeded, rowsAtOnce));
}

void SettingsWindowController::addAvailableRows(std::uint64_t version, std::size_t count)
{
    if (version != availableVersion_)
        return;
    auto const& others = model_.others();
    auto const begin = availableRows_->subviews().size();
    auto const end = std::min(begin + count, others.size());
    for (auto row = begin; row < end; ++row) {
        auto const& name = others[row];
        auto const checkbox
            = availableRows_->addSubview(std::make_shared<Button>(ButtonStyle::CheckBox, name));
        checkbox->setFrame({ 10, 6 + 26 * static_cast<double>(row), 460, 20 });
        checkbox->onClick
            = weakly(*this, [name](SettingsWindowController& self) { self.toggleAvailable(name); });
    }
    if (end < others.size())
        platform::post(weakly(*this, [version](SettingsWindowController& self) {
            self.addAvailableRows(version, rowsAtOnce);
        }));
}

void SettingsWindowController::toggleAvailable(std::string const& name)
{
    auto const focused = window().firstResponder();
    auto const& rows = availableRows_->subviews();
    auto const place = std::ranges::find(rows, focused);
    bool const hadFocus = focused && place != rows.end();
    auto const row = place - rows.begin();

    if (!model_.pin(name))
        return;
    rebuildAvailable(hadFocus ? static_cast<std::size_t>(row) + 1 : 0);
    reloadPinnedTable();
    if (hadFocus)
        focusAfterPinning(static_cast<std::size_t>(row));
    handOver(model_.configAfterMoving(name, SettingsModel::Move::IntoPinned, controls()));
    refreshHotkeyNotes();
}

/// The clicked checkbox no longer exists: the focus moves to the next one or, when none is left, to
/// the recorder in the shortcut's pinned row.
void SettingsWindowController::focusAfterPinning(std::size_t row)
{
    auto const& rows = availableRows_->subviews();
    if (!rows.empty()) {
        window().makeFirstResponder(rows[std::min(row, rows.size() - 1)]);
        return;
    }
    auto const pinned = model_.order().size() - 1;
    pinnedTable_->scrollRowToVisible(pinned);
    if (auto const cell = pinnedTable_->viewAtRow(pinned))
        window().makeFirstResponder(
            static_cast<PinnedCellView&>(*cell).recorder().shared_from_this());
}

void SettingsWindowController::removePin(std::size_t row)
{
    auto const name = model_.unpin(row);
    if (!name)
        return;
    rebuildAvailable();
    reloadPinnedTable();
    handOver(model_.configAfterMoving(*name, SettingsModel::Move::OutOfPinned, controls()));
    refreshHotkeyNotes();
}

void SettingsWindowController::rebuildIconMenu()
{
    auto const& current = model_.customIconName();
    auto menu = iconMenu(
        current, weakly(*this, [](SettingsWindowController& self) { self.chooseCustomIcon(); }));
    iconPopup_->removeAllItems();
    for (auto& item : menu.items)
        iconPopup_->addItem(std::move(item));
    if (menu.selected)
        iconPopup_->selectItem(*menu.selected);
}

void SettingsWindowController::chooseCustomIcon()
{
    auto symbol = askForIcon(model_.customIconName());
    if (!symbol.empty())
        model_.setCustomIconName(std::move(symbol));
    rebuildIconMenu();
}

SettingsModel::Controls SettingsWindowController::controls() const
{
    auto const* const icon = iconPopup_->selectedItem();
    return {
        .iconSymbol = icon ? icon->representedObject : std::nullopt,
        .launchAtLogin = launchLoginBox_->state() == ButtonState::On,
    };
}

void SettingsWindowController::handOver(Config const& record) const
{
    if (onSave_)
        onSave_(record);
}

void SettingsWindowController::flashSaved()
{
    if (!saveButton_->isEnabled())
        return;
    auto title = saveButton_->title();
    saveButton_->setTitle("Saved ✓");
    saveButton_->setEnabled(false);
    platform::postDelayed(
        savedFeedback, [self = shared_from_this(), button = saveButton_, title = std::move(title)] {
            button->setTitle(title);
            button->setEnabled(true);
        });
}

} // namespace quillbar
