"""Whether the program answers, on the roads that people take to it. Each call fails when it does
not, and leaves nothing open behind."""

import os
import time

from Xlib import X

from .waiting import wait_until
from .window import Window


def wait_for_hotkey(program):
    """Waits for the end of the start, when the palette's hotkey is there."""
    wait_until(lambda: program.desktop.screen.is_grabbed("T", X.Mod1Mask | X.Mod4Mask),
               "the palette's hotkey is not registered")


def hotkey_answers(program):
    program.open_palette().dismiss()


def menu_answers(program, menu, name):
    """The exported menu is read, opens a window, and runs the shortcut once more."""
    menu.click("About Quillbar")
    Window(program, "About Quillbar").dismiss()
    before = program.ran()
    menu.click(name)
    program.wait_for_runs(*before, name)


def palette_answers(program, name):
    """The palette comes by its hotkey, finds the shortcut and runs it once more."""
    before = program.ran()
    palette = program.open_palette()
    program.desktop.screen.type(name)
    program.desktop.screen.press("Return")
    palette.wait_closed()
    program.wait_for_runs(*before, name)


def icon_answers(program):
    """A click on the icon opens the menu."""
    program.open_own_menu()
    program.desktop.screen.press("Escape")
    wait_until(lambda: not program.large_windows(), "the menu stays open")


def comes_to_rest(program):
    """None of its threads wakes any more."""
    def rests():
        before = _wake_ups(program.process.pid)
        time.sleep(0.3)
        return _wake_ups(program.process.pid) == before

    wait_until(rests, "the program never comes to rest")


def _wake_ups(process_id):
    count = 0
    for thread in os.listdir(f"/proc/{process_id}/task"):
        with open(f"/proc/{process_id}/task/{thread}/status", encoding="ascii") as file:
            count += sum(int(line.split()[1]) for line in file if "ctxt_switches" in line)
    return count


def descriptors(program):
    """The kinds of the open descriptors, files by their path. Those that the toolkit's worker
    threads have, and lose when they were idle for long, are left out."""
    folder = f"/proc/{program.process.pid}/fd"
    targets = [os.readlink(os.path.join(folder, name)) for name in os.listdir(folder)]
    return sorted(target.split(":[")[0] for target in targets
                  if target != "anon_inode:[eventfd]")
