"""Global hotkeys, pressed as physical keys."""

import contextlib
import subprocess

import Xlib.display
from virtualdesktop import wait_until
from virtualdesktop.screen import KEY
from Xlib import X
from Xlib.error import BadAccess, CatchError

CONTROL_OPTION = 0x1800
KEY_B, KEY_T = 11, 17


def hotkey(key_code, modifiers=CONTROL_OPTION):
    return {"keyCode": key_code, "modifiers": modifiers}


@contextlib.contextmanager
def other_client(desktop):
    """Another program on the same display."""
    display = Xlib.display.Display(desktop.environment["DISPLAY"])
    try:
        yield display
    finally:
        display.close()


def can_grab(display, key):
    refused = CatchError(BadAccess)
    display.screen().root.grab_key(
        KEY[key], X.ControlMask | X.Mod1Mask, False, X.GrabModeAsync, X.GrabModeAsync,
        onerror=refused)
    display.sync()
    return refused.get_error() is None


def press(program, key):
    program.desktop.screen.press("Control", "Alt", key)


def start_with(program, **hotkeys):
    program.pin(*hotkeys, shortcutHotkeys=hotkeys)
    return program.start()


def wait_grabbed(program, key):
    def is_taken():
        with other_client(program.desktop) as display:
            return not can_grab(display, key)

    wait_until(is_taken, f"the hotkey on {key} is not registered")


def test_hotkey_runs_its_shortcut_once_per_press(program):
    start_with(program, A=hotkey(KEY_B))
    wait_grabbed(program, "B")
    press(program, "B")
    program.wait_for_runs("A")
    press(program, "B")
    program.wait_for_runs("A", "A")
    program.desktop.screen.press("Control", "B")
    press(program, "B")
    program.wait_for_runs("A", "A", "A")


def test_locks_do_not_disturb_hotkeys(program):
    start_with(program, A=hotkey(KEY_B))
    wait_grabbed(program, "B")
    expected = []
    for lock in ("NumLock", "CapsLock"):
        with program.desktop.screen.lock_on(lock):
            press(program, "B")
            expected.append("A")
            program.wait_for_runs(*expected)


def test_hotkeys_are_physical_keys_in_every_layout(program):
    start_with(program, A=hotkey(KEY_B))
    wait_grabbed(program, "B")
    for count, name in enumerate(("fr", "ru", "us"), start=1):
        subprocess.run(["setxkbmap", name], env=program.desktop.environment, check=True)
        press(program, "B")
        program.wait_for_runs(*["A"] * count)


def test_taken_combination_disturbs_no_other(program):
    with other_client(program.desktop) as display:
        assert can_grab(display, "B")
        start_with(program, A=hotkey(KEY_B), C=hotkey(KEY_T))
        wait_grabbed(program, "T")
        press(program, "B")
        press(program, "T")
        program.wait_for_runs("C")


def test_quitting_frees_the_combinations(program):
    start_with(program, A=hotkey(KEY_B))
    wait_grabbed(program, "B")
    assert program.stop() == 0
    with other_client(program.desktop) as display:
        assert can_grab(display, "B")
