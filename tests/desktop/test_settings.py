"""The settings window, used with real keys and the real mouse."""

import json
import os

from virtualdesktop import Window, wait_until
from Xlib import X

ACCESSIBILITY = True
CONTROL_OPTION = 0x1800
KEY_B = 11


def start(program, *names, **settings):
    program.pin(*names, **settings)
    program.start()
    return program.open_settings()


def wait_config(program, key, value):
    def stored():
        try:
            return program.read_config().get(key)
        except json.JSONDecodeError:
            # The file is overwritten in place: for a moment there is nothing in it.
            return None

    wait_until(lambda: stored() == value, lambda: f"{key} should be {value!r}, is {stored()!r}")


def order(settings):
    return [row.name for row in settings.elements("list item")]


def available(settings):
    return [box.name for box in settings.elements("check box")
            if not box.name.startswith(("Start ", "Login "))]


def grip(settings, name):
    x, y, _, height = settings.element("list item", name).extents()
    return x + 15, y + height // 2


def drag_row(settings, name, end):
    settings.screen.drag(grip(settings, name), end)


def answer(program, title, text, button="OK"):
    """Replaces the text of the open prompt and presses one of its buttons."""
    prompt = Window(program, "Quillbar")
    prompt.element("label", title)
    field = prompt.elements("text")[-1]
    wait_until(lambda: prompt.elements("text")[-1].focused, "the prompt's field has no keyboard")
    program.desktop.screen.press("Control", "A")
    program.desktop.screen.press("BackSpace")
    program.desktop.screen.type(text)
    wait_until(lambda: field.text() == text, lambda: f"typed {text!r}, there is {field.text()!r}")
    prompt.click("push button", button)
    prompt.wait_closed()


def remove_button(settings, name):
    button = next(button for button in settings.elements("push button")
                  if (button.name, button.description) == ("Remove", name))
    x, y, width, height = button.extents()
    return x + width // 2, y + height // 2


def test_pins_are_stored_at_once_and_the_rest_with_save(program):
    program.add_shortcut("Zebra")
    program.add_shortcut("Yak")
    settings = start(program, "Alpha", launchAtLogin=False)
    assert available(settings) == ["Yak", "Zebra"]
    settings.click("check box", "Zebra")
    wait_config(program, "pinned", ["Alpha", "Zebra"])
    settings.click("check box", "Yak")
    wait_config(program, "pinned", ["Alpha", "Zebra", "Yak"])
    wait_until(lambda: order(settings) == ["Alpha", "Zebra", "Yak"])
    settings.screen.click(*remove_button(settings, "Zebra"))
    wait_config(program, "pinned", ["Alpha", "Yak"])
    wait_until(lambda: available(settings) == ["Zebra"])

    # One after the other: the window manager holds each press for a moment, and the next click would
    # move the mouse before the button is let go.
    for box in ["Start Quillbar at login", "Login for Alpha"]:
        settings.click("check box", box)
        settings.wait_for("check box", box, "goes on", lambda found: found.checked)
    assert not program.read_config()["launchAtLoginShortcuts"]
    settings.click("push button", "Save")
    wait_config(program, "launchAtLoginShortcuts", {"Alpha": True})
    wait_config(program, "launchAtLogin", True)
    wait_until(lambda: os.path.exists(program.login_entry), "no login entry is written")
    settings.wait_for("push button", "Save", "can be pressed again", lambda button: button.enabled)

    settings.click("check box", "Login for Alpha")
    settings.wait_for("check box", "Login for Alpha", "goes off", lambda box: not box.checked)
    settings.click("push button", "Close")
    settings.wait_closed()
    settings = program.open_settings()
    assert settings.element("check box", "Login for Alpha").checked
    assert program.read_config()["launchAtLoginShortcuts"] == {"Alpha": True}


def test_rows_are_dragged_with_the_mouse(program):
    settings = start(program, "A", "B", "C", "D")
    x, y, _, height = settings.element("list item", "C").extents()
    drag_row(settings, "A", (x + 60, y + height - 4))
    wait_until(lambda: order(settings) == ["B", "C", "A", "D"], lambda: str(order(settings)))
    drag_row(settings, "D", (x + 60, grip(settings, "B")[1] - 12))
    wait_until(lambda: order(settings) == ["D", "B", "C", "A"], lambda: str(order(settings)))
    # Let go outside the list, a row stays where it was.
    drag_row(settings, "D", settings.middle("push button", "Close"))
    assert order(settings) == ["D", "B", "C", "A"]
    assert program.read_config()["pinned"] == ["A", "B", "C", "D"]
    settings.screen.click(*remove_button(settings, "B"))
    wait_config(program, "pinned", ["D", "C", "A"])


