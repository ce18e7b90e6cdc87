"""The desktop's portal, which tells whether it prefers dark colours."""

import os
import subprocess
import sys

from .waiting import wait_until

_NAME = "org.freedesktop.portal.Desktop"


class Portal:
    """A portal for a `with` block."""

    def __init__(self, desktop, scheme):
        self._desktop, self._scheme = desktop, scheme

    def __enter__(self):
        service = os.path.join(os.path.dirname(__file__), "portal_service.py")
        self._process = self._desktop.start(
            [sys.executable, service, self._scheme], name="portal", stdin=subprocess.PIPE)
        wait_until(lambda: self._desktop.bus.owner(_NAME), "the portal did not start")
        return self

    def __exit__(self, *_):
        self._process.stdin.close()
        self._desktop.processes.end(self._process)
        wait_until(lambda: not self._desktop.bus.owner(_NAME), "the portal stayed")

    def change(self, scheme):
        """The person chooses "dark" or "light"."""
        self._process.stdin.write(f"{scheme}\n".encode())
        self._process.stdin.flush()
