#include "ui/SettingsWindowController.h"

#include "platform/Application.h"
#include "platform/MainQueue.h"
#include "services/ShortcutsService.h"
#include "ui/IconMenu.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace quillbar {

using platform::Button;
using platform::ButtonState;
using platform::ButtonStyle;

namespace {

constexpr std::chrono::milliseconds savedFeedback { 1200 };

std::shared_ptr<platform::Window> makeWindow()
{
    auto window = std::make_shared<platform::Window>(
        platform::Size { 560, 700 }, platform::WindowStyle::TitledClosable);
    window->setTitle("Quillbar Settings");
    return window;
}

// Making many checkboxes takes time, and only six are visible.
constexpr std::size_t rowsAtOnce = 2000;

// Without the tool's answer the pins are the only shortcuts known, and all of them stay.
SettingsModel makeModel(Config config)
{
    auto const all = ShortcutsService::list().value_or(config.pinned);
    return SettingsModel(std::move(config), all);
}

} // namespace

SettingsWindowController::SettingsWindowController(
    Config config, std::function<void(Config const&)> onSave)
    : WindowController(makeWindow())
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

void SettingsWindowController::save()
{
    handOver(model_.save(controls()));
    refreshHotkeyNotes();
    platform::activateIgnoringOtherApps();
    flashSaved();
}

void SettingsWindowController::closeWindow()
{
    window().close();
    platform::activateIgnoringOtherApps();
}

void SettingsWindowController::focusAvailableList()
{
    auto const topmost = std::ranges::min_element(
        checkboxes_, {}, [](auto const& entry) { return entry.second->frame().y; });
    if (topmost != checkboxes_.end())
        window().makeFirstResponder(topmost->second);
}

void SettingsWindowController::rebuildAvailable(std::size_t rowsNeeded)
{
    availableRows_->removeAllSubviews();
    checkboxes_.clear();
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
        auto const checkbox = std::make_shared<Button>(ButtonStyle::CheckBox, name);
        checkbox->setFrame({ 10, 6 + 26 * static_cast<double>(row), 460, 20 });
        checkbox->onClick
            = weakly(*this, [name](SettingsWindowController& self) { self.toggleAvailable(name); });
        // The names are sorted, so that each goes to the end of the map.
        checkboxes_.insert_or_assign(checkboxes_.end(), name, availableRows_->addSubview(checkbox));
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
