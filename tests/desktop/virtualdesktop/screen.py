"""The virtual display: windows, pixels, pointer and keys."""

import contextlib

import Xlib.display
from PIL import Image
from Xlib import X, XK
from Xlib.ext import xtest

from .waiting import wait_until

# X key codes are the kernel's plus 8: physical keys, whatever the keyboard layout.
KEY = {
    "Escape": 9, "1": 10, "2": 11, "3": 12, "4": 13, "5": 14, "6": 15, "7": 16, "8": 17, "9": 18,
    "0": 19, "Q": 24, "R": 27, "T": 28, "Y": 29, "U": 30, "Return": 36, "Control": 37, "B": 56,
    "Shift": 50, "Comma": 59, "Alt": 64, "CapsLock": 66, "NumLock": 77, "Keypad1": 87,
    "Super": 133, "Down": 116, "Tab": 23, "F8": 74, "F9": 75,
}

_GROUND = 0x5B7083


class Screen:
    def __init__(self, name):
        self.display = Xlib.display.Display(name)
        self.root = self.display.screen().root
        self.root.change_attributes(background_pixel=_GROUND)
        self.root.clear_area()
        self.display.sync()

    def close(self):
        self.display.close()

    def picture(self, area=None):
        """The pixels of the whole screen or of (x, y, width, height)."""
        size = self.root.get_geometry()
        x, y, width, height = area or (0, 0, size.width, size.height)
        width, height = min(width, size.width - x), min(height, size.height - y)
        raw = self.root.get_image(x, y, width, height, X.ZPixmap, 0xFFFFFFFF)
        return Image.frombytes("RGB", (width, height), raw.data, "raw", "BGRX")

    def settled_picture(self):
        """The whole screen, once two looks at it agree."""
        last = [self.picture()]

        def settled():
            last.append(self.picture())
            return last[-1].tobytes() == last[-2].tobytes()

        wait_until(settled, "the screen never comes to rest")
        return last[-1]

    def windows(self, instance=None, process=None):
        """Shown top-level windows as (id, x, y, width, height), lowest first."""
        shown = []
        for frame in self.root.query_tree().children:
            with _ignoring_vanished_windows():
                attributes = frame.get_attributes()
                if attributes.map_state != X.IsViewable:
                    continue
                client = self._client(frame)
                if instance and (client.get_wm_class() or [None])[0] != instance:
                    continue
                if process and self._process(client) != process:
                    continue
                geometry = frame.get_geometry()
                shown.append((client.id, geometry.x, geometry.y, geometry.width, geometry.height))
        return shown

    def _client(self, frame):
        """The program's window within a window manager's frame."""
        if frame.get_wm_class():
            return frame
        for child in frame.query_tree().children:
            found = self._client(child)
            if found.get_wm_class():
                return found
        return frame

    def _process(self, window):
        value = window.get_full_property(self.display.intern_atom("_NET_WM_PID"), X.AnyPropertyType)
        return value.value[0] if value else None

    def title(self, window_id):
        window = self.display.create_resource_object("window", window_id)
        value = window.get_full_property(self.display.intern_atom("_NET_WM_NAME"),
                                         X.AnyPropertyType)
        return value.value.decode() if value else ""

    def click(self, x, y, button=1):
        xtest.fake_input(self.display, X.MotionNotify, x=int(x), y=int(y))
        xtest.fake_input(self.display, X.ButtonPress, button)
        xtest.fake_input(self.display, X.ButtonRelease, button)
        self.display.sync()

    def press(self, *names):
        """Presses physical keys in order and releases them in reverse."""
        for name in names:
            self.key_down(name)
        for name in reversed(names):
            self.key_up(name)

    def key_down(self, name):
        xtest.fake_input(self.display, X.KeyPress, KEY[name])
        self.display.sync()

    def key_up(self, name):
        xtest.fake_input(self.display, X.KeyRelease, KEY[name])
        self.display.sync()

    @contextlib.contextmanager
    def lock_on(self, name):
        """CapsLock or NumLock switched on for the block."""
        self.press(name)
        try:
            yield
        finally:
            self.press(name)

    def keysym_of(self, name):
        """What the key types in the present layout, without modifiers."""
        return XK.keysym_to_string(self.display.keycode_to_keysym(KEY[name], 0))


@contextlib.contextmanager
def _ignoring_vanished_windows():
    try:
        yield
    except (Xlib.error.BadWindow, Xlib.error.BadDrawable):
        pass
