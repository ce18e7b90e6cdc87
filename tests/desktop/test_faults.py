"""What fails around the program: it goes on and answers, or ends in order, and nothing is lost."""

import contextlib
import os
import re
import signal
import time

import pytest
from virtualdesktop import Program, VirtualDesktop, Window, probe, stopped, wait_until
from virtualdesktop.waiting import deliver_signals
from Xlib import X

ACCESSIBILITY = True
NAME = "com.quillbar.Quillbar"
POINTS = 24
RESTARTS = 20
# How the toolkit says it; Xlib adds where it stood when it noticed first.
DISPLAY_GONE = re.compile(r"The X11 connection broke.*\n(XIO:.*\n.*\n)?")


def start(program, *names):
    program.pin("A", *names)
    tray = program.start()
    probe.wait_for_hotkey(program)
    return tray


# Faults that pass.

@contextlib.contextmanager
def no_notifications(program):
    program.desktop.notifications.stop()
    yield
    program.desktop.notifications.start("body", "body-markup")


@contextlib.contextmanager
def no_panel(program):
    for _ in range(RESTARTS):
        program.desktop.panel.kill()
        program.desktop.panel.start()
        program.tray()
    program.desktop.panel.kill()
    yield
    program.desktop.panel.start()
    program.tray()


@contextlib.contextmanager
def stopped_program(program):
    with stopped(program.process):
        program.desktop.screen.press("Super", "Alt", "T")
        program.desktop.screen.type("a")
        program.desktop.screen.press("Return")
        yield
    program.wait_for_runs("A")
    wait_until(program.desktop.screen.is_keyboard_free, "the keyboard is still held")


def by_menu(program, menu):
    probe.menu_answers(program, menu)
    probe.runs(program, menu, "A")


def by_palette(program, _menu):
    probe.hotkey_answers(program)
    probe.palette_runs(program, "A")


def by_icon(program, _menu):
    probe.own_menu_answers(program)


@pytest.mark.parametrize("fault, ways", [
    (no_notifications, [by_menu, by_palette, by_icon]),
    (lambda program: stopped(program.desktop.notifications.process), [by_menu, by_palette, by_icon]),
    (no_panel, [by_menu, by_palette]),
    (lambda program: stopped(program.desktop.bus_daemon), [by_palette]),
    (stopped_program, []),
], ids=["no notifications", "hung notifications", "no panel", "hung bus", "stopped program"])
def test_it_answers_meanwhile_and_afterwards(program, fault, ways):
    desktop = program.desktop
    menu = start(program).menu
    wait_until(desktop.panel.shows_icon, "the icon never shows")
    before = probe.descriptors(program)
    with fault(program):
        for way in ways:
            way(program, menu)
    desktop.notifications.clear()
    for way in (by_menu, by_palette, by_icon):
        way(program, menu)
    wait_until(desktop.notifications.shown, "a run is not reported")
    wait_until(lambda: probe.descriptors(program) == before,
               lambda: f"open before {before}, after {probe.descriptors(program)}")


@pytest.mark.parametrize("row, title", [
    ("Type to Jump…", "Quillbar"), ("Settings…", "Quillbar Settings")])
def test_a_window_that_waits_for_a_dying_window_manager_comes_with_the_next(program, row, title):
    menu, screen = start(program).menu, program.desktop.screen
    program.desktop.window_manager.send_signal(signal.SIGSTOP)
    menu.click(row)
    # One that no window manager has taken is the root's own child.
    wait_until(lambda: title in [screen.title(child.id)
                                 for child in screen.root.query_tree().children],
               "the window is not made")
    program.desktop.processes.end(program.desktop.window_manager, signal.SIGKILL)
    program.desktop.start_window_manager()
    window = Window(program, title)
    x, _, width, _ = window.area()
    assert abs(x + width / 2 - screen.root.get_geometry().width / 2) <= 1
    window.dismiss()


# Servers that are gone for good.

@pytest.fixture
def alone(tmp_path):
    """A program on a desktop of its own, for what is lost does not come back."""
    with VirtualDesktop() as desktop:
        yield Program(desktop, os.environ["QUILLBAR"], tmp_path)


