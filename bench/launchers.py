"""Launchers that people know, where they are installed: started anew by each press of a hotkey."""

import os
import shutil
import subprocess
import time

from summoned import PAUSE, Summoned

ESCAPE = 9
# A row of text across the window or the screen.
LEAST_PAINTING = (300, 14)
COMMANDS = {
    "rofi": ["rofi", "-dmenu", "-i"],
    "dmenu": ["dmenu", "-i", "-l", "5"],
}


def installed():
    return {name: command for name, command in COMMANDS.items() if shutil.which(name)}


class Launcher(Summoned):
    def __init__(self, title, command, environment, keyboard, names):
        super().__init__(title, keyboard)
        self._command = command
        self._environment = {**environment, "PATH": os.environ["PATH"]}
        self._names = os.path.join(environment["HOME"], f"{title}-names")
        with open(self._names, "w", encoding="utf-8") as file:
            file.write("\n".join(names) + "\n")
        self._process = None

    def summon(self):
        """Milliseconds from its start, which a hotkey would be, until it is painted."""
        return self._keyboard.milliseconds_until_painted(self._start, LEAST_PAINTING)

    def _start(self):
        with open(self._names, "rb") as names:
            self._process = subprocess.Popen(
                self._command, env=self._environment, stdin=names,
                stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)

    def dismiss(self):
        # A key that comes before it holds the keyboard is lost to it.
        while self._process.poll() is None:
            self._keyboard.tap(ESCAPE)
            self._keyboard.display.flush()
            time.sleep(PAUSE)

    def what_a_key_paints(self):
        return LEAST_PAINTING, 0
