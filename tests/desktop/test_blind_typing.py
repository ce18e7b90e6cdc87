"""Letters typed right after the palette's hotkey, before there is a palette to see."""

import pytest
from virtualdesktop import wait_until
from virtualdesktop.client import Client
from virtualdesktop.screen import KEY
from Xlib import X
from Xlib.ext import xtest

HOTKEY = {"keyCode": 11, "modifiers": 0x1800}
WORD = "query"
# Each matches, and comes before the word itself, when its letter is lost.
DECOYS = [WORD[:place] + WORD[place + 1:] for place in range(len(WORD))]


class Typist(Client):
    """A person at the keyboard whose other program has the focus."""

    def key(self, name, is_press, after=0):
        # The server itself waits the milliseconds.
        kind = X.KeyPress if is_press else X.KeyRelease
        key = KEY[name.upper() if len(name) == 1 else name]
        xtest.fake_input(self.display, kind, key, time=after)

    def tap(self, name, after=0):
        self.key(name, True, after)
        self.key(name, False)


@pytest.fixture
def typist(desktop):
    with Typist(desktop) as person:
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
    typist.keys()
    palette.forget_runs()


def check_only_word_ran(palette, typist):
    typist.tap("Return", 15)
    typist.display.sync()
    palette.wait_for_runs(WORD)
    assert not {KEY[name] for name in ("Return", *WORD.upper())}.intersection(typist.keys())
    assert not palette.windows()


def test_no_letter_is_lost(palette, typist):
    # The first is the one that makes the palette.
    for after in (0, 10, 20, 30, 0):
        begin(palette, typist)
        for name in ("Control", "Alt", "B"):
            typist.key(name, True)
        for name in ("B", "Alt", "Control"):
            typist.key(name, False)
        for letter in WORD:
            typist.tap(letter, after)
            after = 15
        check_only_word_ran(palette, typist)


def test_letters_count_while_the_hotkey_is_down(palette, typist):
    # The second time shows that the hotkey works again after letters rolled over it.
    for _ in range(2):
        begin(palette, typist)
        for name in ("Control", "Alt", "B"):
            typist.key(name, True)
        typist.tap("q")
        for name, letter in (("B", "u"), ("Alt", "e"), ("Control", "r")):
            typist.key(name, False)
            typist.tap(letter, 15)
        typist.tap("y", 15)
        check_only_word_ran(palette, typist)
