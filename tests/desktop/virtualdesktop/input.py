"""Physical keys, whatever the keyboard layout, and what is done with them and a mouse."""

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


class Input:
    """For a screen with `picture()`, `key_down(name)`, `key_up(name)` and `click(x, y, button)`."""

    def settled_picture(self):
        """The whole screen, once two looks at it agree."""
        return settled(self.picture)

    def press(self, *names):
        """Presses keys in order and releases them in reverse."""
        for name in names:
            self.key_down(name)
        for name in reversed(names):
            self.key_up(name)

    def type(self, text):
        """Types letters, digits, blanks, commas and full stops, in the US layout."""
        for character in text:
            key = _WRITTEN.get(character, character.upper())
            self.press(*(["Shift"] if character.isupper() else []), key)

    def click_middle(self, area, button=1):
        x, y, width, height = area
        self.click(x + width // 2, y + height // 2, button)
