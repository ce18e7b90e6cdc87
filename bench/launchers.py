"""Launchers that people know, where they are installed: started anew by each press of a hotkey."""

import os
import shutil
import subprocess
import time

PAUSE = 0.25
ESCAPE = 9
BACKSPACE = 22
# A row of text across the window or the screen.
LEAST_PAINTING = (300, 14)
COMMANDS = {
    "rofi": ["rofi", "-dmenu", "-i"],
    "dmenu": ["dmenu", "-i", "-l", "5"],
}


def installed():
    return {name: command for name, command in COMMANDS.items() if shutil.which(name)}


class Launcher:
    def __init__(self, title, command, environment, keyboard, names):
        self.title, self._command, self._keyboard = title, command, keyboard
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

    def summons(self, count):
        results = []
        for _ in range(count + 1):
            results.append(self.summon())
            time.sleep(PAUSE)
            self.dismiss()
        return results[0], results[1:]

    def key_presses(self, rounds, codes):
        self.summon()
        results = []
        for _ in range(rounds):
            for code in codes:
                time.sleep(PAUSE)
                results.append(self._keyboard.milliseconds_until_painted(
                    lambda code=code: self._keyboard.tap(code), LEAST_PAINTING))
            for _ in codes:
                self._keyboard.tap(BACKSPACE)
            self._keyboard.display.flush()
        time.sleep(PAUSE)
        self.dismiss()
        return results[0], results[1:]
