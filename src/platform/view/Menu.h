#pragma once

#include "platform/KeyModifiers.h"
#include "platform/view/AttributedText.h"
#include "platform/view/Image.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace quillbar::platform {

/// The key is one character as it is typed without Shift; an upper-case letter means Shift too.
/// Empty means none.
struct KeyEquivalent {
    std::string key;
    KeyModifiers modifiers = commandKey;

    /// The modifiers, with Shift for an upper-case letter.
    [[nodiscard]] KeyModifiers allModifiers() const
    {
        bool const isUpperCase = key.size() == 1 && key.front() >= 'A' && key.front() <= 'Z';
        return isUpperCase ? modifiers | shiftKey : modifiers;
    }

    friend bool operator==(KeyEquivalent const&, KeyEquivalent const&) = default;
};

/// A command that the focused control carries out by itself.
enum class StandardCommand : std::uint8_t {
    None,
    Terminate,
    Undo,
    Redo,
    Cut,
    Copy,
    Paste,
    SelectAll
};

enum class MenuItemKind : std::uint8_t { Command, Separator };

/// One row of a menu: a plain value, copied with its menu.
struct MenuItem {
    MenuItemKind kind = MenuItemKind::Command;
    std::string title;
    /// The end of the title that is shown where the title is too long for its row, too.
    std::string keptEnding;
    /// Drawn in place of the title; its text is the title's.
    std::optional<AttributedText> attributedTitle;
    std::optional<Image> image;
    KeyEquivalent keyEquivalent;
    /// What the action needs to know of this item.
    std::optional<std::string> representedObject;
    /// Called on the main thread with this item when the person chooses it.
    std::function<void(MenuItem const&)> action;
    StandardCommand command = StandardCommand::None;
    bool isEnabled = true;
    std::vector<MenuItem> submenu;

    [[nodiscard]] static MenuItem separator()
    {
        MenuItem item;
        item.kind = MenuItemKind::Separator;
        return item;
    }
};

/// A menu is handed over whole; nothing edits it afterwards.
struct Menu {
    std::string title;
    std::vector<MenuItem> items;
};

/// Carries out an enabled item's command or action. The action may replace the menu that holds the
/// item, so pass an item that outlives the call.
void performAction(MenuItem const& item);

} // namespace quillbar::platform
