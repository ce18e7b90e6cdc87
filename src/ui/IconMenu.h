#pragma once

#include "platform/view/Menu.h"

#include <array>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace quillbar {

struct IconChoice {
    char const* symbol;
    char const* name;
};

/// The symbols that are offered for the menu-bar icon, in this order.
extern std::array<IconChoice, 44> const iconChoices;

/// What the icon popup shows.
struct IconMenu {
    /// Each but the last two carries its symbol.
    std::vector<platform::MenuItem> items;
    /// Nothing when `current` is empty.
    std::optional<std::size_t> selected;
};

/// The choices that this system can draw, then the entry that asks for another symbol and runs
/// `chooseCustomIcon`. A current symbol that is none of them comes first, as "Custom".
[[nodiscard]] IconMenu iconMenu(std::string const& current, std::function<void()> chooseCustomIcon);

/// Asks for a symbol's name and blocks until the person has answered. The typed name holds
/// whichever button was pressed; empty when there is none.
[[nodiscard]] std::string askForIcon(std::string const& current);

} // namespace quillbar
