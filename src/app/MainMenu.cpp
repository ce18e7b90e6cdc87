#include "app/MainMenu.h"

#include <utility>

namespace quillbar {

using platform::MenuItem;
using platform::StandardCommand;

namespace {

MenuItem command(std::string title, StandardCommand standardCommand, std::string key)
{
    MenuItem item;
    item.title = std::move(title);
    item.command = standardCommand;
    item.keyEquivalent.key = std::move(key);
    return item;
}

MenuItem submenu(std::string title, std::vector<MenuItem> items)
{
    MenuItem item;
    item.title = std::move(title);
    item.submenu = std::move(items);
    return item;
}

} // namespace

platform::Menu mainMenu()
{
    return { .title = "MainMenu",
        .items = {
            submenu("Quillbar", { command("Quit Quillbar", StandardCommand::Terminate, "q") }),
            submenu("Edit",
                {
                    command("Undo", StandardCommand::Undo, "z"),
                    command("Redo", StandardCommand::Redo, "Z"),
                    MenuItem::separator(),
                    command("Cut", StandardCommand::Cut, "x"),
                    command("Copy", StandardCommand::Copy, "c"),
                    command("Paste", StandardCommand::Paste, "v"),
                    command("Select All", StandardCommand::SelectAll, "a"),
                }),
        } };
}

} // namespace quillbar
