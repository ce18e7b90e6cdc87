"""The menu that a left click opens, used with real keys and the real mouse."""

import contextlib
import subprocess

from virtualdesktop import wait_until


def wait_closed(program):
    wait_until(lambda: not program.windows(), "the menu stays open")


@contextlib.contextmanager
def layout(desktop, name):
    """Another keyboard layout for the block."""
    for wanted in (name, "us"):
        subprocess.run(["setxkbmap", wanted], env=desktop.environment, check=True)
        if wanted == name:
            yield


@contextlib.contextmanager
def num_lock(screen):
    screen.press("NumLock")
    yield
    screen.press("NumLock")


def test_a_menu_that_opens_while_the_mouse_is_held_elsewhere_can_be_closed(program):
    screen = program.desktop.screen
    program.pin("A")
    tray = program.start()
    screen.hold_pointer()
    tray.call("Activate", "(ii)", 100, 100)
    wait_until(program.large_windows, "no menu")
    screen.release_pointer()
    wait_until(lambda: not screen.is_pointer_free(), "the menu never gets the mouse")
    screen.click_ground()
    wait_closed(program)


def test_keys_run_the_rows(program):
    screen, nothing_else = program.desktop.screen, contextlib.nullcontext()
    program.pin("A", "B")
    program.start()
    expected = []
    for meanwhile, keys, names in (
            (nothing_else, [["2"]], "B"),
            (num_lock(screen), [["Keypad1"]], "A"),
            # Where digits need Shift the keys of their row count.
            (layout(program.desktop, "fr"), [["2"]], "B"),
            (nothing_else, [["0"], ["Super", "0"]], "AB"),
            (nothing_else, [["Down"], ["Return"]], "A")):
        with meanwhile:
            program.open_own_menu()
            for combination in keys:
                screen.press(*combination)
            expected += names
            program.wait_for_runs(*expected)
            wait_closed(program)

    program.open_own_menu()
    # Where letters are not Latin the keys' places count.
    with layout(program.desktop, "ru"):
        screen.press("Super", "Q")
    wait_until(lambda: program.process.poll() is not None, "Super+Q does not quit")
    assert program.process.returncode == 0
