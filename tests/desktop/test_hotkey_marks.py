"""Hotkeys that cannot work are marked in the settings, with the reason."""

from virtualdesktop import wait_until
from virtualdesktop.client import Client
from virtualdesktop.screen import KEY
from Xlib import X

ACCESSIBILITY = True
HOTKEY, PALETTE_HOTKEY = "⌥⌃·11, Alt+Control+B", "⌘⌥·17, Super+Alt+T"
TAKEN = "Another program already uses this combination."
SUPER_HELD = (
    "Another program holds the Super key and may keep this combination. Bind this command in "
    "your desktop's settings instead: gapplication action com.quillbar.Quillbar palette")


def says(settings, name, text):
    settings.wait_for("push button", name, f"says {text!r}",
                      lambda recorder: recorder.description == text)


def is_red(settings, name):
    """Whether the recorder has more clearly red pixels than its text would."""
    picture = settings.screen.picture(settings.element("push button", name).extents())
    return sum(r > 200 and g < 150 and b < 150 for r, g, b in picture.getdata()) > 20


def test_marks_come_and_go_with_what_causes_them(program):
    program.pin("A", shortcutHotkeys={"A": {"keyCode": 11, "modifiers": 0x1800}})
    with Client(program.desktop) as other:
        other.grab(KEY["B"], X.ControlMask | X.Mod1Mask)
        program.start()
        settings = program.open_settings()
        says(settings, "Quick open hotkey", PALETTE_HOTKEY)
        says(settings, "Hotkey for A", f"{HOTKEY}. {TAKEN}")
        wait_until(lambda: is_red(settings, "Hotkey for A"), "the hotkey is not red")
        assert not is_red(settings, "Quick open hotkey")
        settings.screen.point(*settings.middle("push button", "Hotkey for A"))
        settings.element("tool tip", f"Alt+Control+B\n{TAKEN}")
    # Free again, it is claimed when the panel opens the menu.
    program.tray().menu.send(0, "opened")
    says(settings, "Hotkey for A", HOTKEY)
    settings.screen.press("Control", "Alt", "B")
    program.wait_for_runs("A")
    with Client(program.desktop) as other:
        other.grab(KEY["Super"], 0)
        look_away_and_back(program, settings)
        says(settings, "Quick open hotkey", f"{PALETTE_HOTKEY}. {SUPER_HELD}")
        says(settings, "Hotkey for A", HOTKEY)
    look_away_and_back(program, settings)
    says(settings, "Quick open hotkey", PALETTE_HOTKEY)


def look_away_and_back(program, settings):
    program.open_about().dismiss()
    wait_until(lambda: settings.screen.focused_window() == settings.id)
