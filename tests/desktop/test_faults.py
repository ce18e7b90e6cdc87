"""What fails around the program: it goes on and answers, or ends in order, and nothing is lost."""

import contextlib
import os
import re

import pytest
from gi.repository import GLib
from virtualdesktop import Program, VirtualDesktop, Window, stopped, wait_until
from virtualdesktop.bus import LONGEST_MESSAGE
from virtualdesktop.tray import ExportedMenu
from Xlib import X

ACCESSIBILITY = True
NAME = "com.quillbar.Quillbar"
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
    program.wait_for_hotkey()
    return tray


def descriptors(program):
    """The kinds of the open descriptors, files by their path. Those that the toolkit's worker
    threads have, and lose when they were idle for long, are left out."""
    folder = f"/proc/{program.process.pid}/fd"
    targets = [os.readlink(os.path.join(folder, name)) for name in os.listdir(folder)]
    return sorted(target.split(":[")[0] for target in targets
                  if target != "anon_inode:[eventfd]")


def by_menu(program, menu):
    """The exported menu is read, opens a window, and runs the shortcut once more."""
    menu.click("About Quillbar")
    Window(program, "About Quillbar").dismiss()
    before = program.ran()
    menu.click("A")
    program.wait_for_runs(*before, "A")


def by_palette(program, _menu=None):
    """The palette comes by its hotkey, finds the shortcut and runs it once more."""
    before = program.ran()
    palette = program.open_palette()
    program.desktop.screen.type("A")
    program.desktop.screen.press("Return")
    palette.wait_closed()
    program.wait_for_runs(*before, "A")


def by_icon(program, _menu):
    program.open_own_menu()
    program.desktop.screen.press("Escape")
    wait_until(lambda: not program.large_windows(), "the menu stays open")


EVERY_WAY = [by_menu, by_palette, by_icon]


# Faults that pass.

def fault(begin, end):
    """What begins and ends it on the desktop."""
    @contextlib.contextmanager
    def for_a_block(program):
        begin(program.desktop)
        yield
        end(program.desktop)

    return for_a_block


def throw_off(desktop):
    """The bus ends the connection of a program whose answer is longer than it takes. The toolkit's
    error repeats the path."""
    bus, before = desktop.bus, desktop.bus.owner(NAME)
    with pytest.raises(GLib.Error):
        bus.call(before, "/" + "x" * (LONGEST_MESSAGE - 95), "a.b", "c")
    wait_until(lambda: bus.owner(NAME) not in (None, before), "it does not join the bus again")


@pytest.mark.parametrize("failing, ways", [
    (fault(lambda on: on.notifications.stop(), lambda on: on.notifications.start()), EVERY_WAY),
    (fault(lambda on: on.notifications.hang(), lambda on: on.notifications.go_on()), EVERY_WAY),
    (fault(lambda on: on.panel.kill(), lambda on: on.panel.start()), [by_menu, by_palette]),
    (lambda program: stopped(program.desktop.bus_daemon), [by_palette]),
    (fault(throw_off, lambda on: None), []),
    (lambda program: stopped(program.process), []),
], ids=["no notifications", "hung notifications", "no panel", "hung bus", "off the bus", "stopped"])
def test_it_answers_meanwhile_and_afterwards(program, failing, ways):
    start(program)
    menu = ExportedMenu(program.desktop.bus, NAME, "/MenuBar")
    wait_until(program.desktop.panel.shows_icon, "the icon never shows")
    before = descriptors(program)
    with failing(program):
        for way in ways:
            way(program, menu)
    program.desktop.notifications.clear()
    for way in EVERY_WAY:
        way(program, menu)
    wait_until(program.desktop.notifications.shown, "a run is not reported")
    wait_until(lambda: not program.children(), "a child stays")
    wait_until(lambda: descriptors(program) == before,
               lambda: f"open before {before}, after {descriptors(program)}")


def test_what_cannot_be_saved_is_saved_at_the_end(program):
    menu = start(program).menu
    folder = os.path.dirname(program.config_path)
    os.rename(folder, f"{folder}.away")
    # A file in the folder's place stops even root.
    with open(folder, "w", encoding="ascii"):
        pass
    settings = program.open_settings()
    settings.click("check box", "Yak")
    settings.element("check box", "Login for Yak")
    settings.dismiss()
    by_menu(program, menu)
    assert "Yak" in menu.titles()
    os.remove(folder)
    os.rename(f"{folder}.away", folder)
    assert program.read_config()["pinned"] == ["A"]
    assert program.stop() == 0
    assert program.read_config()["pinned"] == ["A", "Yak"]


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
    wait_until(screen.is_keyboard_free, "the keyboard is held meanwhile")
    with open(gate, "w", encoding="ascii") as file:
        file.write("\n")
    Window(program, "Quillbar").dismiss()
    Window(program, "Quillbar Settings")


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
    by_palette(alone)
    assert alone.read_config()["pinned"] == ["A"]
    settings.dismiss()
    assert alone.stop() == 0
    assert not alone.desktop.runtime_files()


def test_a_start_without_a_bus_is_a_start(alone):
    # Its status area takes icons without a bus too, by a window called like the palette's.
    alone.desktop.panel.kill()
    write_tool(alone)
    alone.pin("A")
    alone.launch(DBUS_SESSION_BUS_ADDRESS="unix:path=/nowhere/bus")
    alone.wait_for_hotkey()
    by_palette(alone)


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


def record(program):
    program.open_settings().click("push button", "Quick open hotkey")
    wait_until(lambda: not program.desktop.screen.is_keyboard_free(), "nothing is recorded")


def list_slowly(program):
    write_tool(program, f"sleep 1; {WHOLE}")
    program.tray().menu.click("Settings…")
    wait_until(program.children, "the tool is not asked")


@pytest.mark.parametrize("bring_about", [
    ask_about_gone_pins, record, list_slowly, Program.open_own_menu])
def test_it_ends_whatever_is_open_and_lets_go_of_everything(program, bring_about):
    screen = program.desktop.screen
    start(program, "B")
    before = program.read_config()
    bring_about(program)
    assert program.stop() == 0
    wait_until(screen.is_keyboard_free, "the keyboard is still held")
    assert screen.is_pointer_free()
    assert not screen.is_grabbed("T", X.Mod1Mask | X.Mod4Mask)
    assert not program.desktop.runtime_files()
    assert program.read_config() == before


def test_it_ends_in_order_from_the_moment_it_has_its_name(program):
    """Until then there is nothing to put in order, and the signal may end it at once."""
    start(program)
    assert program.stop() == 0
    before = program.read_config()
    program.launch()
    wait_until(lambda: program.desktop.bus.owner(NAME), "the program does not take its name")
    assert program.stop() == 0
    assert program.read_config() == before
    assert not program.desktop.runtime_files()
