#include "ui/IconMenu.h"

#include "platform/Symbols.h"
#include "platform/Text.h"
#include "platform/view/Alert.h"

#include <algorithm>
#include <utility>

namespace quillbar {

using platform::MenuItem;

namespace {

constexpr auto fallbackSymbol = "heart.fill";

MenuItem iconItem(std::string title, std::string const& symbol, std::string image)
{
    MenuItem item;
    item.title = std::move(title);
    item.image = platform::SymbolImage {
        .name = std::move(image),
        .accessibilityDescription = {},
        .size = platform::Size { 16, 16 },
        .tint = std::nullopt,
    };
    item.representedObject = symbol;
    return item;
}

MenuItem customItem(std::string const& symbol)
{
    return iconItem("Custom", symbol, platform::symbolExists(symbol) ? symbol : fallbackSymbol);
}

} // namespace

std::array<IconChoice, 44> const iconChoices { {
    { "heart.fill", "Heart" },
    { "heart", "Heart Outline" },
    { "heart.circle.fill", "Heart Circle" },
    { "suit.heart.fill", "Heart Card" },
    { "bolt", "Lightning" },
    { "bolt.fill", "Lightning Filled" },
    { "bolt.circle.fill", "Lightning Circle" },
    { "sparkles", "Sparkles" },
    { "star.fill", "Star" },
    { "star.circle.fill", "Star Circle" },
    { "play.fill", "Play" },
    { "play.circle.fill", "Play Circle" },
    { "forward.fill", "Forward" },
    { "flame.fill", "Flame" },
    { "sun.max.fill", "Sun" },
    { "moon.fill", "Moon" },
    { "moon.stars.fill", "Moon & Stars" },
    { "cloud.fill", "Cloud" },
    { "umbrella.fill", "Umbrella" },
    { "snowflake", "Snowflake" },
    { "leaf.fill", "Leaf" },
    { "gearshape", "Gear" },
    { "gearshape.fill", "Gear Filled" },
    { "wrench.fill", "Wrench" },
    { "hammer.fill", "Hammer" },
    { "briefcase.fill", "Briefcase" },
    { "house.fill", "House" },
    { "envelope.fill", "Envelope" },
    { "bell.fill", "Bell" },
    { "flag.fill", "Flag" },
    { "bookmark.fill", "Bookmark" },
    { "paperplane.fill", "Paper Plane" },
    { "scope", "Scope" },
    { "cursorarrow.click.2", "Cursor Click" },
    { "checkmark.seal.fill", "Verified" },
    { "app", "App" },
    { "square.split.2x2.fill", "Four Squares" },
    { "rectangle.grid.2x2.fill", "Grid" },
    { "circle.grid.2x2.fill", "Circle Grid" },
    { "command", "Command" },
    { "desktopcomputer", "Desktop Computer" },
    { "display", "Display" },
    { "laptopcomputer", "Laptop" },
    { "apple.logo", "Apple" },
} };

IconMenu iconMenu(std::string const& current, std::function<void()> chooseCustomIcon)
{
    IconMenu menu;
    auto& items = menu.items;
    for (auto const& choice : iconChoices) {
        if (platform::symbolExists(choice.symbol))
            items.push_back(iconItem(choice.name, choice.symbol, choice.symbol));
    }
    auto const chosen = std::ranges::find(items, current, &MenuItem::representedObject);
    if (chosen != items.end()) {
        menu.selected = static_cast<std::size_t>(chosen - items.begin());
    } else if (!current.empty()) {
        items.insert(items.begin(), customItem(current));
        menu.selected = 0;
    }
    items.push_back(MenuItem::separator());
    MenuItem ask;
    ask.title = "Custom Icon…";
    ask.action = [run = std::move(chooseCustomIcon)](MenuItem const&) { run(); };
    items.push_back(std::move(ask));
    return menu;
}

std::string askForIcon(std::string const& current)
{
    platform::Alert alert;
    alert.messageText = "Custom Icon";
    alert.informativeText = "Type an SF Symbol name (e.g. gearshape, eyeglasses, music.note). "
                            "Unrecognised names fall back to the heart.";
    alert.buttons = { "OK", "Cancel" };
    alert.accessory = platform::AlertField { .text = current, .placeholder = "SF Symbol name" };
    return platform::trimmed(platform::runModal(alert).text);
}

} // namespace quillbar
