"""What script/run does where there is no display: one shortcut from the tray menu to its end, then
the palette and the settings window."""

import os
import sys

from .desktop import VirtualDesktop
from .pictures import picture_of_menu, picture_of_window
from .program import Program
from .waiting import wait_until

# The shell tells a script's end to its own trap, whatever ended it.
_SAMPLE = """#!/bin/sh
trap 'echo "$SHORTCUT_NAME: exit status $?" >>"$HOME/outcome"' EXIT
{work}
"""
_SAMPLES = {"Say hello": 'echo "Hello, $(id -un)" >"$HOME/hello.txt"',
            "Tidy downloads": 'mkdir -p "$HOME/Downloads/old"'}


def demonstrate(binary, screenshot):
    """Prints what ran with its exit status; returns the process's own."""
    try:
        with VirtualDesktop() as desktop:
            _demonstrate(desktop, binary, screenshot)
    except (AssertionError, RuntimeError) as failure:
        print(f"script/run: {failure}", file=sys.stderr)
        return 1
    return 0


def _demonstrate(desktop, binary, screenshot):
    program = Program(desktop, binary, os.path.join(desktop.folder, "home"))
    for name, work in _SAMPLES.items():
        program.write_shortcut(name, _SAMPLE.format(work=work))
    program.pin(*_SAMPLES, groupOf={"Tidy downloads": "Files"})
    tray = program.start()
    picture_of_menu(program, screenshot)

    tray.menu.click("Say hello")
    outcome = os.path.join(program.home, "outcome")
    wait_until(lambda: os.path.exists(outcome), "“Say hello” was chosen but did not run")
    shown = wait_until(desktop.notifications.shown, "Quillbar did not report the run")
    with open(outcome, encoding="utf-8") as file:
        print(f"Ran from the tray menu: {file.read().strip()}")
    print(f"Quillbar reported: {shown[0]['summary']}: {shown[0]['body']}")
    print(f"Picture of the open menu: {screenshot}")
    for name, open_window in (("palette", program.open_palette), ("settings", program.open_settings)):
        path = os.path.join(os.path.dirname(screenshot), f"{name}.png")
        picture_of_window(open_window(), path)
        print(f"Picture of the {name}: {path}")
    status = program.stop()
    assert status == 0, f"Quillbar ended with status {status}"
