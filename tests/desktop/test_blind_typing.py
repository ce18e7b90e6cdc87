"""Letters typed right after the palette's hotkey, before there is a palette to see."""

import contextlib

import pytest
import Xlib.display
from virtualdesktop import wait_until
from virtualdesktop.screen import KEY
from Xlib import X
from Xlib.ext import xtest

HOTKEY = {"keyCode": 11, "modifiers": 0x1800}
LETTERS = {"q": 24, "u": 30, "e": 26, "r": 27, "y": 29}
WORD = "query"
# Each matches, and comes before the word itself, when its letter is lost.
DECOYS = [WORD[:place] + WORD[place + 1:] for place in range(len(WORD))]


class Typist:
    """A person at the keyboard whose other program has the focus."""

    def __init__(self, name):
        self._display = Xlib.display.Display(name)
        screen = self._display.screen()
        self.window = screen.root.create_window(
            40, 40, 300, 200, 0, screen.root_depth, event_mask=X.KeyPressMask)
        self.window.map()
        self._display.sync()

    def take_focus(self):
        def has_focus():
            attributes = self.window.get_attributes()
            if attributes.map_state != X.IsViewable:
                return False
            self.window.set_input_focus(X.RevertToParent, X.CurrentTime)
            return self._display.get_input_focus().focus == self.window

        wait_until(has_focus, "the old window never gets the focus")

    def keys_in_old_window(self):
        self._display.sync()
        events = [self._display.next_event() for _ in range(self._display.pending_events())]
        return [event.detail for event in events if event.type == X.KeyPress]

    def key(self, code, is_press, after=0):
        # The server itself waits the milliseconds.
        kind = X.KeyPress if is_press else X.KeyRelease
        xtest.fake_input(self._display, kind, code, time=after)

    def tap(self, code, after=0):
        self.key(code, True, after)
        self.key(code, False)

    def done(self):
        self._display.sync()

    def close(self):
        self._display.close()


@pytest.fixture
def typist(desktop):
    with contextlib.closing(Typist(desktop.environment["DISPLAY"])) as person:
        yield person


@pytest.fixture
def palette(program, typist):
    program.pin(*DECOYS, WORD, "Other", menuHotkey=HOTKEY)
    program.start()
    wait_until(lambda: program.desktop.screen.is_grabbed("B", X.ControlMask | X.Mod1Mask),
               "the palette's hotkey is not registered")
    return program


def begin(palette, typist):
    """The old window has the keyboard, and nothing was typed or run so far."""
    wait_until(lambda: not palette.windows(), "the palette stays open")
    typist.take_focus()
    typist.keys_in_old_window()
    palette.forget_runs()


def press_hotkey(typist):
    for name in ("Control", "Alt", "B"):
        typist.key(KEY[name], True)
    for name in ("B", "Alt", "Control"):
        typist.key(KEY[name], False)


def check_only_word_ran(palette, typist):
    typist.tap(KEY["Return"], 15)
    typist.done()
    palette.wait_for_runs(WORD)
    letters = set(LETTERS.values()) | {KEY["Return"]}
    assert not letters.intersection(typist.keys_in_old_window())
    assert not palette.windows()


def test_no_letter_is_lost(palette, typist):
    # The first is the one that makes the palette.
    for after in (0, 10, 20, 30, 0):
        begin(palette, typist)
        press_hotkey(typist)
        for letter in WORD:
            typist.tap(LETTERS[letter], after)
            after = 15
        check_only_word_ran(palette, typist)


def test_letters_count_while_the_hotkey_is_down(palette, typist):
    # The second time shows that the hotkey works again after letters rolled over it.
    for _ in range(2):
        begin(palette, typist)
        for name in ("Control", "Alt", "B"):
            typist.key(KEY[name], True)
        typist.tap(LETTERS["q"])
        for name, letter in (("B", "u"), ("Alt", "e"), ("Control", "r")):
            typist.key(KEY[name], False)
            typist.tap(LETTERS[letter], 15)
        typist.tap(LETTERS["y"], 15)
        check_only_word_ran(palette, typist)


def test_arrows_return_and_escape_count_too(palette, typist):
    screen = palette.desktop.screen
    begin(palette, typist)
    screen.press("Control", "Alt", "B")
    for key in ("Down", "Down", "Return"):
        screen.press(key)
    palette.wait_for_runs(DECOYS[2])
    wait_until(lambda: not palette.windows(), "the palette stays open")
    assert not {KEY["Down"], KEY["Return"]}.intersection(typist.keys_in_old_window())

    begin(palette, typist)
    screen.press("Control", "Alt", "B")
    screen.press("Escape")
    wait_until(lambda: not palette.windows(), "Escape does not close the palette")
    assert KEY["Escape"] not in typist.keys_in_old_window()
