"""The desktop's portal: whether it prefers dark colours, and hotkeys."""

import json
import subprocess
import sys

from .notifications import SERVICES
from .waiting import wait_until

_NAME = "org.freedesktop.portal.Desktop"


class Portal:
    """A portal for a `with` block."""

    def __init__(self, desktop, scheme="light"):
        self._desktop, self._scheme = desktop, scheme

    def __enter__(self):
        self._process = self._desktop.start(
            [sys.executable, SERVICES, "portal", self._scheme], name="portal",
            stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        wait_until(lambda: self._desktop.bus.owner(_NAME), "the portal did not start")
        return self

    def __exit__(self, *_):
        self._process.stdin.close()
        self._desktop.processes.end(self._process)
        wait_until(lambda: not self._desktop.bus.owner(_NAME), "the portal stayed")

    def change(self, line):
        """The person chooses "dark" or "light"."""
        self._process.stdin.write(f"{line}\n".encode())
        self._process.stdin.flush()

    def press(self, description):
        """The person presses the hotkey that is for that."""
        self.change(f"press {description}")

    def next_question(self):
        """The next set of hotkeys that a program asks for: triggers by what they are for."""
        return json.loads(self._process.stdout.readline())