def test_rows_are_moved_by_keyboard_and_by_assistive_programs(program):
    settings = start(program, "A", "B", "C")
    screen = settings.screen
    for _ in range(20):
        if settings.element("check box", "Login for A").focused:
            break
        screen.press("Tab")
    assert settings.element("check box", "Login for A").focused
    screen.press("Alt", "Down")
    wait_until(lambda: order(settings) == ["B", "A", "C"], lambda: str(order(settings)))
    settings.wait_for("check box", "Login for A", "keeps the keyboard", lambda box: box.focused)
    screen.press("Alt", "Down")
    wait_until(lambda: order(settings) == ["B", "C", "A"], lambda: str(order(settings)))
    screen.press("Alt", "Up")
    wait_until(lambda: order(settings) == ["B", "A", "C"], lambda: str(order(settings)))
    settings.element("list item", "B").act("Move down")
    wait_until(lambda: order(settings) == ["A", "B", "C"], lambda: str(order(settings)))
    screen.press("Return")
    wait_config(program, "pinned", ["A", "B", "C"])


def record(settings, name, *keys):
    settings.click("push button", name)
    settings.wait_for("push button", name, "records",
                      lambda button: button.description == "Press keys…")
    settings.screen.press(*keys)


def shows(settings, name, text):
    settings.wait_for("push button", name, f"shows {text}",
                      lambda button: button.description.split(", ")[0] == text)


def test_recorders_take_every_key_and_what_is_saved_works(program):
    settings = start(program, "Alpha")
    for keys, label in ((["Escape"], "Esc"), (["Return"], "Return"), (["Alt", "Tab"], "⌥Tab"),
                        (["Super", "Shift", "Space"], "⌘⇧Space")):
        record(settings, "Quick open hotkey", *keys)
        shows(settings, "Quick open hotkey", label)
    assert settings.is_open()
    settings.click("push button", "Quick open hotkey")
    shows(settings, "Quick open hotkey", "Press keys…")
    settings.click("push button", "Quick open hotkey")
    shows(settings, "Quick open hotkey", "None")
    record(settings, "Hotkey for Alpha", "Control", "Alt", "B")
    shows(settings, "Hotkey for Alpha", "⌥⌃·11")
    settings.screen.press("Return")
    wait_config(program, "menuHotkey", {"keyCode": 49, "modifiers": 0x300})
    wait_config(program, "shortcutHotkeys",
                {"Alpha": {"keyCode": KEY_B, "modifiers": CONTROL_OPTION}})
    wait_until(lambda: settings.screen.is_grabbed("B", X.Mod1Mask | X.ControlMask))
    for count in (1, 2):
        settings.screen.press("Control", "Alt", "B")
        program.wait_for_runs(*["Alpha"] * count)


def test_popups_choose_and_ask_for_names_and_ignore_the_wheel(program):
    settings = start(program, "Alpha", "Beta", groupOf={"Alpha": "Work"})
    for name, shown in (("Menu bar icon", "Heart"), ("Section for Alpha", "Work")):
        for button in (4, 5, 5):
            settings.screen.click(*settings.middle("combo box", name), button)
        # What is clicked afterwards is handled after the wheel.
        settings.click("check box", "Login for Alpha")
        assert settings.element("combo box", name).description == shown

    settings.choose("Section for Beta", "Work")
    settings.choose("Section for Alpha", "Custom…")
    answer(program, "New group", "  Evening ")
    settings.wait_for("combo box", "Section for Alpha", "shows the name",
                      lambda popup: popup.description == "Evening")
    settings.choose("Section for Beta", "Custom…")
    answer(program, "New group", "Never", button="Cancel")
    settings.choose("Menu bar icon", "Star")
    settings.screen.press("Return")
    wait_config(program, "groupOf", {"Alpha": "Evening", "Beta": "Work"})
    wait_until(lambda: "star" in program.tray().icon_name, program.tray().icon_name)

    settings.element("push button", "Save")
    settings.click("combo box", "Menu bar icon")
    # A key overtakes a click that the window manager looks at first, and one that assistive
    # programs are slow to answer.
    settings.element("list item", "Lightning")
    settings.screen.press("End")
    settings.wait_for("list item", "Custom Icon…", "is chosen", lambda item: item.selected)
    settings.screen.press("Return")
    answer(program, "Custom Icon", "eyeglasses")
    settings.wait_for("combo box", "Menu bar icon", "shows the custom entry",
                      lambda popup: popup.description == "Custom")
    settings.screen.press("Return")
    wait_config(program, "iconSymbol", "eyeglasses")
