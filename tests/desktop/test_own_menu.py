"""The menu that a left click opens, as people and assistive programs meet it."""

import contextlib
import subprocess

import pytest
from virtualdesktop import wait_until

ACCESSIBILITY = True
FOOTER = "⌘⌥·17 · type to jump · 1–9 to run"


def wait_closed(program):
    wait_until(lambda: not program.windows(), "the menu stays open")


@contextlib.contextmanager
def layout(desktop, name):
    """Another keyboard layout for the block."""
    for wanted in (name, "us"):
        subprocess.run(["setxkbmap", wanted], env=desktop.environment, check=True)
        if wanted == name:
            yield


def test_click_opens_the_menu_and_escape_closes_it(program):
    program.pin("A")
    program.start()
    for _ in range(2):
        program.open_own_menu()
        program.desktop.screen.press("Escape")
        wait_closed(program)
    assert program.ran() == []


def test_assistive_programs_read_every_row(program):
    program.pin("this & that", "under_score", groupOf={"this & that": "Work"})
    program.start()
    program.open_own_menu()
    rows = wait_until(
        lambda: program.desktop.accessibility.open_menu_rows(program.process.pid),
        "assistive programs are not told of the menu")
    assert [row.name for row in rows] == [
        "QUILLBAR", "WORK", "this & that", "under_score", "Run All", "Edit in Shortcuts…",
        "Type to Jump…", "Settings…", "Check for Updates…", "About Quillbar", "Quit Quillbar",
        FOOTER]
    assert {"QUILLBAR", "WORK", FOOTER} <= {row.name for row in rows if not row.enabled}
    program.desktop.screen.press("Escape")
    wait_closed(program)


@pytest.mark.parametrize("key", ["2", "Keypad1"])
def test_bare_digit_runs_that_pin(program, key):
    program.pin("A", "B")
    program.start()
    program.open_own_menu()
    lock = program.desktop.screen.lock_on("NumLock") if key == "Keypad1" \
        else contextlib.nullcontext()
    with lock:
        program.desktop.screen.press(key)
        wait_closed(program)
    program.wait_for_runs("A" if key == "Keypad1" else "B")


def test_digit_row_works_where_digits_need_shift(program):
    program.pin("A", "B")
    program.start()
    with layout(program.desktop, "fr"):
        program.open_own_menu()
        program.desktop.screen.press("2")
        program.wait_for_runs("B")


def test_key_equivalents_need_their_modifier(program):
    program.pin("A", "B")
    program.start()
    program.open_own_menu()
    program.desktop.screen.press("0")
    program.desktop.screen.press("Super", "0")
    program.wait_for_runs("A", "B")
    wait_closed(program)

    program.open_own_menu()
    program.desktop.screen.press("Super", "Q")
    wait_until(lambda: program.process.poll() is not None, "Super+Q does not quit")
    assert program.process.returncode == 0


def test_arrows_and_return_run_the_chosen_row(program):
    program.pin("A")
    program.start()
    program.open_own_menu()
    program.desktop.screen.press("Down")
    program.desktop.screen.press("Return")
    program.wait_for_runs("A")


def test_finished_run_leaves_the_open_menu_usable(program):
    program.pin("A", "B")
    tray = program.start()
    program.open_own_menu()
    tray.menu.click("A")
    wait_until(program.desktop.notifications.shown, "the run is not reported")
    assert program.windows()
    program.desktop.screen.press("2")
    program.wait_for_runs("A", "B")
