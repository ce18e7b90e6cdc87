#include "support/Person.h"

#include "platform/headless/Headless.h"
#include "platform/view/TextField.h"

#include <algorithm>

namespace quillbar::test {

namespace {

bool isWithinReach(platform::View const* view)
{
    return view && view->isVisible() && view->window() && view->window()->isVisible();
}

bool isUsable(platform::Control const* control)
{
    return isWithinReach(control) && control->isEnabled();
}

std::shared_ptr<platform::TextField> focusedField()
{
    auto const* const window = platform::headless::record().keyWindow;
    auto field = window ? std::dynamic_pointer_cast<platform::TextField>(window->firstResponder())
                        : nullptr;
    return isUsable(field.get()) ? field : nullptr;
}

bool pressOn(std::shared_ptr<platform::View> const& focused, platform::KeyEvent const& event)
{
    auto const button = std::dynamic_pointer_cast<platform::Button>(focused);
    return event == platform::KeyEvent { platform::key::space, 0 } && click(button);
}

} // namespace

bool click(std::shared_ptr<platform::Button> const& button)
{
    if (!isUsable(button.get()))
        return false;
    button->userClicked();
    return true;
}

bool choose(std::shared_ptr<platform::PopUpButton> const& popUp, std::string_view title)
{
    if (!isUsable(popUp.get()))
        return false;
    auto const& items = popUp->items();
    auto const chosen = std::ranges::find_if(items, [&](platform::MenuItem const& item) {
        return item.title == title && item.isEnabled
            && item.kind == platform::MenuItemKind::Command;
    });
    if (chosen == items.end())
        return false;
    popUp->userSelected(static_cast<std::size_t>(chosen - items.begin()));
    return true;
}

bool drag(std::shared_ptr<platform::TableView> const& table, std::size_t row, std::size_t gap)
{
    if (!isWithinReach(table.get()) || row >= table->numberOfRows())
        return false;
    auto const text = table->dragText(row);
    return text && table->userDropped(*text, gap);
}

bool press(std::uint32_t keyCode, platform::KeyModifiers modifiers)
{
    platform::KeyEvent const event { keyCode, modifiers };
    auto* const window = platform::headless::record().keyWindow;
    if (!window)
        return false;
    if (platform::runKeyDownMonitors(event) == platform::KeyEventResult::Consume)
        return true;
    if (platform::headless::record().keyWindow != window)
        return false;
    auto const focused = window->firstResponder();
    return window->userPressedKey(event) == platform::KeyEventResult::Consume
        || window->userPressedFocusKey(event) == platform::KeyEventResult::Consume
        || pressOn(focused, event);
}

bool type(std::string text)
{
    auto const field = focusedField();
    if (!field)
        return false;
    field->userTyped(std::move(text));
    return true;
}

} // namespace quillbar::test
