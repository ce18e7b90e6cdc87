#pragma once

#include "platform/HotkeyObstacles.h"
#include "platform/view/PopUpButton.h"
#include "platform/view/StatusItem.h"
#include "platform/view/TableView.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

/// What the contract tests need of the backend under test; each backend defines it for itself.
/// What a person does goes through the native side, where there is one.
namespace quillbar::test {

/// Lets the backend carry out what it has put off.
void settle();

/// Runs the backend's event loop until `isDone`.
void runUntil(std::function<bool()> const& isDone);

/// Presses a key in the key window; what nothing else uses types `text`.
void press(platform::KeyEvent const& event, std::string const& text = {});

/// Whether the keyboard reaches every control, whatever the person has chosen in the system's
/// settings: by Window::userPressedFocusKey().
[[nodiscard]] bool movesFocusItself();

/// Clicks the middle of the view.
void click(platform::View& view);
void doubleClick(platform::TableView& table, std::size_t row);
void choose(platform::PopUpButton& popUp, std::size_t index);
/// Drags a row into the gap above row `gap`.
void drag(platform::TableView& table, std::size_t row, std::size_t gap);

/// Where the view is in the content of its window; nothing while it does not show.
[[nodiscard]] std::optional<platform::Rect> shownFrame(platform::View const& view);

/// Fills in the field of the alert that is shown, if it has one, and clicks the button.
void answerAlert(std::string const& button, std::string const& text = {});

/// A status item that a person can use.
class StatusArea {
public:
    StatusArea();
    StatusArea(StatusArea const&) = delete;
    StatusArea& operator=(StatusArea const&) = delete;
    ~StatusArea();

    /// Opens the item's menu. Returns at once, or when the menu has been closed again.
    void openMenu();
    /// Chooses a row of the open menu.
    void chooseRow(std::string const& title);

private:
    // What the item needs must be there before it.
    struct Native;
    std::unique_ptr<Native> native_;

public:
    std::unique_ptr<platform::StatusItem> item = std::make_unique<platform::StatusItem>();
};

/// Presses the combination, registered under that id, whatever program has the keyboard.
void pressHotkey(platform::KeyCombination const& combination, std::uint32_t id);

} // namespace quillbar::test
