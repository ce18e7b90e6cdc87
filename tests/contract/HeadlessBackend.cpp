#include "contract/Backend.h"
#include "platform/headless/Headless.h"
#include "platform/view/TextField.h"
#include "support/Person.h"

#include <algorithm>

namespace quillbar::test {

using namespace platform;

void settle() { }

void runUntil(std::function<bool()> const& isDone)
{
    while (!isDone())
        headless::advance(std::chrono::milliseconds(1));
}

void press(KeyEvent const& event, std::string const& text)
{
    if (press(event.keyCode, event.modifiers) || text.empty())
        return;
    auto const focused = headless::record().keyWindow->firstResponder();
    type(static_cast<TextField&>(*focused).text() + text);
}

bool movesFocusItself()
{
    return true;
}

void click(View& view)
{
    if (view.kind() == ViewKind::Button)
        click(std::static_pointer_cast<Button>(view.shared_from_this()));
    else
        view.window()->userFocused(view.shared_from_this());
}

void doubleClick(TableView& table, std::size_t row)
{
    table.userDoubleClicked(row);
}

void choose(PopUpButton& popUp, std::size_t index)
{
    popUp.userSelected(index);
}

void drag(TableView& table, std::size_t row, std::size_t gap)
{
    drag(std::static_pointer_cast<TableView>(table.shared_from_this()), row, gap);
}

std::optional<Rect> shownFrame(View const& view)
{
    return view.native() && view.isVisible() ? std::optional(view.frameInWindow()) : std::nullopt;
}

void answerAlert(std::string const& button, std::string const& text)
{
    auto const& buttons = headless::record().shownAlerts.back().buttons;
    auto const index = std::ranges::find(buttons, button) - buttons.begin();
    headless::record().alertAnswers.push_back({ static_cast<std::size_t>(index), text });
}

struct StatusArea::Native {
    std::shared_ptr<Menu const> openMenu;
};

StatusArea::StatusArea()
    : native_(std::make_unique<Native>())
{
}

StatusArea::~StatusArea() = default;

void StatusArea::openMenu()
{
    native_->openMenu = item->menu();
    item->userOpenedMenu();
}

void StatusArea::chooseRow(std::string const& title)
{
    auto const menu = std::move(native_->openMenu);
    performAction(*std::ranges::find(menu->items, title, &MenuItem::title));
}

void pressHotkey(KeyCombination const& combination, std::uint32_t)
{
    headless::fire(combination.keyCode, combination.modifiers);
}

} // namespace quillbar::test
