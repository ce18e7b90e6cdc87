"""The settings window, used with real keys and the real mouse."""

import json

from virtualdesktop import Window, wait_until
from Xlib import X

ACCESSIBILITY = True
CONTROL_OPTION = 0x1800
KEY_B = 11


def open_settings(program):
    tray = program.start()
    tray.menu.click("Settings…")
    return Window(program, "Quillbar Settings")


def wait_config(program, key, value):
    def stored():
        try:
            return program.read_config().get(key)
        except json.JSONDecodeError:
            # The file is overwritten in place: for a moment there is nothing in it.
            return None

    wait_until(lambda: stored() == value, lambda: f"{key} should be {value!r}, is {stored()!r}")


def save(settings):
    """Presses Return, which saves, and waits for what the window says to it."""
    settings.screen.press("Return")
    settings.element("push button", "Saved ✓")


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


def choose(settings, name, title):
    """Opens a pop-up with the mouse and clicks one of its entries."""
    settings.click("combo box", name)
    settings.click("list item", title)
    wait_until(lambda: title not in order(settings), f"{name} stays open")


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


def test_pinning_and_unpinning_are_stored_at_once(program):
    program.add_shortcut("Zebra")
    program.add_shortcut("Yak")
    program.pin("Alpha")
    settings = open_settings(program)
    assert available(settings) == ["Yak", "Zebra"]
    settings.click("check box", "Zebra")
    wait_config(program, "pinned", ["Alpha", "Zebra"])
    settings.click("check box", "Yak")
    wait_config(program, "pinned", ["Alpha", "Zebra", "Yak"])
    wait_until(lambda: order(settings) == ["Alpha", "Zebra", "Yak"])
    settings.screen.click(*remove_button(settings, "Zebra"))
    wait_config(program, "pinned", ["Alpha", "Yak"])
    wait_until(lambda: available(settings) == ["Zebra"])
    assert settings.is_open()


def remove_button(settings, name):
    button = next(button for button in settings.elements("push button")
                  if (button.name, button.description) == ("Remove", name))
    x, y, width, height = button.extents()
    return x + width // 2, y + height // 2


def test_save_stores_and_says_so_and_close_discards(program):
    program.pin("Alpha")
    settings = open_settings(program)
    settings.click("check box", "Login for Alpha")
    assert "launchAtLoginShortcuts" not in program.read_config()
    settings.click("push button", "Save")
    assert not settings.element("push button", "Saved ✓").enabled
    wait_config(program, "launchAtLoginShortcuts", {"Alpha": True})
    assert settings.element("push button", "Save").enabled

    settings.click("check box", "Login for Alpha")
    settings.wait_for("check box", "Login for Alpha", "goes off", lambda box: not box.checked)
    settings.click("push button", "Close")
    settings.wait_closed()
    program.tray().menu.click("Settings…")
    settings = Window(program, "Quillbar Settings")
    assert settings.element("check box", "Login for Alpha").checked
    assert program.read_config()["launchAtLoginShortcuts"] == {"Alpha": True}


def test_return_saves_and_start_at_login_makes_the_entry(program):
    program.pin("Alpha", launchAtLogin=False)
    settings = open_settings(program)
    settings.click("check box", "Start Quillbar at login")
    save(settings)
    wait_config(program, "launchAtLogin", True)
    with open(program.login_entry, encoding="utf-8") as entry:
        assert program.binary in entry.read()


def test_rows_are_dragged_with_the_mouse(program):
    program.pin("A", "B", "C", "D")
    settings = open_settings(program)
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
    program.pin("A", "B", "C")
    settings = open_settings(program)
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


def test_recorded_hotkey_works_once_it_is_saved(program):
    program.pin("Alpha")
    settings = open_settings(program)
    record(settings, "Hotkey for Alpha", "Control", "Alt", "B")
    shows(settings, "Hotkey for Alpha", "⌥⌃·11")
    save(settings)
    wait_config(program, "shortcutHotkeys",
                {"Alpha": {"keyCode": KEY_B, "modifiers": CONTROL_OPTION}})
    wait_until(lambda: settings.screen.is_grabbed("B", X.Mod1Mask | X.ControlMask))
    settings.screen.press("Control", "Alt", "B")
    program.wait_for_runs("Alpha")


def test_recorder_takes_every_key_and_a_second_click_ends_it(program):
    program.pin("Alpha")
    settings = open_settings(program)
    for keys, label in ((["Escape"], "Esc"), (["Return"], "Return"), (["Alt", "Tab"], "⌥Tab"),
                        (["Super", "Shift", "Space"], "⌘⇧Space")):
        record(settings, "Quick open hotkey", *keys)
        shows(settings, "Quick open hotkey", label)
    assert settings.is_open()
    settings.click("push button", "Quick open hotkey")
    shows(settings, "Quick open hotkey", "Press keys…")
    settings.click("push button", "Quick open hotkey")
    shows(settings, "Quick open hotkey", "None")
    save(settings)
    wait_config(program, "menuHotkey", {"keyCode": 49, "modifiers": 0x300})


def test_sections_are_chosen_and_named(program):
    program.pin("Alpha", "Beta")
    settings = open_settings(program)
    choose(settings, "Section for Beta", "Work")
    choose(settings, "Section for Alpha", "Custom…")
    answer(program, "New group", "  Evening ")
    settings.wait_for("combo box", "Section for Alpha", "shows the name",
                      lambda popup: popup.description == "Evening")
    choose(settings, "Section for Beta", "Custom…")
    answer(program, "New group", "Never", button="Cancel")
    save(settings)
    wait_config(program, "groupOf", {"Alpha": "Evening", "Beta": "Work"})


def test_icon_is_chosen_and_named(program):
    program.pin("Alpha")
    settings = open_settings(program)
    choose(settings, "Menu bar icon", "Star")
    save(settings)
    wait_config(program, "iconSymbol", "star.fill")
    wait_until(lambda: "star" in program.tray().icon_name, program.tray().icon_name)

    settings.element("push button", "Save")
    # It is the last entry of a long list.
    settings.click("combo box", "Menu bar icon")
    settings.element("list item", "Star")
    settings.screen.press("End")
    settings.screen.press("Return")
    answer(program, "Custom Icon", "eyeglasses")
    settings.wait_for("combo box", "Menu bar icon", "shows the custom entry",
                      lambda popup: popup.description == "Custom")
    settings.screen.press("Return")
    wait_config(program, "iconSymbol", "eyeglasses")


def test_wheel_over_a_closed_popup_changes_nothing(program):
    program.pin("Alpha", groupOf={"Alpha": "Work"})
    settings = open_settings(program)
    for name, shown in (("Menu bar icon", "Heart"), ("Section for Alpha", "Work")):
        for button in (4, 5, 5):
            settings.screen.click(*settings.middle("combo box", name), button)
        # What is clicked afterwards is handled after the wheel.
        settings.click("check box", "Login for Alpha")
        assert settings.element("combo box", name).description == shown
    save(settings)
    assert (program.read_config()["iconSymbol"], program.read_config()["groupOf"]) == \
        ("heart.fill", {"Alpha": "Work"})


