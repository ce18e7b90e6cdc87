"""The menu that a left click opens, used with real keys and the real mouse."""

import subprocess

from virtualdesktop import wait_until


def wait_closed(program):
    wait_until(lambda: not program.windows(), "the menu stays open")


def test_a_menu_that_opens_while_the_mouse_is_held_elsewhere_can_be_closed(program):
    screen = program.desktop.screen
    program.pin("A")
    tray = program.start()
    screen.hold_pointer()
    tray.call("Activate", "(ii)", 100, 100)
    wait_until(program.large_windows, "no menu")
    screen.release_pointer()
    wait_until(lambda: not screen.is_pointer_free(), "the menu never gets the mouse")
    screen.click_ground()
    wait_closed(program)


def test_keys_run_the_rows(program):
    screen = program.desktop.screen
    program.pin("A", "B")
    program.start()
    expected = []
    for keys, names in (([["2"]], "B"), ([["0"], ["Super", "0"]], "AB")):
        program.open_own_menu()
        for combination in keys:
            screen.press(*combination)
        expected += names
        program.wait_for_runs(*expected)
        wait_closed(program)

    program.open_own_menu()
    # Where letters are not Latin the keys' places count.
    subprocess.run(["setxkbmap", "ru"], env=program.desktop.environment, check=True)
    screen.press("Super", "Q")
    subprocess.run(["setxkbmap", "us"], env=program.desktop.environment, check=True)
    wait_until(lambda: program.process.poll() is not None, "Super+Q does not quit")
    assert program.process.returncode == 0
