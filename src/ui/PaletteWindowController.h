#pragma once

#include "platform/KeyMonitor.h"
#include "platform/Token.h"
#include "platform/view/TableView.h"
#include "platform/view/TextField.h"
#include "ui/PaletteList.h"
#include "ui/WindowController.h"

#include <functional>
#include <memory>
#include <string>

namespace quillbar {

/// The quick-open palette: filters the pinned shortcuts as the person types and hands over the
/// chosen name, after it has closed. Made anew for each opening. Main thread.
class PaletteWindowController : public WindowController {
public:
    /// `onSelect` is told the chosen name.
    PaletteWindowController(std::shared_ptr<PaletteList const> list,
        std::function<void(std::string const& name)> onSelect);

    /// Centres and raises the palette and gives the query field the keyboard.
    void show();
    void closePalette();

private:
    void buildUserInterface() override;
    void buildSearchField();
    void buildTable();

    platform::KeyEventResult keyDown(platform::KeyEvent const& event);
    void controlTextDidChange();
    void reloadTable();
    void runSelected();
    void doubleClicked();
    void moveSelection(int step);
    void choose(std::size_t row);
    [[nodiscard]] std::shared_ptr<platform::View> viewForRow(std::size_t row);

    std::shared_ptr<PaletteList const> const list_;
    PaletteFilter filtered_;
    std::function<void(std::string const&)> const onSelect_;
    std::shared_ptr<platform::TextField> const searchField_;
    std::shared_ptr<platform::TableView> const table_;
    platform::Token monitor_;
};

} // namespace quillbar
