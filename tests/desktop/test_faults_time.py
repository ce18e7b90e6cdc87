"""The clock jumps and the program is stopped for a while, as around a suspend: everything goes on."""

import glob
import os
import signal
import time

import pytest
from gi.repository import GLib
from virtualdesktop import probe, wait_until

YEAR_FILE = 'date +%Y >"$HOME/year"'


def start(program, *names, **environment):
    program.pin(*names)
    tray = program.start(**environment)
    probe.wait_for_hotkey(program)
    return tray


class Clock:
    """The time of day as the program and its children are told it; waiting takes its real time."""

    def __init__(self, folder):
        self._file = os.path.join(folder, "clock")
        self.set("+0")
        (library,) = glob.glob("/usr/lib/*/faketime/libfaketimeMT.so.1")
        self.environment = {
            "LD_PRELOAD": library, "FAKETIME_TIMESTAMP_FILE": self._file, "FAKETIME_NO_CACHE": "1",
            "FAKETIME_DONT_FAKE_MONOTONIC": "1",
            "ASAN_OPTIONS": os.environ.get("ASAN_OPTIONS", "") + ":verify_asan_link_order=0"}

    def set(self, offset):
        with open(self._file + ".new", "w", encoding="ascii") as file:
            file.write(offset)
        os.rename(self._file + ".new", self._file)


def told_year(program):
    try:
        with open(os.path.join(program.home, "year"), encoding="ascii") as file:
            return int(file.read() or 0)
    except FileNotFoundError:
        return 0


@pytest.mark.parametrize("offset, years", [("-3650d", -10), ("+3650d", 10)])
def test_delayed_work_goes_on_when_the_clock_jumps(program, offset, years):
    clock = Clock(program.home)
    program.add_shortcut("Two", YEAR_FILE)
    menu = start(program, "One", "Two", "Three", **clock.environment).menu
    menu.click("Run All")
    program.wait_for_runs("One")
    clock.set(offset)
    program.wait_for_runs("One", "Two", "Three")
    year = wait_until(lambda: told_year(program), "the year is not told")
    assert abs(year - time.localtime().tm_year - years) <= 1
    probe.everything_answers(program, menu, "One")
    probe.comes_to_rest(program)


def is_stopped(program):
    with open(f"/proc/{program.process.pid}/stat", encoding="ascii") as file:
        return file.read().rpartition(")")[2].split()[0] == "T"


def send_click(program, menu, title):
    """As a panel does, which waits for no answer."""
    row = menu.row(title).id
    return lambda: program.desktop.bus.connection.call(
        *menu.address, "com.canonical.dbusmenu", "Event",
        GLib.Variant("(isvu)", (row, "clicked", GLib.Variant("i", 0), 0)), None, 0, -1, None, None)


def test_what_is_asked_of_a_stopped_program_is_done_afterwards(program):
    menu = start(program, "One", "Two", "Three").menu
    click = send_click(program, menu, "Three")
    menu.click("Run All")
    program.wait_for_runs("One")
    program.process.send_signal(signal.SIGSTOP)
    try:
        wait_until(lambda: is_stopped(program))
        click()
        program.desktop.screen.press("Super", "Alt", "T")
        program.desktop.screen.type("one")
        program.desktop.screen.press("Return")
        # Longer than the delayed work waits.
        time.sleep(1.5)
        assert program.ran() == ["One"]
    finally:
        program.process.send_signal(signal.SIGCONT)
    wait_until(lambda: sorted(program.ran()) == ["One", "One", "Three", "Three", "Two"],
               lambda: f"ran {program.ran()}")
    wait_until(program.desktop.screen.is_keyboard_free, "the keyboard is still held")
    probe.everything_answers(program, menu, "Two")
