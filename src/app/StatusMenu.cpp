#include "app/StatusMenu.h"

#include "app/Badge.h"
#include "platform/Text.h"
#include "ui/HotkeyRecorder.h"

#include <utility>

namespace quillbar {

using platform::commandKey;
using platform::KeyEquivalent;
using platform::Menu;
using platform::MenuItem;
using platform::optionKey;
using platform::SystemColor;

namespace {

constexpr platform::Font headingFont { .size = 11, .weight = platform::FontWeight::Semibold };
constexpr platform::Font footerFont { .size = 11 };

/// An item that only shows a text.
MenuItem textItem(std::string title)
{
    MenuItem item;
    item.title = std::move(title);
    item.isEnabled = false;
    return item;
}

MenuItem textItem(std::string title, platform::Font const& font, SystemColor color)
{
    auto item = textItem(std::move(title));
    item.attributedTitle = { .text = item.title, .font = font, .color = color };
    return item;
}

MenuItem command(std::string title, std::string symbol, std::function<void()> const& action,
    KeyEquivalent keyEquivalent = {})
{
    MenuItem item;
    item.title = std::move(title);
    item.image = platform::symbolImage(std::move(symbol));
    item.keyEquivalent = std::move(keyEquivalent);
    if (action)
        item.action = [action](MenuItem const&) { action(); };
    return item;
}

MenuItem quitItem()
{
    MenuItem item;
    item.title = "Quit Quillbar";
    item.command = platform::StandardCommand::Terminate;
    item.keyEquivalent.key = "q";
    return item;
}

std::string hotkeyLabel(Hotkey const& hotkey)
{
    return HotkeyRecorder::label(hotkey.keyCode, hotkey.modifiers);
}

class StatusMenuBuilder {
public:
    StatusMenuBuilder(Config const& config, StatusMenuActions const& actions)
        : config_(config)
        , actions_(actions)
        , headingImage_(platform::symbolImage(config.iconSymbol))
    {
    }

    [[nodiscard]] Menu build() &&
    {
        // Room for a heading above each pin and for the fixed items.
        menu_.items.reserve(2 * config_.pinned.size() + 16);
        add(sectionHeader("QUILLBAR"));
        if (config_.pinned.empty())
            add(textItem("No shortcuts pinned"));
        else
            addPinned();
        if (config_.pinned.size() >= 2)
            addRunAll();
        addCommands();
        addFooter();
        return std::move(menu_);
    }

private:
    void add(MenuItem item) { menu_.items.push_back(std::move(item)); }

    /// Every heading shows the current icon of the status item.
    [[nodiscard]] MenuItem sectionHeader(std::string title) const
    {
        auto item = textItem(std::move(title), headingFont, SystemColor::SecondaryLabel);
        item.image = headingImage_;
        return item;
    }

    /// Headings stand where the group changes; a name without a group stays under the last one.
    void addPinned()
    {
        Badges const badges;
        std::string currentGroup;
        for (std::size_t i = 0; i < config_.pinned.size(); ++i) {
            auto const& name = config_.pinned[i];
            auto const group = groupOf(name);
            if (!group.empty() && group != currentGroup) {
                add(sectionHeader(platform::upperCased(group)));
                currentGroup = group;
            }
            add(shortcutItem(name, i, badges.at(i)));
        }
    }

    [[nodiscard]] MenuItem shortcutItem(
        std::string const& name, std::size_t position, platform::Image const& badge) const
    {
        MenuItem item;
        item.title = name;
        if (auto const* hotkey = hotkeyOf(name)) {
            auto const shown = platform::isolated(name);
            item.title = shown + "  (" + hotkeyLabel(*hotkey) + ")";
            // Includes U+2069, without which a cut right-to-left name would reorder the hotkey.
            item.keptEnding = item.title.substr(shown.find(name) + name.size());
        }
        item.image = badge;
        item.representedObject = name;
        item.action = actions_.run;
        if (position < 9)
            item.keyEquivalent = { .key = std::to_string(position + 1), .modifiers = 0 };
        return item;
    }

    [[nodiscard]] std::string_view groupOf(std::string const& name) const
    {
        if (!config_.groupOf)
            return {};
        auto const found = config_.groupOf->find(name);
        return found == config_.groupOf->end() ? std::string_view() : found->second;
    }

    /// Null when the shortcut has no valid one.
    [[nodiscard]] Hotkey const* hotkeyOf(std::string const& name) const
    {
        auto const& hotkeys = config_.shortcutHotkeysEff();
        auto const found = hotkeys.find(name);
        return found == hotkeys.end() || !found->second.isValid() ? nullptr : &found->second;
    }

    void addRunAll()
    {
        add(MenuItem::separator());
        add(command("Run All", "play.fill", actions_.runAll, { .key = "0" }));
    }

    void addCommands()
    {
        add(MenuItem::separator());
        add(command("Edit in Shortcuts…", "square.and.pencil", actions_.openShortcutsApp));
        // The default hotkey of the palette, even when another is set.
        add(command("Type to Jump…", "magnifyingglass", actions_.openPalette,
            { .key = "t", .modifiers = commandKey | optionKey }));
        add(command("Settings…", "gearshape", actions_.openSettings, { .key = "," }));
        add(MenuItem::separator());
        add(command(
            "Check for Updates…", "arrow.clockwise", actions_.checkForUpdates, { .key = "u" }));
        add(command("About Quillbar", "info.circle", actions_.showAbout));
        add(quitItem());
    }

    void addFooter()
    {
        add(textItem(hotkeyLabel(config_.menuHotkeyEff()) + " · type to jump · 1–9 to run",
            footerFont, SystemColor::TertiaryLabel));
    }

    Config const& config_;
    StatusMenuActions const& actions_;
    std::optional<platform::Image> const headingImage_;
    Menu menu_;
};

} // namespace

Menu makeStatusMenu(Config const& config, StatusMenuActions const& actions)
{
    return StatusMenuBuilder(config, actions).build();
}

} // namespace quillbar
