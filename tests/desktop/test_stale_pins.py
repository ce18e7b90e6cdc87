"""The alert about pins whose shortcut is gone."""

import os

from virtualdesktop import wait_until

ACCESSIBILITY = True


def start_with_gone(program, *gone, pinned):
    program.pin(*pinned)
    for name in gone:
        os.remove(os.path.join(program.shortcuts_folder, name))
    program.launch()


def button(program, name):
    return program.desktop.accessibility.wait_for(program.process.pid, "push button", name)


def texts(program):
    elements = program.desktop.accessibility.elements(program.process.pid)
    return [element.name for element in elements if element.role in ("label", "alert", "dialog")]


def wait_for_menu(program, *titles):
    """The menu comes only after the alert is answered."""
    menu = program.tray().menu
    wait_until(lambda: menu.titles()[:len(titles)] == list(titles),
               lambda: f"the menu shows {menu.titles()}")


def test_remove_unpins_what_is_gone(program):
    start_with_gone(program, "A", "C", pinned=["A", "B", "C"])
    remove = button(program, "Remove")
    shown = texts(program)
    assert "Some pinned shortcuts are missing" in shown
    # Each paragraph is a text of its own.
    assert shown[-3:] == ["These shortcuts were deleted from the Shortcuts app:", "A\nC",
                          "Remove them from Quillbar?"]
    remove.press()
    wait_for_menu(program, "QUILLBAR", "B", "---")
    assert program.read_config()["pinned"] == ["B"]


def test_names_no_tool_can_list_are_shown_as_they_are(program):
    name = "a tab\there & <there>"
    program.pin("A")
    config = program.read_config()
    program.write_config({**config, "pinned": ["A", name]})
    program.launch()
    button(program, "Keep").press()
    wait_for_menu(program, "QUILLBAR", "A", name)
