"""The virtual display: windows, pixels, pointer, and physical keys whatever the keyboard layout."""

import contextlib

import Xlib.display
from PIL import Image
from Xlib import X
from Xlib.error import BadAccess, CatchError
from Xlib.ext import xtest

from .waiting import settled

# X key codes are the kernel's plus 8.
KEY = {
    "Escape": 9, "1": 10, "2": 11, "3": 12, "4": 13, "5": 14, "6": 15, "7": 16, "8": 17, "9": 18,
    "0": 19, "BackSpace": 22, "Tab": 23, "Q": 24, "W": 25, "E": 26, "R": 27, "T": 28, "Y": 29,
    "U": 30, "I": 31, "O": 32, "P": 33, "Return": 36, "Control": 37, "A": 38, "S": 39, "D": 40,
    "F": 41, "G": 42, "H": 43, "J": 44, "K": 45, "L": 46, "Shift": 50, "Z": 52, "X": 53, "C": 54,
    "V": 55, "B": 56, "N": 57, "M": 58, "Comma": 59, "Period": 60, "Alt": 64, "Space": 65,
    "NumLock": 77, "Keypad1": 87, "KeypadEnter": 104, "Home": 110, "Up": 111, "PageUp": 112,
    "Left": 113, "Right": 114, "End": 115, "Down": 116, "PageDown": 117, "Delete": 119,
    "Super": 133,
}
_WRITTEN = {" ": "Space", ",": "Comma", ".": "Period"}
_GROUND = 0x5B7083

# What requests about windows end with whose program closes them meanwhile.
VANISHED = (Xlib.error.BadWindow, Xlib.error.BadDrawable, Xlib.error.BadMatch)


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
        return settled(self.picture)

    def windows(self, instance=None, process=None):
        """Shown top-level windows as (id, x, y, width, height), lowest first."""
        shown = []
        for frame in self.root.query_tree().children:
            with contextlib.suppress(*VANISHED):
                # The program's window is within a window manager's frame.
                client = next(self._named(frame), frame)
                if instance and (client.get_wm_class() or [None])[0] != instance:
                    continue
                if process and process not in self._property(client, "_NET_WM_PID"):
                    continue
                if frame.get_attributes().map_state == X.IsViewable:
                    # A window manager may have put it into a frame since the list was read.
                    shown.append((client.id, *self.area(frame.id)))
        return shown

    def _named(self, window):
        """Which of the window and those inside it belong to programs, outermost first."""
        if window.get_wm_class():
            yield window
        for child in window.query_tree().children:
            yield from self._named(child)

    def _property(self, window, name):
        """The values of a property, or nothing."""
        found = window.get_full_property(self.display.intern_atom(name), X.AnyPropertyType)
        return found.value if found else []

    def shown_inside(self, window_id, instance):
        """The id of a shown window of that instance within the other, or None."""
        with contextlib.suppress(*VANISHED):
            for window in self._named(self.display.create_resource_object("window", window_id)):
                is_shown = window.get_attributes().map_state == X.IsViewable
                if is_shown and window.get_wm_class()[0] == instance:
                    return window.id
        return None

    def selection_owner(self, name):
        """The id of the window that owns a selection, or 0."""
        owner = self.display.get_selection_owner(self.display.intern_atom(name))
        return getattr(owner, "id", 0)

    def title(self, window_id):
        """The title; empty for a window that has vanished."""
        window = self.display.create_resource_object("window", window_id)
        with contextlib.suppress(*VANISHED):
            return bytes(self._property(window, "_NET_WM_NAME")).decode()
        return ""

    def has_icon(self, window_id):
        window = self.display.create_resource_object("window", window_id)
        return len(self._property(window, "_NET_WM_ICON")) > 0

    def click(self, x, y, button=1, count=1):
        xtest.fake_input(self.display, X.MotionNotify, x=int(x), y=int(y))
        for _ in range(count):
            xtest.fake_input(self.display, X.ButtonPress, button)
            xtest.fake_input(self.display, X.ButtonRelease, button)
        self.display.sync()

    def click_ground(self):
        """Where no window is: in the lower right corner."""
        size = self.root.get_geometry()
        self.click(size.width - 1, size.height - 1)

    def click_middle(self, area, button=1):
        x, y, width, height = area
        self.click(x + width // 2, y + height // 2, button)

    def drag(self, start, end, steps=12):
        """Moves the pointer from one place to the other with the left button held."""
        self.point(*start)
        self.button(True)
        for step in range(1, steps + 1):
            self.point(*(a + (b - a) * step / steps for a, b in zip(start, end)))
        self.button(False)

    def point(self, x, y):
        xtest.fake_input(self.display, X.MotionNotify, x=int(x), y=int(y))
        self.display.sync()

    def button(self, is_pressed):
        xtest.fake_input(self.display, X.ButtonPress if is_pressed else X.ButtonRelease, 1)
        self.display.sync()

    def press(self, *names):
        """Presses keys in order and releases them in reverse."""
        for kind, keys in ((X.KeyPress, names), (X.KeyRelease, reversed(names))):
            for name in keys:
                xtest.fake_input(self.display, kind, KEY[name])
                self.display.sync()

    def type(self, text):
        """Types letters, digits, blanks, commas and full stops, in the US layout."""
        for character in text:
            key = _WRITTEN.get(character, character.upper())
            self.press(*(["Shift"] if character.isupper() else []), key)

    def is_grabbed(self, name, modifiers):
        """Whether a program has that combination to itself; keeps none out meanwhile."""
        refused = CatchError(BadAccess)
        self.display.grab_server()
        self.root.grab_key(KEY[name], modifiers, False, X.GrabModeAsync, X.GrabModeAsync,
                           onerror=refused)
        self.display.sync()
        if not refused.get_error():
            self.root.ungrab_key(KEY[name], modifiers)
        self.display.ungrab_server()
        self.display.sync()
        return refused.get_error() is not None

    def is_pointer_free(self):
        """Whether no program holds the pointer; keeps none out meanwhile."""
        self.display.grab_server()
        status = self.hold_pointer()
        self.release_pointer()
        self.display.ungrab_server()
        self.display.sync()
        return status == X.GrabSuccess

    def hold_pointer(self):
        """As a program does whose own menu is open."""
        return self.root.grab_pointer(
            False, 0, X.GrabModeAsync, X.GrabModeAsync, X.NONE, X.NONE, X.CurrentTime)

    def release_pointer(self):
        self.display.ungrab_pointer(X.CurrentTime)
        self.display.sync()

    def is_keyboard_free(self):
        """Whether no program holds the keyboard; keeps none out meanwhile."""
        self.display.grab_server()
        status = self.root.grab_keyboard(
            False, X.GrabModeAsync, X.GrabModeAsync, X.CurrentTime)
        self.display.ungrab_keyboard(X.CurrentTime)
        self.display.ungrab_server()
        self.display.sync()
        return status == X.GrabSuccess

    def focused_window(self):
        """The id of the window that has the keyboard, or 0."""
        return getattr(self.display.get_input_focus().focus, "id", 0)

    def window_manager(self):
        """The name of the window manager that runs."""
        check = self._property(self.root, "_NET_SUPPORTING_WM_CHECK")
        return self.title(check[0]) if check else ""

    def area(self, window_id):
        """Where the inside of a window is: (x, y, width, height)."""
        window = self.display.create_resource_object("window", window_id)
        geometry = window.get_geometry()
        place = self.root.translate_coords(window, 0, 0)
        return place.x, place.y, geometry.width, geometry.height
