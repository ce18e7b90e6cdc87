"""The desktop's recording notification service, as the tests see it."""

import json
import os
import sys

from .waiting import wait_until

SERVICES = os.path.join(os.path.dirname(__file__), "services.py")
_NAME = "org.freedesktop.Notifications"


class Notifications:
    def __init__(self, desktop):
        self._desktop = desktop
        self._path = os.path.join(desktop.folder, "notifications.jsonl")
        self.clear()

    def start(self, *capabilities):
        self.process = self._desktop.start(
            [sys.executable, SERVICES, "notifications", self._path, *capabilities],
            name="notifications")
        wait_until(lambda: self._desktop.bus.owner(_NAME), "the notification service did not start")

    def stop(self):
        self._desktop.processes.end(self.process)
        wait_until(lambda: not self._desktop.bus.owner(_NAME), "the notification service stayed")

    def shown(self):
        """Everything shown since the start or the last clear(), oldest first."""
        with open(self._path, encoding="utf-8") as file:
            return [json.loads(line) for line in file.read().splitlines()]

    def clear(self):
        with open(self._path, "w", encoding="utf-8"):
            pass
