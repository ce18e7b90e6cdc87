"""What the monkey does, by weight: what people do, and what fails around the program."""

import os
import string

STEPS = []
# Hotkeys are these with Control and Alt: first the palette's, then the pins'.
LETTERS = "TBFGHJ"

_MODIFIERS = [[], [], [], ["Shift"], ["Control"], ["Alt"], ["Super"], ["Control", "Alt"]]
_KEYS = ["Escape", "Return", "Tab", "Up", "Down", "Left", "Right", "Home", "End", "BackSpace",
         "Delete", "PageUp", "PageDown", "Space", "1", "9", "A", "C", "V", "X", "W"]
# In a menu Return could quit.
_MENU_KEYS = ["Escape", "Down", "Up", "1", "2", "3", "9", "0", "Home", "Tab", "Left", "Right"]
_CLICKED = ("push button", "check box", "combo box", "list item", "text")
_LISTINGS = ["exit 1", "sleep 1.5", "head -c 1000000 /dev/zero", "printf 'Other\\nAlpha\\n'",
             "seq 1 3000", "kill -9 $$", "echo Alpha; sleep 2 &"]


def step(weight):
    def add(function):
        STEPS.append((weight, function))
        return function

    return add


def trouble(weight):
    """A step that returns what ends its trouble, which the same step does when it comes again."""
    def add(begin):
        def begin_or_end(monkey):
            end = monkey.troubles.pop(begin, None)
            if end:
                end()
            else:
                monkey.troubles[begin] = begin(monkey)

        begin_or_end.__name__ = begin.__name__
        return step(weight)(begin_or_end)

    return add


@step(15)
def press_hotkey(monkey):
    monkey.screen.press("Control", "Alt", monkey.pick(LETTERS))


@step(12)
def type_text(monkey):
    letters = string.digits if monkey.has_menu() else string.ascii_letters + " ,."
    monkey.screen.type(monkey.pick(["".join(monkey.random.choices(letters, k=4))]))


@step(16)
def press_keys(monkey):
    if monkey.has_menu():
        monkey.screen.press(monkey.pick(_MENU_KEYS))
    else:
        monkey.screen.press(*monkey.pick(_MODIFIERS), monkey.pick(_KEYS))


@step(28)
def click_or_drag_element(monkey):
    element = monkey.pick(monkey.elements(_CLICKED))
    # In a menu a click could quit.
    if not element or monkey.has_menu():
        return
    x, y, width, height = element.extents()
    if element.role == "list item" and monkey.pick([True, False]):
        end = x + monkey.random.randint(-100, 300), y + monkey.random.randint(-200, 200)
        monkey.screen.drag((x + 8, y + height // 2), end)
    else:
        monkey.screen.click(x + width // 2, y + height // 2, monkey.pick([1, 1, 1, 2, 3, 4, 5]))
    if "otkey" in element.name:
        monkey.screen.press("Control", "Alt", monkey.pick(LETTERS))


@step(14)
def click_icon(monkey):
    if monkey.desktop.panel.area():
        # The right button opens the panel's own menu, where a key could quit.
        monkey.desktop.panel.click_icon(monkey.pick([1, 1, 1, 2, 4, 5]))


@step(12)
def click_exported_row(monkey):
    row = monkey.pick([row for row in monkey.menu.rows() if not row.name.startswith("Quit ")])
    if row:
        monkey.menu.send(row.id)


@trouble(1)
def kill_panel(monkey):
    monkey.desktop.panel.kill()
    return monkey.desktop.panel.start


@trouble(1)
def freeze_notifications(monkey):
    monkey.desktop.notifications.hang()
    return monkey.desktop.notifications.go_on


@trouble(5)
def break_tool(monkey):
    listing = monkey.pick([None, *_LISTINGS])
    os.remove(monkey.tool)
    if listing is not None:
        with open(monkey.tool, "w", encoding="utf-8") as file:
            file.write(f"#!/bin/sh\n{listing}\n")
        os.chmod(monkey.tool, 0o700)
    return monkey.mend_tool
