#pragma once

#include "platform/Token.h"
#include "platform/view/Button.h"
#include "platform/view/PopUpButton.h"
#include "platform/view/TableView.h"
#include "ui/HotkeyNotes.h"
#include "ui/HotkeyRecorder.h"
#include "ui/PinnedCellView.h"
#include "ui/SettingsModel.h"
#include "ui/WindowController.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace quillbar {

/// The settings window: which shortcuts are pinned, their order, hotkeys, login flags and sections,
/// the menu-bar icon, the quick-open hotkey and the start at login. Pinning and unpinning hand over
/// a record at once, everything else waits for Save; closing discards. Never writes the stored
/// configuration itself. Main thread.
class SettingsWindowController : public WindowController {
public:
    /// `onSave` is told every new record.
    SettingsWindowController(Config config, std::function<void(Config const&)> onSave);

    /// Gives the keyboard to the first available shortcut, if there is one. Does not scroll.
    void focusAvailableList();
    /// Asks the system anew which of the hotkeys can work.
    void refreshHotkeyNotes();

private:
    void buildUserInterface() override;
    void buildGeneral(platform::View& content);
    void buildPinned(platform::View& content);
    void buildAvailable(platform::View& content);
    void buildFooter(platform::View& content);

    void bindPinnedTable();
    void reloadPinnedTable();
    [[nodiscard]] std::shared_ptr<platform::View> viewForRow(std::size_t row);
    void bindEdits(PinnedCellView& cell, std::string const& name);
    [[nodiscard]] bool acceptDrop(std::string const& name, std::size_t gap);
    void removePin(std::size_t row);
    void promptCustomGroup(std::string const& name);

    void watchHotkeys();
    [[nodiscard]] HotkeyNote noteOn(std::string const& name) const;

    /// Makes at least so many rows at once, as far as there are names; the rest in later turns.
    void rebuildAvailable(std::size_t rowsNeeded = 0);
    void addAvailableRows(std::uint64_t version, std::size_t count);
    void toggleAvailable(std::string const& name);
    void focusAfterPinning(std::size_t row);

    void rebuildIconMenu();
    void chooseCustomIcon();

    [[nodiscard]] SettingsModel::Controls controls() const;
    void save();
    void handOver(Config const& record) const;
    void flashSaved();

    SettingsModel model_;
    HotkeyNotes hotkeyNotes_;
    platform::Token hotkeyObservation_;
    std::function<void(Config const&)> const onSave_;
    // Counts the rebuilds of the list, so that no later turn adds rows to a rebuilt one.
    std::uint64_t availableVersion_ = 0;
    std::shared_ptr<platform::View> const availableRows_;
    std::shared_ptr<platform::TableView> const pinnedTable_;
    std::shared_ptr<platform::PopUpButton> const iconPopup_;
    std::shared_ptr<platform::Button> const launchLoginBox_;
    std::shared_ptr<HotkeyRecorder> const menuHotkeyRecorder_;
    std::shared_ptr<platform::Button> const saveButton_;
};

} // namespace quillbar
