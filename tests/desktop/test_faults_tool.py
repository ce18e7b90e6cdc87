"""The shortcuts tool fails in every way it can: the program answers, loses nothing and recovers."""

import contextlib
import os

import pytest
from virtualdesktop import Window, probe, wait_until

ACCESSIBILITY = True
PINS = ["A", "B"]
WHOLE = "printf '%s\\n' A B C"
RUNS = 500


class Tool:
    """The tool where the program under test looks for it: in the home folder, where it also
    starts. `gate` is a pipe that holds up whoever reads it until the test writes to it."""

    def __init__(self, program):
        self.path = os.path.join(program.home, "shortcuts")
        gate = os.path.join(program.home, "gate")
        os.mkfifo(gate)
        self._gate = os.open(gate, os.O_RDWR)

    def behave(self, listing=WHOLE, run="", mode=0o700):
        with open(f"{self.path}.new", "w", encoding="utf-8") as file:
            file.write('#!/bin/sh\nif [ "$1" = list ]; then\n'
                       f'{listing}\nelse\necho "$2" >>ran\n{run}\nfi\n')
        os.chmod(f"{self.path}.new", mode)
        # A program that runs cannot be written to.
        os.rename(f"{self.path}.new", self.path)

    def vanish(self):
        os.remove(self.path)

    def lose_permission(self):
        self.behave(mode=0o600)

    def let_pass(self, text):
        os.write(self._gate, text.encode())

    def close(self):
        os.close(self._gate)


@pytest.fixture
def tool(program):
    program.write_config({"onboarded": True, "permissionsShown": True, "iconSymbol": "heart.fill",
                          "pinned": PINS})
    tool = Tool(program)
    tool.behave()
    yield tool
    tool.close()


def start(program):
    menu = program.start().menu
    probe.wait_for_hotkey(program)
    return menu


def start_and_run(program):
    menu = start(program)
    probe.runs(program, menu, "B")
    wait_until(program.desktop.notifications.shown, "the run is not reported")
    program.desktop.notifications.clear()
    return menu


def stored(program):
    with open(program.config_path, "rb") as file:
        return file.read()


def names_in_settings(program):
    """What the open settings show as pinned and the first of what they offer."""
    settings = Window(program, "Quillbar Settings")
    elements = settings.elements()
    settings.screen.press("Escape")
    settings.wait_closed()
    pinned = [row.name for row in elements if row.role == "list item"]
    offered = [box.name for box in elements if box.role == "check box"
               and not box.name.startswith(("Start ", "Login "))]
    return pinned, offered[:1]


# What the settings show meanwhile. Without a whole answer, the pins are what there is.
LISTINGS = [
    ("missing", Tool.vanish, (PINS, [])),
    ("not executable", Tool.lose_permission, (PINS, [])),
    ("ended by a signal", "echo A; echo X; kill -9 $$", (PINS, [])),
    ("no UTF-8", "printf 'A\\n\\377\\n'", ([], [])),
    ("a grandchild keeps the pipe", f"{WHOLE}; cat gate &", (PINS, ["C"])),
    ("endless", "cat /dev/zero", (PINS, [])),
    ("very long", "printf '%s\\n' A B; seq -f 'Name %06g' 100000", (PINS, ["Name 000001"])),
]


RUN_FAULTS = [
    ("missing", Tool.vanish, False),
    ("not executable", Tool.lose_permission, False),
    ("ended by a signal", "kill -9 $$", False),
    ("1 GB of output", "head -c 1G /dev/zero; head -c 1G /dev/zero >&2", True),
    ("a grandchild keeps the pipe", "cat gate & cat gate >&2 &", True),
]


def break_tool(tool, fault, command):
    if callable(fault):
        fault(tool)
    else:
        tool.behave(**{command: fault})


@contextlib.contextmanager
def leaving_nothing(program):
    """What goes on in here changes no setting, and no child or descriptor stays of it."""
    settings, descriptors = stored(program), probe.descriptors(program)
    yield
    wait_until(lambda: not program.children(), "a child stays")
    wait_until(lambda: probe.descriptors(program) == descriptors,
               lambda: f"open before {descriptors}, after {probe.descriptors(program)}")
    assert stored(program) == settings


def wait_asked(program):
    wait_until(program.children, "the tool is not asked")


def open_settings(program, menu):
    menu.click("Settings…")
    return names_in_settings(program)


def test_listings_that_go_wrong_cost_nothing(program, tool):
    menu = start(program)
    assert open_settings(program, menu) == (PINS, ["C"])
    with leaving_nothing(program):
        for name, fault, expected in LISTINGS:
            break_tool(tool, fault, "listing")
            assert open_settings(program, menu) == expected, name
        tool.behave()
        assert open_settings(program, menu) == (PINS, ["C"])


def test_runs_that_go_wrong_are_told(program, tool):
    menu = start_and_run(program)
    notifications = program.desktop.notifications
    with leaving_nothing(program):
        for name, fault, succeeds in RUN_FAULTS:
            break_tool(tool, fault, "run")
            menu.click("A")
            shown = wait_until(notifications.shown, f"{name}: not reported")
            assert ("Launched" in shown[0]["body"]) == succeeds, name
            notifications.clear()
        tool.behave()
        probe.everything_answers(program, menu, "B")


def test_hundreds_in_flight_each_report_once(program, tool):
    menu = start_and_run(program)
    notifications, ran = program.desktop.notifications, len(program.ran())
    tool.behave(run='read line <gate; test "$2" = A')
    rows = [menu.row(name).id for name in PINS]
    with leaving_nothing(program):
        for number in range(RUNS):
            menu.send(rows[number % 2])
        wait_until(lambda: len(program.ran()) == ran + RUNS,
                   lambda: f"{len(program.ran())} started")
        probe.menu_answers(program, menu)
        # Each reads byte by byte, so that a line ends just one of them.
        tool.let_pass("\n" * RUNS)
        wait_until(lambda: len(notifications.shown()) >= RUNS,
                   lambda: f"{len(notifications.shown())} of {RUNS} are reported")
    bodies = [notification["body"] for notification in notifications.shown()]
    assert bodies.count("Launched “A”") == RUNS / 2
    assert len([body for body in bodies if "“B” couldn’t run" in body]) == RUNS / 2


def test_nothing_holds_the_keyboard_while_the_tool_takes_its_time(program, tool):
    screen = program.desktop.screen
    menu = start(program)
    tool.behave("read line <gate; printf '%s\\n' A C")
    # A menu that is just being closed held the keyboard.
    program.open_own_menu()
    for key in ("Up",) * 4 + ("Return",):
        screen.press(key)
    wait_asked(program)
    wait_until(screen.is_keyboard_free, "the menu's keyboard is still held")
    screen.press("Super", "Alt", "T")
    assert screen.is_keyboard_free()
    tool.let_pass("\n")
    palette = Window(program, "Quillbar")
    screen.press("Escape")
    palette.wait_closed()
    assert names_in_settings(program) == (["A"], ["C"])
    probe.menu_answers(program, menu)
