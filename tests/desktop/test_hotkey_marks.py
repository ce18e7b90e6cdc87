"""Hotkeys that cannot work are marked in the settings, with the reason, while it lasts."""

from virtualdesktop import wait_until
from virtualdesktop.client import Client
from virtualdesktop.portal import Portal
from virtualdesktop.screen import KEY
from Xlib import X

ACCESSIBILITY = True
B = {"keyCode": 11, "modifiers": 0x1800}
NO_KEY = {"keyCode": 52, "modifiers": 0x100}
CONTROL_ALT = X.ControlMask | X.Mod1Mask
TAKEN = "Another program already uses this combination."
SUPER_HELD = (
    "Another program holds the Super key and may keep this combination. Bind this command in "
    "your desktop's settings instead: gapplication action com.quillbar.Quillbar palette")


def says(settings, name, text):
    settings.wait_for("push button", name, f"says {text!r}",
                      lambda recorder: recorder.description == text)


def is_red(settings, name):
    """Whether the recorder has clearly red pixels."""
    picture = settings.screen.picture(settings.element("push button", name).extents())
    return sum(r > 200 and g < 150 and b < 150 for r, g, b in picture.getdata()) > 20


def test_what_cannot_work_is_red_with_the_reason_in_either_colours(program):
    program.pin("Taken", "No key", "Free", shortcutHotkeys={"Taken": B, "No key": NO_KEY})
    with Portal(program.desktop, "dark") as portal, Client(program.desktop) as other:
        other.grab(KEY["B"], CONTROL_ALT)
        program.start()
        settings = program.open_settings()
        says(settings, "Hotkey for Taken", f"⌥⌃·11, Alt+Control+B. {TAKEN}")
        says(settings, "Hotkey for No key", "⌘·52. Your keyboard has no such key.")
        for scheme, wait in (("dark", settings.wait_dark), ("light", settings.wait_light)):
            portal.change(scheme)
            wait()
            for name, is_marked in (("Taken", True), ("No key", True), ("Free", False)):
                wait_until(lambda: is_red(settings, f"Hotkey for {name}") == is_marked, name)
        settings.screen.point(*settings.middle("push button", "Hotkey for Taken"))
        settings.element("tool tip", f"Alt+Control+B\n{TAKEN}")


def test_marks_come_and_go_with_what_causes_them(program):
    program.pin("A", shortcutHotkeys={"A": B})
    with Client(program.desktop) as other:
        other.grab(KEY["B"], CONTROL_ALT)
        program.start()
        settings = program.open_settings()
        says(settings, "Hotkey for A", f"⌥⌃·11, Alt+Control+B. {TAKEN}")
    # Free again, it is claimed when the panel opens the menu.
    program.tray().menu.send(0, "opened")
    says(settings, "Hotkey for A", "⌥⌃·11, Alt+Control+B")
    settings.screen.press("Control", "Alt", "B")
    program.wait_for_runs("A")
    with Client(program.desktop) as other:
        other.grab(KEY["Super"], 0)
        look_away_and_back(program, settings)
        says(settings, "Quick open hotkey", f"⌘⌥·17, Super+Alt+T. {SUPER_HELD}")
        says(settings, "Hotkey for A", "⌥⌃·11, Alt+Control+B")
    look_away_and_back(program, settings)
    says(settings, "Quick open hotkey", "⌘⌥·17, Super+Alt+T")


def look_away_and_back(program, settings):
    program.open_about().dismiss()
    wait_until(lambda: settings.screen.focused_window() == settings.id)
