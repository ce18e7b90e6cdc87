"""The session's own servers fail: without a bus the program goes on, without a display it ends, and
windows come back with the window manager."""

import os
import re

import pytest
from virtualdesktop import Program, VirtualDesktop, Window, probe, wait_until

# How the toolkit says it; Xlib adds where it stood when it noticed first.
DISPLAY_GONE = re.compile(r"The X11 connection broke.*\n(XIO:.*\n.*\n)?")


@pytest.fixture
def desktop():
    """One for each test, for what is lost does not come back."""
    with VirtualDesktop() as running:
        yield running


def start(program):
    program.add_shortcut("Long", f'cat "{program.home}/pipe"; echo done >"{program.home}/done"')
    program.pin("Alpha", "Long")
    tray = program.start()
    probe.wait_for_hotkey(program)
    return tray


def start_long(program):
    """Starts the program and a shortcut that goes on until `end_long`."""
    os.mkfifo(os.path.join(program.home, "pipe"))
    tray = start(program)
    tray.menu.click("Long")
    program.wait_for_runs("Long")


def end_long(program):
    with open(os.path.join(program.home, "pipe"), "w", encoding="ascii"):
        pass
    wait_until(lambda: os.path.exists(os.path.join(program.home, "done")),
               "the shortcut died with the program")


def open_palette(program):
    program.desktop.screen.press("Super", "Alt", "T")
    return Window(program, "Quillbar")


def test_without_the_bus_everything_else_goes_on(program):
    start(program)
    settings = program.open_settings()
    program.desktop.lose_bus()
    os.remove(program.config_path)
    settings.screen.press("Return")
    wait_until(lambda: os.path.exists(program.config_path), "the settings are not saved")
    # Saving may still be claiming the hotkey anew.
    probe.palette_runs(program, "Alpha")
    assert program.read_config()["pinned"] == ["Alpha", "Long"]
    settings.screen.press("Escape")
    settings.wait_closed()
    probe.comes_to_rest(program)
    assert program.stop() == 0
    assert not program.desktop.runtime_files()


def test_a_start_without_a_bus_is_a_start(program):
    # Its status area takes icons without a bus too, by a window called like the palette's.
    program.desktop.panel.kill()
    program.pin("Alpha")
    program.launch(DBUS_SESSION_BUS_ADDRESS="unix:path=/nowhere/bus")
    probe.wait_for_hotkey(program)
    probe.palette_runs(program, "Alpha")
    probe.comes_to_rest(program)


def test_a_bus_that_answers_nothing_delays_nothing(program):
    tray = start(program)
    with program.desktop.frozen_bus():
        probe.hotkey_answers(program)
        probe.palette_runs(program, "Alpha")
    probe.everything_answers(program, tray.menu, "Alpha")


@pytest.mark.parametrize("state", [open_palette, Program.open_settings])
def test_without_the_display_it_ends_in_order_and_shortcuts_run_on(program, state):
    start_long(program)
    state(program)
    before = program.read_config()
    program.desktop.lose_display()
    wait_until(lambda: program.process.poll() is not None, "the program stays")
    assert program.process.returncode == 1
    assert DISPLAY_GONE.fullmatch(program.take_output())
    assert program.read_config() == before
    assert not program.desktop.runtime_files()
    end_long(program)


@pytest.mark.parametrize("title", ["Quillbar", "Quillbar Settings"])
def test_a_window_that_waits_for_a_dying_window_manager_comes_with_the_next(program, title):
    tray = start(program)
    screen = program.desktop.screen
    with program.desktop.dying_window_manager():
        tray.menu.click({"Quillbar": "Type to Jump…", "Quillbar Settings": "Settings…"}[title])
        # One that no window manager has taken is the root's own child.
        wait_until(lambda: title in [screen.title(child.id)
                                     for child in screen.root.query_tree().children],
                   "the window is not made")
        tray.menu.revision()
    window = Window(program, title)
    x, _, width, _ = window.area()
    assert abs(x + width / 2 - screen.root.get_geometry().width / 2) <= 1
    screen.press("Escape")
    window.wait_closed()
