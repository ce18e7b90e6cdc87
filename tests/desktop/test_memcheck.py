"""One life of the program under valgrind, from its start through its windows to its end."""

import os

from virtualdesktop import Program, VirtualDesktop, wait_until

SUPPRESSIONS = os.path.join(os.path.dirname(__file__), os.pardir, "valgrind.supp")
VALGRIND = ["valgrind", "--quiet", "--leak-check=full", "--show-leak-kinds=definite",
            "--errors-for-leak-kinds=definite", "--error-exitcode=99", "--num-callers=40",
            f"--suppressions={os.path.abspath(SUPPRESSIONS)}"]


def test_a_whole_life_is_clean():
    with VirtualDesktop() as desktop:
        log = os.path.join(desktop.folder, "valgrind.log")
        program = Program(desktop, os.environ["QUILLBAR"], os.path.join(desktop.folder, "person"))
        program.wrapper = [*VALGRIND, f"--log-file={log}"]
        program.pin("A", "Broken", groupOf={"A": "Work"},
                    shortcutHotkeys={"A": {"keyCode": 11, "modifiers": 0x1800}})
        program.add_shortcut("Broken", "exit 1")
        live(program)
        status = program.stop()
        with open(log, encoding="utf-8") as file:
            # Lines in dashes tell of valgrind itself, such as system calls that it does not know.
            report = "".join(line for line in file if line.startswith("=="))
    assert (status, report) == (0, ""), f"status {status}:\n{report}"


def live(program):
    menu, screen = program.start().menu, program.desktop.screen
    wait_until(program.desktop.panel.shows_icon, "the icon does not show in the panel")
    # Once only: so slow a program would answer a second click, too.
    program.desktop.panel.click_icon()
    wait_until(program.large_windows, "a click opens no menu")
    wait_until(lambda: not screen.is_pointer_free(), "the menu gets no mouse")
    screen.press("1")
    program.wait_for_runs("A")
    menu.click("Broken")
    program.wait_for_runs("A", "Broken")
    wait_until(lambda: len(program.desktop.notifications.shown()) == 2, "a run is not reported")
    for row, title in (("Type to Jump…", "Quillbar"), ("Settings…", "Quillbar Settings"),
                       ("About Quillbar", "About Quillbar")):
        window = program.open_window(row, title)
        for key in ("A", "BackSpace", "Tab", "Down"):
            screen.press(key)

        def closed():
            # In the settings Down opens a pop-up, which an Escape closes first.
            screen.press("Escape")
            return not window.is_open()

        wait_until(closed, f"{title!r} stays open")
