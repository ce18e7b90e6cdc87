// The pinned table of the settings window: its data source, and the edits made in its rows.

#include "platform/HotkeyObstacles.h"
#include "platform/Text.h"
#include "platform/view/Alert.h"
#include "platform/view/Window.h"
#include "services/HotkeyManager.h"
#include "ui/SettingsWindowController.h"

#include <algorithm>
#include <utility>

namespace quillbar {

namespace {

constexpr auto cellIdentifier = "PinnedCell";

/// Asks for the name of a shortcut's section and blocks until the person has answered: the name, or
/// empty for no section, or nothing when the person cancels. The field starts with `current` unless
/// the section popup offers that by itself.
std::optional<std::string> askForGroup(std::string const& shortcut, std::string const& current)
{
    platform::Alert alert;
    alert.messageText = "New group";
    alert.informativeText
        = "Name a section for “" + platform::isolated(shortcut) + "” in the menu bar.";
    alert.buttons = { "OK", "Cancel" };
    alert.accessory = platform::AlertField {
        .text = PinnedCellView::isPresetGroup(current) ? std::string() : current,
        .placeholder = "e.g. Games, Evening, Tools",
    };
    auto const answer = platform::runModal(alert);
    return answer.button == 0 ? std::optional(platform::trimmed(answer.text)) : std::nullopt;
}

} // namespace

void SettingsWindowController::bindPinnedTable()
{
    using Self = SettingsWindowController;
    pinnedTable_->setRowHeight(30);
    pinnedTable_->setSelectionMode(platform::SelectionMode::None);
    pinnedTable_->rowCount
        = weakly(*this, [](Self const& self) { return self.model_.order().size(); });
    pinnedTable_->viewForRow
        = weakly(*this, [](Self& self, std::size_t row) { return self.viewForRow(row); });
    pinnedTable_->dragTextForRow = weakly(*this, [](Self const& self, std::size_t row) {
        auto const& order = self.model_.order();
        return row < order.size() ? std::optional(order[row]) : std::nullopt;
    });
    pinnedTable_->acceptDrop
        = weakly(*this, [](Self& self, std::string const& text, std::size_t gap) {
              return self.acceptDrop(text, gap);
          });
    pinnedTable_->moveRow = weakly(*this, [](Self& self, std::size_t row, std::size_t target) {
        self.model_.moveRow(row, target);
        self.reloadPinnedTable();
    });
    pinnedTable_->reloadData();
}

void SettingsWindowController::reloadPinnedTable()
{
    auto const focused = window().firstResponder();
    auto const row = focused ? pinnedTable_->rowOf(*focused) : std::nullopt;
    if (!row) {
        pinnedTable_->reloadData();
        return;
    }
    // The rows may change places under the focused control; the focus stays in its row.
    auto const& controls = pinnedTable_->viewAtRow(*row)->subviews();
    auto const control = std::ranges::find(controls, focused) - controls.begin();
    pinnedTable_->reloadData();
    auto const count = pinnedTable_->numberOfRows();
    if (count == 0)
        focusAvailableList();
    else if (auto const view = pinnedTable_->viewAtRow(std::min(*row, count - 1)))
        window().makeFirstResponder(view->subviews()[static_cast<std::size_t>(control)]);
}

std::shared_ptr<platform::View> SettingsWindowController::viewForRow(std::size_t row)
{
    auto const& order = model_.order();
    if (row >= order.size())
        return nullptr;
    auto cell
        = std::static_pointer_cast<PinnedCellView>(pinnedTable_->takeReusableView(cellIdentifier));
    if (!cell) {
        cell = std::make_shared<PinnedCellView>();
        cell->setIdentifier(cellIdentifier);
    }
    bindEdits(*cell, order[row]);
    cell->removeButton().onClick
        = weakly(*this, [row](SettingsWindowController& self) { self.removePin(row); });
    return cell;
}

void SettingsWindowController::bindEdits(PinnedCellView& cell, std::string const& name)
{
    using Self = SettingsWindowController;
    cell.setName(name);
    auto& recorder = cell.recorder();
    recorder.setPlaceholderString("None");
    recorder.setHotkey(model_.hotkey(name));
    recorder.setNote(noteOn(name));
    recorder.onRecord
        = weakly(*this, [name](Self& self, std::int64_t keyCode, std::uint32_t modifiers) {
              self.model_.setHotkey(name, { keyCode, modifiers });
              self.refreshHotkeyNotes();
          });
    cell.setLogin(model_.loginFlag(name) ? platform::ButtonState::On : platform::ButtonState::Off);
    cell.onLoginChange
        = weakly(*this, [name](Self& self, bool isOn) { self.model_.setLoginFlag(name, isOn); });
    cell.onGroupChange = weakly(
        *this, [name](Self& self, std::string const& title) { self.model_.setGroup(name, title); });
    cell.onRequestCustom = weakly(*this, [name](Self& self) { self.promptCustomGroup(name); });
    cell.setGroup(model_.group(name));
}

/// The system does not report what other programs claim, so that is asked anew whenever the window
/// gets the keyboard.
void SettingsWindowController::watchHotkeys()
{
    auto const refresh
        = weakly(*this, [](SettingsWindowController& self) { self.refreshHotkeyNotes(); });
    hotkeyObservation_ = platform::observeHotkeyObstacles(refresh);
    window().addDidBecomeKeyObserver(refresh);
    refreshHotkeyNotes();
}

void SettingsWindowController::refreshHotkeyNotes()
{
    // Registers what has become free, so that a hotkey without a warning works.
    hotkeyManager().retryRefused();
    hotkeyNotes_ = hotkeyNotes(model_);
    menuHotkeyRecorder_->setNote(hotkeyNotes_.quickOpen);
    auto const& order = model_.order();
    for (std::size_t row = 0; row < order.size(); ++row) {
        if (auto const cell = pinnedTable_->viewAtRow(row))
            static_cast<PinnedCellView&>(*cell).recorder().setNote(noteOn(order[row]));
    }
}

HotkeyNote SettingsWindowController::noteOn(std::string const& name) const
{
    auto const found = hotkeyNotes_.shortcuts.find(name);
    return found == hotkeyNotes_.shortcuts.end() ? HotkeyNote {} : found->second;
}

bool SettingsWindowController::acceptDrop(std::string const& name, std::size_t gap)
{
    if (!model_.move(name, gap))
        return false;
    reloadPinnedTable();
    return true;
}

void SettingsWindowController::promptCustomGroup(std::string const& name)
{
    if (auto const title = askForGroup(name, model_.group(name)))
        model_.setGroup(name, *title);
    reloadPinnedTable();
}

} // namespace quillbar
