"""Another program on the display: a window of its own, and keys that it has to itself."""

import Xlib.display
from Xlib import X

from .waiting import wait_until


class Client:
    """For a `with` block."""

    def __init__(self, desktop):
        self.display = Xlib.display.Display(desktop.environment["DISPLAY"])
        self._screen, self._root = desktop.screen, self.display.screen().root
        self._window = None

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.display.close()

    def grab(self, key, modifiers):
        self._root.grab_key(key, modifiers, False, X.GrabModeAsync, X.GrabModeAsync)
        self.display.sync()

    def take_focus(self):
        """Shows its window, and gives it the keyboard by a click."""
        if not self._window:
            self._window = self._root.create_window(
                20, 300, 300, 200, 0, self.display.screen().root_depth, event_mask=X.KeyPressMask)
            self._window.set_wm_class("other", "Other")
            self._window.map()
            self.display.sync()
        shown = wait_until(lambda: self._screen.windows("other"), "the other window does not show")
        self._screen.click_middle(shown[0][1:])
        wait_until(lambda: self._screen.focused_window() == self._window.id,
                   "the other window does not get the keyboard")

    def keys(self):
        """The codes of the keys that its window was given since the last call."""
        self.display.sync()
        events = [self.display.next_event() for _ in range(self.display.pending_events())]
        return [event.detail for event in events if event.type == X.KeyPress]
