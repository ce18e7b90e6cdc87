#pragma once

#include "platform/view/Button.h"
#include "platform/view/PopUpButton.h"
#include "platform/view/TableView.h"
#include "platform/view/Window.h"

#include <concepts>
#include <string>
#include <string_view>

/// What a person sees in the windows of the headless backend and does to them.
namespace quillbar::test {

/// The visible views of that class at or below `root`, in the order of adding.
template <std::derived_from<platform::View> Kind>
void collect(platform::View& root, std::vector<std::shared_ptr<Kind>>& found)
{
    if (root.isHidden())
        return;
    if (auto view = std::dynamic_pointer_cast<Kind>(root.shared_from_this()))
        found.push_back(std::move(view));
    for (auto const& subview : root.keyOrder())
        collect<Kind>(*subview, found);
}

template <std::derived_from<platform::View> Kind>
[[nodiscard]] std::vector<std::shared_ptr<Kind>> findAll(platform::View& root)
{
    std::vector<std::shared_ptr<Kind>> found;
    collect<Kind>(root, found);
    return found;
}

template <std::derived_from<platform::View> Kind>
[[nodiscard]] std::vector<std::shared_ptr<Kind>> findAll(platform::Window const& window)
{
    return findAll<Kind>(window.contentView());
}

/// The first visible view of that class that shows the text or is called so; null without one.
template <std::derived_from<platform::View> Kind, typename Root>
[[nodiscard]] std::shared_ptr<Kind> find(Root& root, std::string_view text)
{
    for (auto const& view : findAll<Kind>(root)) {
        if (view->visibleText() == text || platform::accessibleName(*view) == text)
            return view;
    }
    return nullptr;
}

/// Each of these returns whether a person could do it: the control is there, visible and on.
bool click(std::shared_ptr<platform::Button> const& button);
bool choose(std::shared_ptr<platform::PopUpButton> const& popUp, std::string_view title);
/// Drags a row into the gap above row `gap`; whether the drop was taken.
bool drag(std::shared_ptr<platform::TableView> const& table, std::size_t row, std::size_t gap);

/// Presses a key of the key window: monitors, then the window, then the focused control get it.
/// Whether something used it.
bool press(std::uint32_t keyCode, platform::KeyModifiers modifiers = 0);

/// Replaces the text of the focused text field in one edit.
bool type(std::string text);

} // namespace quillbar::test
