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
RUNS = 20
# How the toolkit says it; Xlib adds where it stood when it noticed first.
DISPLAY_GONE = re.compile(r"The X11 connection broke.*\n(XIO:.*\n.*\n)?")


TOOL = """#!/bin/sh
if [ "$1" = list ]; then
{listing}
else
echo "$2" >>ran
{run}
fi
"""
WHOLE = "printf '%s\\n' A B Yak Zebra"


def write_tool(program, listing=WHOLE, run="", mode=0o700):
    """The tool where the program under test looks for it: in the home folder, where it also starts.
    One that runs cannot be written to."""
    path = os.path.join(program.home, "shortcuts")
    with open(f"{path}.new", "w", encoding="utf-8") as file:
        file.write(TOOL.format(listing=listing, run=run))
    os.chmod(f"{path}.new", mode)
    os.rename(f"{path}.new", path)


def start(program, *names):
    write_tool(program)
    program.pin("A", *names)
    tray = program.start()
    probe.wait_for_hotkey(program)
    return tray


@contextlib.contextmanager
def leaving_nothing(program):
    """What goes on in here leaves no child and no descriptor."""
    wait_until(program.desktop.panel.shows_icon, "the icon never shows")
    before = probe.descriptors(program)
    yield
    wait_until(lambda: not program.children(), "a child stays")
    wait_until(lambda: probe.descriptors(program) == before,
               lambda: f"open before {before}, after {probe.descriptors(program)}")


def by_menu(program, menu):
    probe.menu_answers(program, menu, "A")


def by_palette(program, _menu):
    probe.palette_answers(program, "A")


def by_icon(program, _menu):
    probe.icon_answers(program)


EVERY_WAY = [by_menu, by_palette, by_icon]


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


@pytest.mark.parametrize("fault, ways", [
    (no_notifications, EVERY_WAY),
    (lambda program: stopped(program.desktop.notifications.process), EVERY_WAY),
    (no_panel, [by_menu, by_palette]),
    (lambda program: stopped(program.desktop.bus_daemon), [by_palette]),
    (stopped_program, []),
], ids=["no notifications", "hung notifications", "no panel", "hung bus", "stopped program"])
def test_it_answers_meanwhile_and_afterwards(program, fault, ways):
    menu = start(program).menu
    with leaving_nothing(program):
        with fault(program):
            for way in ways:
                way(program, menu)
        program.desktop.notifications.clear()
        for way in EVERY_WAY:
            way(program, menu)
        wait_until(program.desktop.notifications.shown, "a run is not reported")


@contextlib.contextmanager
def nowhere_to_save(program):
    """In the folder's place is a file, which stops even root."""
    folder = os.path.dirname(program.config_path)
    os.rename(folder, f"{folder}.away")
    with open(folder, "w", encoding="ascii"):
        pass
    yield
    os.remove(folder)
    os.rename(f"{folder}.away", folder)


def pin(program, name):
    """Ticks the box of a shortcut, which saves at once, and waits until that is over."""
    settings = program.open_settings()
    settings.click("check box", name)
    settings.element("check box", f"Login for {name}")
    settings.dismiss()


def test_what_cannot_be_saved_is_saved_with_the_next_change_or_at_the_end(program):
    menu = start(program).menu
    with nowhere_to_save(program):
        pin(program, "Yak")
        by_menu(program, menu)
        assert "Yak" in menu.titles()
    assert program.read_config()["pinned"] == ["A"]
    pin(program, "Zebra")
    assert program.read_config()["pinned"] == ["A", "Yak", "Zebra"]
    with nowhere_to_save(program):
        pin(program, "B")
    assert program.stop() == 0
    assert program.read_config()["pinned"] == ["A", "Yak", "Zebra", "B"]


# What the settings show as pinned and to pin. Without a whole answer, the pins are what there is.
@pytest.mark.parametrize("tool, expected", [
    ({"mode": 0o600}, (["A", "B"], [])),
    ({"listing": "echo A; echo X; kill -9 $$"}, (["A", "B"], [])),
    ({"listing": "cat /dev/zero"}, (["A", "B"], [])),
    # After 10 seconds it is killed.
    ({"listing": "echo A; sleep 600"}, (["A", "B"], [])),
    ({"listing": "echo A; echo X; sleep 600 &"}, (["A"], ["X"])),
])
def test_nothing_is_concluded_from_a_listing_that_fails(program, tool, expected):
    menu, before = start(program, "B").menu, program.read_config()
    with leaving_nothing(program):
        write_tool(program, **tool)
        settings = program.open_settings()
        elements = settings.elements()
        settings.dismiss()
        assert expected == (
            [row.name for row in elements if row.role == "list item"],
            [box.name for box in elements if box.role == "check box"
             and not box.name.startswith(("Start ", "Login "))])
        write_tool(program)
        by_menu(program, menu)
    assert program.read_config() == before


def test_hotkeys_pressed_while_the_tool_takes_its_time_come_afterwards(program):
    screen, gate = program.desktop.screen, os.path.join(program.home, "gate")
    os.mkfifo(gate)
    start(program)
    write_tool(program, f"read line <gate; {WHOLE}")
    # A menu that is just being closed held the keyboard.
    program.open_own_menu()
    for key in ["Up"] * 4 + ["Return"]:
        screen.press(key)
    wait_until(program.children, "the tool is not asked")
    wait_until(screen.is_keyboard_free, "the menu's keyboard is still held")
    screen.press("Super", "Alt", "T")
    assert screen.is_keyboard_free()
    with open(gate, "w", encoding="ascii") as file:
        file.write("\n")
    Window(program, "Quillbar").dismiss()
    Window(program, "Quillbar Settings")


@pytest.mark.parametrize("run, told", [
    ("kill -9 $$", "“A” couldn’t run"),
    ("head -c 100M /dev/zero; head -c 100M /dev/zero >&2", "Launched"),
    ("sleep 600 & sleep 600 >&2 &", "Launched")])
def test_runs_that_go_wrong_are_told(program, run, told):
    menu = start(program).menu
    by_menu(program, menu)
    wait_until(program.desktop.notifications.shown, "the run is not reported")
    with leaving_nothing(program):
        program.desktop.notifications.clear()
        write_tool(program, run=run)
        row = menu.row("A").id
        for _ in range(RUNS):
            menu.send(row)
        wait_until(lambda: len(program.desktop.notifications.shown()) == RUNS, "not all are reported")
    assert all(told in shown["body"] for shown in program.desktop.notifications.shown())


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
    by_palette(alone, None)
    assert alone.read_config()["pinned"] == ["A"]
    settings.dismiss()
    probe.comes_to_rest(alone)
    assert alone.stop() == 0
    assert not alone.desktop.runtime_files()


def test_a_start_without_a_bus_is_a_start(alone):
    # Its status area takes icons without a bus too, by a window called like the palette's.
    alone.desktop.panel.kill()
    write_tool(alone)
    alone.pin("A")
    alone.launch(DBUS_SESSION_BUS_ADDRESS="unix:path=/nowhere/bus")
    probe.wait_for_hotkey(alone)
    by_palette(alone, None)
    probe.comes_to_rest(alone)


def test_without_the_display_it_ends_in_order_and_shortcuts_run_on(alone):
    pipe, done = os.path.join(alone.home, "pipe"), os.path.join(alone.home, "done")
    os.mkfifo(pipe)
    menu = start(alone).menu
    write_tool(alone, run=f'cat "{pipe}"; echo done >"{done}"')
    menu.click("A")
    alone.wait_for_runs("A")
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
    write_tool(program, "echo B")
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
