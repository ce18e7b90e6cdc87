"""SIGTERM in whatever state: the program ends in order and holds nothing back."""

import os
import signal
import time

import pytest
from virtualdesktop import Program, Window, probe, wait_until
from virtualdesktop.waiting import deliver_signals
from Xlib import X

ACCESSIBILITY = True
NAME = "com.quillbar.Quillbar"
POINTS = 24


def ask_about_gone_pins(program):
    os.remove(os.path.join(program.shortcuts_folder, "Alpha"))
    assert program.stop() == 0
    program.launch()
    Window(program, "Quillbar")


def open_palette(program):
    program.desktop.screen.press("Super", "Alt", "T")
    Window(program, "Quillbar")


def hold_the_hotkey(program):
    for key in ("Super", "Alt", "T"):
        program.desktop.screen.key_down(key)


def record(program):
    settings = program.open_settings()
    settings.click("push button", "Quick open hotkey")
    wait_until(lambda: not program.desktop.screen.is_keyboard_free(), "nothing is recorded")


def drag(program):
    settings = program.open_settings()
    x, y, _, height = settings.element("list item", "Alpha").extents()
    settings.screen.point(x + 15, y + height // 2)
    settings.screen.button(True)
    for step in range(1, 5):
        settings.screen.point(x + 15, y + height // 2 + 8 * step)


def name_a_section(program):
    settings = program.open_settings()
    settings.choose("Section for Alpha", "Custom…")
    Window(program, "Quillbar")


@pytest.mark.parametrize("bring_about", [
    Program.open_settings, ask_about_gone_pins, open_palette, hold_the_hotkey, record, drag,
    name_a_section, Program.open_own_menu])
def test_it_ends_whatever_is_open_and_lets_go_of_everything(program, bring_about):
    screen = program.desktop.screen
    program.pin("Alpha", "Beta")
    program.start()
    probe.wait_for_hotkey(program)
    before = program.read_config()
    bring_about(program)
    assert program.stop() == 0
    try:
        wait_until(screen.is_keyboard_free, "the keyboard is still held")
        assert screen.is_pointer_free()
        assert not screen.is_grabbed("T", X.Mod1Mask | X.Mod4Mask)
        assert not program.desktop.runtime_files()
        assert program.read_config() == before
    finally:
        for key in ("T", "Alt", "Super"):
            screen.key_up(key)
        screen.button(False)


def test_it_ends_at_any_point_of_the_start(program):
    """Until it owns its name there is nothing to put in order, and the signal may end it at once."""
    owners = []
    stop_watching = program.desktop.bus.on_signal(
        "org.freedesktop.DBus", "org.freedesktop.DBus", "NameOwnerChanged",
        lambda _path, arguments, _sender: owners.append(arguments[0]))
    program.pin("Alpha")
    started = time.monotonic()
    program.launch()
    probe.wait_for_hotkey(program)
    duration = time.monotonic() - started
    assert program.stop() == 0
    before = program.read_config()
    for point in range(POINTS):
        program.desktop.bus.owner(NAME)
        deliver_signals()
        owners.clear()
        program.launch()
        time.sleep(duration * point / POINTS)
        status = program.stop()
        program.desktop.bus.owner(NAME)
        deliver_signals()
        assert status == 0 or (status == -signal.SIGTERM and NAME not in owners)
        assert program.read_config() == before
        assert not program.desktop.runtime_files()
        assert set(os.listdir(os.path.dirname(program.login_entry))) \
            <= {os.path.basename(program.login_entry)}
    stop_watching()
