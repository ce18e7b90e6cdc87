"""A tray of the older kind, which embeds the windows of icons."""

import signal

from Xlib.error import BadMatch

from .waiting import wait_until

_SELECTION = "_NET_SYSTEM_TRAY_S0"


class EmbeddingTray:
    """Runs the command, whose window has that instance name, for a `with` block."""

    def __init__(self, desktop, instance, *command):
        self._desktop, self._instance, self._command = desktop, instance, command

    def __enter__(self):
        self._process = self._desktop.start(self._command)
        self._owner = wait_until(lambda: self._desktop.screen.selection_owner(_SELECTION),
                                 f"{self._command[0]} shows no tray")
        return self

    def __exit__(self, *_):
        """Ends the tray as a crash would."""
        self._desktop.processes.end(self._process, signal.SIGKILL)
        wait_until(lambda: self._desktop.screen.selection_owner(_SELECTION) != self._owner,
                   f"{self._command[0]} stays")

    def icon_area(self):
        """Where the program's icon is: (x, y, width, height), or None."""
        screen = self._desktop.screen
        icons = [screen.shown_inside(window[0], "quillbar")
                 for window in screen.windows(instance=self._instance)]
        return next((screen.area(icon) for icon in icons if icon), None)

    def icon(self):
        """The icon's picture, or None."""
        area = self.icon_area()
        try:
            return self._desktop.screen.picture(area) if area else None
        except BadMatch:
            # On its way into the tray a window may be off the screen.
            return None

    def click_icon(self, button=1):
        self._desktop.screen.click_middle(wait_until(self.icon_area, "the tray has no icon"), button)
