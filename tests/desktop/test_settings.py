"""The settings window, used with real keys and the real mouse."""

import os

from virtualdesktop import Window, wait_until
from Xlib import X

ACCESSIBILITY = True
RECORDED = {"keyCode": 11, "modifiers": 0x1800}


def start(program, *names, **settings):
    program.pin(*names, **settings)
    program.start()
    return program.open_settings()


def wait_config(program, key, value):
    wait_until(lambda: program.read_config().get(key) == value,
               lambda: f"{key} should be {value!r}, is {program.read_config().get(key)!r}")


def order(settings):
    return [row.name for row in settings.elements("list item")]


def wait_order(settings, *names):
    wait_until(lambda: order(settings) == list(names), lambda: f"the rows are {order(settings)}")


def remove(settings, name):
    button = next(button for button in settings.elements("push button")
                  if (button.name, button.description) == ("Remove", name))
    settings.screen.click_middle(button.extents())


def tick(settings, name, is_on):
    """And waits: the window manager holds each press for a moment, and the next click would move
    the mouse before the button is let go."""
    settings.click("check box", name)
    settings.wait_for("check box", name, "is switched", lambda box: box.checked == is_on)


def shows(settings, role, name, text):
    settings.wait_for(role, name, f"shows {text}",
                      lambda element: element.description.split(", ")[0] == text)


def answer(program, text, button="OK"):
    """Replaces the text of the open prompt and presses one of its buttons."""
    prompt = Window(program, "Quillbar")
    wait_until(lambda: prompt.elements("text")[-1].focused, "the prompt's field has no keyboard")
    prompt.screen.press("Control", "A")
    prompt.screen.type(text)
    wait_until(lambda: prompt.elements("text")[-1].text() == text, f"{text} is not typed")
    prompt.click("push button", button)
    prompt.wait_closed()


def test_pins_are_stored_at_once_and_the_rest_with_save(program):
    program.add_shortcut("Zebra")
    settings = start(program, "Alpha", launchAtLogin=False)
    settings.click("check box", "Zebra")
    wait_config(program, "pinned", ["Alpha", "Zebra"])
    wait_order(settings, "Alpha", "Zebra")
    remove(settings, "Zebra")
    wait_config(program, "pinned", ["Alpha"])
    settings.element("check box", "Zebra")

    for box in ("Start Quillbar at login", "Login for Alpha"):
        tick(settings, box, True)
    assert not program.read_config()["launchAtLoginShortcuts"]
    settings.click("push button", "Save")
    wait_config(program, "launchAtLoginShortcuts", {"Alpha": True})
    wait_config(program, "launchAtLogin", True)
    wait_until(lambda: os.path.exists(program.login_entry), "no login entry is written")
    settings.wait_for("push button", "Save", "can be pressed again", lambda button: button.enabled)

    tick(settings, "Login for Alpha", False)
    settings.click("push button", "Close")
    settings.wait_closed()
    assert program.open_settings().element("check box", "Login for Alpha").checked


def test_rows_are_moved_by_mouse_and_keyboard_and_by_assistive_programs(program):
    settings = start(program, "A", "B", "C")
    screen = settings.screen

    def drag(name, end):
        x, y, _, height = settings.element("list item", name).extents()
        screen.drag((x + 15, y + height // 2), end)

    x, y, _, height = settings.element("list item", "B").extents()
    drag("A", (x + 60, y + height - 4))
    wait_order(settings, "B", "A", "C")
    # Let go outside the list, a row stays where it was.
    drag("B", settings.middle("push button", "Close"))
    assert order(settings) == ["B", "A", "C"]
    # A click would give the box the focus and tick it too.
    for _ in range(20):
        if settings.element("check box", "Login for A").focused:
            break
        screen.press("Tab")
    screen.press("Alt", "Down")
    wait_order(settings, "B", "C", "A")
    settings.wait_for("check box", "Login for A", "keeps the keyboard", lambda box: box.focused)
    settings.element("list item", "B").act("Move down")
    wait_order(settings, "C", "B", "A")
    assert program.read_config()["pinned"] == ["A", "B", "C"]
    screen.press("Return")
    wait_config(program, "pinned", ["C", "B", "A"])


def test_recorders_take_every_key_and_what_is_saved_works(program):
    settings = start(program, "Alpha")
    for name, keys, label in (
            ("Quick open hotkey", ["Escape"], "Esc"), ("Quick open hotkey", ["Return"], "Return"),
            ("Quick open hotkey", ["Alt", "Tab"], "⌥Tab"),
            ("Quick open hotkey", ["Super", "Shift", "Space"], "⌘⇧Space"),
            ("Hotkey for Alpha", ["Control", "Alt", "B"], "⌥⌃·11")):
        settings.click("push button", name)
        shows(settings, "push button", name, "Press keys…")
        settings.screen.press(*keys)
        shows(settings, "push button", name, label)
    settings.screen.press("Return")
    wait_config(program, "menuHotkey", {"keyCode": 49, "modifiers": 0x300})
    wait_config(program, "shortcutHotkeys", {"Alpha": RECORDED})
    wait_until(lambda: settings.screen.is_grabbed("B", X.Mod1Mask | X.ControlMask))
    for count in (1, 2):
        settings.screen.press("Control", "Alt", "B")
        program.wait_for_runs(*["Alpha"] * count)


def test_popups_choose_and_ask_for_names_and_ignore_the_wheel(program):
    settings = start(program, "Alpha", "Beta", groupOf={"Alpha": "Work"})
    for button in (4, 5, 5):
        settings.screen.click(*settings.middle("combo box", "Section for Alpha"), button)
    # What is clicked afterwards is handled after the wheel.
    tick(settings, "Login for Alpha", True)
    assert settings.element("combo box", "Section for Alpha").description == "Work"

    settings.choose("Section for Beta", "Work")
    settings.choose("Section for Alpha", "Custom…")
    answer(program, "  Evening ")
    shows(settings, "combo box", "Section for Alpha", "Evening")
    settings.choose("Section for Beta", "Custom…")
    answer(program, "Never", button="Cancel")
    settings.choose("Menu bar icon", "Star")
    settings.screen.press("Return")
    wait_config(program, "groupOf", {"Alpha": "Evening", "Beta": "Work"})
    wait_until(lambda: "star" in program.tray().icon_name, program.tray().icon_name)
