"""The desktop's recording notification service, as the tests see it."""

import json
import os
import sys

from .waiting import wait_until

NAME = "org.freedesktop.Notifications"


class Notifications:
    def __init__(self, desktop):
        self._desktop = desktop
        self._path = os.path.join(desktop.folder, "notifications.jsonl")
        self.process = None

    def start(self, *capabilities):
        service = os.path.join(os.path.dirname(__file__), "notification_service.py")
        self.process = self._desktop.start(
            [sys.executable, service, self._path, *capabilities], name="notifications")
        wait_until(lambda: self._desktop.bus.owner(NAME), "the notification service did not start")

    def stop(self):
        self._desktop.processes.end(self.process)
        wait_until(lambda: not self._desktop.bus.owner(NAME), "the notification service stayed")

    def shown(self):
        """Everything shown since the start or the last clear(), oldest first."""
        try:
            with open(self._path, encoding="utf-8") as file:
                return [json.loads(line) for line in file.read().splitlines()]
        except FileNotFoundError:
            return []

    def clear(self):
        if os.path.exists(self._path):
            os.truncate(self._path, 0)