def test_without_the_bus_everything_else_goes_on(alone):
    start(alone)
    settings = alone.open_settings()
    alone.desktop.lose_bus()
    os.remove(alone.config_path)
    settings.screen.press("Return")
    wait_until(lambda: os.path.exists(alone.config_path), "the settings are not saved")
    # Saving may still be claiming the hotkey anew.
    probe.palette_runs(alone, "A")
    assert alone.read_config()["pinned"] == ["A"]
    settings.dismiss()
    probe.comes_to_rest(alone)
    assert alone.stop() == 0
    assert not alone.desktop.runtime_files()


def test_a_start_without_a_bus_is_a_start(alone):
    # Its status area takes icons without a bus too, by a window called like the palette's.
    alone.desktop.panel.kill()
    alone.pin("A")
    alone.launch(DBUS_SESSION_BUS_ADDRESS="unix:path=/nowhere/bus")
    probe.wait_for_hotkey(alone)
    probe.palette_runs(alone, "A")
    probe.comes_to_rest(alone)


def test_without_the_display_it_ends_in_order_and_shortcuts_run_on(alone):
    pipe, done = os.path.join(alone.home, "pipe"), os.path.join(alone.home, "done")
    os.mkfifo(pipe)
    alone.add_shortcut("Long", f'cat "{pipe}"; echo done >"{done}"')
    start(alone, "Long").menu.click("Long")
    alone.wait_for_runs("Long")
    alone.open_settings()
    before = alone.read_config()
    alone.desktop.lose_display()
    wait_until(lambda: alone.process.poll() is not None, "the program stays")
    assert alone.process.returncode == 1
    assert DISPLAY_GONE.fullmatch(alone.take_output())
    assert alone.read_config() == before
    assert not alone.desktop.runtime_files()
    with open(pipe, "w", encoding="ascii"):
        pass
    wait_until(lambda: os.path.exists(done), "the shortcut died with the program")


# SIGTERM in whatever state.

def ask_about_gone_pins(program):
    os.remove(os.path.join(program.shortcuts_folder, "A"))
    assert program.stop() == 0
    program.launch()
    Window(program, "Quillbar")


def hold_the_hotkey(program):
    for key in ("Super", "Alt", "T"):
        program.desktop.screen.key_down(key)


def record(program):
    program.open_settings().click("push button", "Quick open hotkey")
    wait_until(lambda: not program.desktop.screen.is_keyboard_free(), "nothing is recorded")


def drag(program):
    settings = program.open_settings()
    x, y, _, height = settings.element("list item", "A").extents()
    settings.screen.point(x + 15, y + height // 2)
    settings.screen.button(True)
    for step in range(1, 5):
        settings.screen.point(x + 15, y + height // 2 + 8 * step)


def name_a_section(program):
    program.open_settings().choose("Section for A", "Custom…")
    Window(program, "Quillbar")


@pytest.mark.parametrize("bring_about", [
    ask_about_gone_pins, hold_the_hotkey, record, drag, name_a_section, Program.open_own_menu])
def test_it_ends_whatever_is_open_and_lets_go_of_everything(program, bring_about):
    screen = program.desktop.screen
    start(program, "B")
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
    owners, bus = [], program.desktop.bus
    bus.on_signal(
        "org.freedesktop.DBus", "org.freedesktop.DBus", "NameOwnerChanged",
        lambda _path, arguments, _sender: owners.append(arguments[0]))
    started = time.monotonic()
    start(program)
    duration = time.monotonic() - started
    assert program.stop() == 0
    before = program.read_config()
    for point in range(POINTS):
        bus.owner(NAME)
        deliver_signals()
        owners.clear()
        program.launch()
        time.sleep(duration * point / POINTS)
        status = program.stop()
        bus.owner(NAME)
        deliver_signals()
        assert status == 0 or (status == -signal.SIGTERM and NAME not in owners)
        assert program.read_config() == before
        assert not program.desktop.runtime_files()
