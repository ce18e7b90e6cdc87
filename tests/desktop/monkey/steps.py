"""What the monkey does, by weight: what people do, and what fails around the program."""

import os
import signal
import string

STEPS = []
# Hotkeys are these with Control and Alt: first the palette's, then the pins'.
LETTERS = "TBFGHJ"

_MODIFIERS = [[], [], [], ["Shift"], ["Control"], ["Alt"], ["Super"], ["Control", "Alt"]]
_KEYS = ["Escape", "Return", "Tab", "Up", "Down", "Left", "Right", "Home", "End", "BackSpace",
         "Delete", "PageUp", "PageDown", "Space", "KeypadEnter", "1", "2", "9", "0", "A", "C", "V",
         "X", "W", "S", "Comma"]
# In a menu Return could quit.
_MENU_KEYS = ["Escape", "Down", "Up", "1", "2", "3", "9", "0", "Home", "Tab", "Left", "Right"]
_CLICKED = ("push button", "check box", "combo box", "list item", "text", "menu item")
_LISTINGS = ["exit 1", "sleep 1.5", "head -c 1000000 /dev/zero", "printf 'Other\\nAlpha\\n'", "",
             "seq 1 3000", "printf 'A\\377\\nAlpha\\n'", "kill -9 $$", "echo Alpha; sleep 2 &"]


def step(weight):
    def add(function):
        STEPS.append((weight, function))
        return function

    return add


@step(15)
def press_hotkey(monkey):
    monkey.screen.press("Control", "Alt", monkey.pick(LETTERS))


@step(12)
def type_text(monkey):
    letters = string.digits if monkey.has_menu() else string.ascii_letters + string.digits + " ,."
    monkey.screen.type(monkey.pick(
        ["".join(monkey.random.choices(letters, k=monkey.random.randint(1, 6)))]))


@step(16)
def press_keys(monkey):
    if monkey.has_menu():
        monkey.screen.press(monkey.pick(_MENU_KEYS))
    else:
        monkey.screen.press(*monkey.pick(_MODIFIERS), monkey.pick(_KEYS))


@step(24)
def click_element(monkey):
    element = monkey.pick(monkey.elements(*_CLICKED))
    if element:
        x, y, width, height = element.extents()
        monkey.click(x + width // 2, y + height // 2)
        if element.role == "push button" and "otkey" in element.name:
            monkey.screen.press("Control", "Alt", monkey.pick(LETTERS))


@step(6)
def click_anywhere(monkey):
    window = monkey.pick(monkey.program.windows())
    if window:
        _, x, y, width, height = window
        monkey.click(x + monkey.random.randrange(width), y + monkey.random.randrange(height),
                     monkey.pick([1, 1, 1, 2, 3, 4, 5]))


@step(4)
def drag(monkey):
    element = monkey.pick(monkey.elements("list item", "graphic"))
    if element and not monkey.has_menu():
        x, y, _, height = element.extents()
        end = x + monkey.random.randint(-100, 300), y + monkey.random.randint(-200, 200)
        monkey.screen.drag((x + 8, y + height // 2), end)


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


@step(6)
def close_window(monkey):
    window = monkey.pick(monkey.program.windows())
    if window:
        monkey.close(window[0])


@step(8)
def break_something(monkey):
    """One thing at a time, which is mended some steps later, at the latest at the next rest."""
    if not monkey.trouble:
        monkey.trouble = monkey.pick([kill_panel, stop_notifications, break_tool])(monkey)
        monkey.trouble_ends = monkey.count + monkey.random.randint(2, 25)


def kill_panel(monkey):
    monkey.desktop.panel.kill()
    return monkey.desktop.panel.start


def stop_notifications(monkey):
    process = monkey.desktop.notifications.process
    process.send_signal(signal.SIGSTOP)
    return lambda: process.send_signal(signal.SIGCONT)


def break_tool(monkey):
    listing = monkey.pick(_LISTINGS)
    os.remove(monkey.tool)
    with open(monkey.tool, "w", encoding="utf-8") as file:
        file.write(f"#!/bin/sh\n{listing}\n")
    os.chmod(monkey.tool, 0o700)
    return monkey.mend_tool
