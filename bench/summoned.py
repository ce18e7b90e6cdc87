"""What is measured of everything that a key summons and that lists what is typed."""

import time

PAUSE = 0.25
_BACKSPACE = 22


class Summoned:
    """Its kinds have summon(), which returns milliseconds, dismiss(), and what_a_key_paints(): the
    least size of a painting, and the line below which it reaches."""

    def __init__(self, title, keyboard):
        self.title, self._keyboard = title, keyboard

    def summons(self, count):
        """The first summon's milliseconds, and those of the later ones."""
        results = []
        for _ in range(count + 1):
            results.append(self.summon())
            time.sleep(PAUSE)
            self.dismiss()
        return results[0], results[1:]

    def key_presses(self, rounds, codes):
        """The first key's milliseconds, for it may have work to do once, and those of the later."""
        self.summon()
        least, top = self.what_a_key_paints()
        results = []
        for _ in range(rounds):
            for code in codes:
                time.sleep(PAUSE)
                results.append(self._keyboard.milliseconds_until_painted(
                    lambda code=code: self._keyboard.tap(code), least, top))
            for _ in codes:
                self._keyboard.tap(_BACKSPACE)
            self._keyboard.display.flush()
        time.sleep(PAUSE)
        self.dismiss()
        return results[0], results[1:]
