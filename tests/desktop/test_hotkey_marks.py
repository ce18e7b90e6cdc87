"""Hotkeys that cannot work are marked in the settings, with the reason."""

import contextlib

from virtualdesktop import wait_until
from virtualdesktop.client import Client
from virtualdesktop.portal import Portal
from Xlib import X

ACCESSIBILITY = True
KEY = {"B": (11, 56), "T": (17, 28)}
NO_KEY = 52
SUPER_KEY = 133
CONTROL_OPTION, COMMAND = 0x1800, 0x100
TAKEN = "Another program already uses this combination."
SUPER_HELD = (
    "Another program holds the Super key and may keep this combination. Bind this command in "
    "your desktop's settings instead: gapplication action com.quillbar.Quillbar palette")


def hotkey(name, modifiers):
    return {"keyCode": KEY[name][0], "modifiers": modifiers}


@contextlib.contextmanager
def other_program(program, key, modifiers):
    """Another client that has the key to itself."""
    with Client(program.desktop) as client:
        client.grab(key, modifiers)
        yield


def says(settings, name, text):
    settings.wait_for("push button", name, f"says {text!r}",
                      lambda recorder: recorder.description == text)


def reds(settings, name):
    """How many clearly red pixels the recorder has."""
    picture = settings.screen.picture(settings.element("push button", name).extents())
    return sum(r > 200 and g < 150 and b < 150 for r, g, b in picture.getdata())


def marks(settings, names):
    return {name: reds(settings, f"Hotkey for {name}") > 20 for name in names}


def is_dark(settings):
    x, y, _, _ = settings.area()
    return max(settings.screen.picture((x + 4, y + 4, 1, 1)).getpixel((0, 0))) < 128


def test_what_cannot_work_is_marked_with_the_reason(program):
    names = ["Taken", "Free", "Again", "No key"]
    program.pin(*names, shortcutHotkeys={
        "Taken": hotkey("B", CONTROL_OPTION), "Free": hotkey("T", CONTROL_OPTION),
        "Again": hotkey("T", CONTROL_OPTION),
        "No key": {"keyCode": NO_KEY, "modifiers": COMMAND}})
    with Portal(program.desktop, "dark") as portal, \
            other_program(program, KEY["B"][1], X.ControlMask | X.Mod1Mask):
        program.start()
        settings = program.open_settings()
        says(settings, "Hotkey for Taken", f"⌥⌃·11, Alt+Control+B. {TAKEN}")
        says(settings, "Hotkey for Again", "⌥⌃·17, Alt+Control+T")
        says(settings, "Hotkey for Free",
             "⌥⌃·17, Alt+Control+T. “Again” already uses this combination.")
        says(settings, "Hotkey for No key", "⌘·52. Your keyboard has no such key.")
        says(settings, "Quick open hotkey", "⌘⌥·17, Super+Alt+T")
        marked = {"Taken": True, "Free": True, "Again": False, "No key": True}
        wait_until(lambda: marks(settings, names) == marked, lambda: str(marks(settings, names)))
        portal.change("light")
        wait_until(lambda: not is_dark(settings), "the window stays dark")
        wait_until(lambda: marks(settings, names) == marked, lambda: str(marks(settings, names)))
        assert reds(settings, "Quick open hotkey") == 0

        settings.screen.point(*settings.middle("push button", "Hotkey for Taken"))
        settings.element("tool tip", f"Alt+Control+B\n{TAKEN}")


def test_marks_come_and_go_with_what_causes_them(program):
    program.pin("A", shortcutHotkeys={"A": hotkey("B", CONTROL_OPTION)})
    with other_program(program, KEY["B"][1], X.ControlMask | X.Mod1Mask):
        program.start()
        settings = program.open_settings()
        says(settings, "Quick open hotkey", "⌘⌥·17, Super+Alt+T")
        says(settings, "Hotkey for A", f"⌥⌃·11, Alt+Control+B. {TAKEN}")
    # Free again, it is claimed when the panel opens the menu.
    program.tray().menu.send(0, "opened")
    says(settings, "Hotkey for A", "⌥⌃·11, Alt+Control+B")
    settings.screen.press("Control", "Alt", "B")
    program.wait_for_runs("A")
    with other_program(program, SUPER_KEY, 0):
        look_away_and_back(program, settings)
        says(settings, "Quick open hotkey", f"⌘⌥·17, Super+Alt+T. {SUPER_HELD}")
        says(settings, "Hotkey for A", "⌥⌃·11, Alt+Control+B")
    look_away_and_back(program, settings)
    says(settings, "Quick open hotkey", "⌘⌥·17, Super+Alt+T")

    with other_program(program, KEY["T"][1], X.ControlMask):
        settings.click("push button", "Hotkey for A")
        says(settings, "Hotkey for A", "Press keys…")
        settings.screen.press("Control", "T")
        says(settings, "Hotkey for A", f"⌃·17, Control+T. {TAKEN}")


def look_away_and_back(program, settings):
    about = program.open_about()
    settings.screen.press("Escape")
    about.wait_closed()
    wait_until(lambda: settings.screen.focused_window() == settings.id)
