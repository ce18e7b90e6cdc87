"""One life of the program under valgrind, from its start through its windows to its end."""

import os
import shlex

from virtualdesktop import Program, VirtualDesktop, wait_until
from virtualdesktop.screen import KEY

_VALGRIND = ["valgrind", "--quiet", "--leak-check=full", "--show-leak-kinds=definite",
             "--errors-for-leak-kinds=definite", "--error-exitcode=99", "--num-callers=40"]
_SUPPRESSIONS = os.path.join(os.path.dirname(__file__), os.pardir, "valgrind.supp")


def _wrapper(folder, binary):
    """A program that is the binary under valgrind; valgrind keeps the process's id."""
    path = os.path.join(folder, "checked")
    command = [*_VALGRIND, f"--suppressions={os.path.abspath(_SUPPRESSIONS)}",
               f"--log-file={folder}/valgrind.log", os.path.abspath(binary)]
    with open(path, "w", encoding="utf-8") as file:
        file.write(f"#!/bin/sh\nexec {shlex.join(command)}\n")
    os.chmod(path, 0o700)
    return path


def test_a_whole_life_is_clean():
    with VirtualDesktop() as desktop:
        program = Program(desktop, _wrapper(desktop.folder, os.environ["QUILLBAR"]),
                          os.path.join(desktop.folder, "person"))
        program.pin("A", "Broken", groupOf={"A": "Work"},
                    shortcutHotkeys={"A": {"keyCode": 11, "modifiers": 0x1800}})
        program.add_shortcut("Broken", "exit 1")
        _live(program)
        status = program.stop()
        with open(os.path.join(desktop.folder, "valgrind.log"), encoding="utf-8") as log:
            # Lines in dashes tell of valgrind itself, such as system calls that it does not know.
            report = "".join(line for line in log if line.startswith("=="))
    assert (status, report) == (0, ""), f"status {status}:\n{report}"


def _live(program):
    menu = program.start().menu
    wait_until(program.desktop.panel.shows_icon, "the icon does not show in the panel")
    # Once only: so slow a program would answer a second click, too.
    program.desktop.panel.click_icon()
    wait_until(program.large_windows, "a click opens no menu")
    wait_until(lambda: not program.desktop.screen.is_pointer_free(), "the menu gets no mouse")
    program.desktop.screen.press("1")
    program.wait_for_runs("A")
    menu.click("Broken")
    program.wait_for_runs("A", "Broken")
    wait_until(lambda: len(program.desktop.notifications.shown()) == 2, "a run is not reported")
    for row, title in (("Type to Jump…", "Quillbar"), ("Settings…", "Quillbar Settings"),
                       ("About Quillbar", "About Quillbar")):
        window = program.open_window(row, title)
        # The first Escape closes the pop-up that Down opens in the settings.
        for key in ("A", "BackSpace", "Tab", "Down", "Escape", "Escape"):
            program.desktop.screen.tap(KEY[key])
        window.wait_closed()
