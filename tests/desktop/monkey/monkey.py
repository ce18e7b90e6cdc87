"""The monkey: which steps it takes, and when it rests."""

import os
import random
import time

from gi.repository import GLib
from virtualdesktop.screen import VANISHED

from .hands import HAND_STEPS
from .mischief import MISCHIEF_STEPS
from .rest import Rest
from .world import World


class Monkey:
    """Uses one program on one desktop; `log` is where every step is written."""

    def __init__(self, desktop, binary, tool, seed, log):
        self._random = random.Random(seed)
        self._log = log
        self._count = 0
        self._steps = [*HAND_STEPS, *MISCHIEF_STEPS]
        self.world = World(desktop, binary, tool, self._random, self.note)
        self._rest = Rest(self.world)
        self.samples = []
        self.note(f"seed {seed}")

    @property
    def count(self):
        return self._count

    def note(self, text):
        self._log.write(f"{self._count:6} {time.strftime('%H:%M:%S')} {text}\n")
        self._log.flush()

    def start(self):
        self.world.start()
        self.rest()

    def play(self, steps):
        """Takes that many steps, then rests."""
        for _ in range(steps):
            self._count += 1
            self.world.end_troubles(self._count)
            self._take_step()
            self.world.check_life()
        self.rest()

    def rest(self):
        """Puts everything right, checks the program, and takes a sample of what it holds."""
        self.note("rest")
        self.world.end_troubles()
        sample = self._rest.check()
        self.samples.append({"steps": self._count, "life": self.world.lives, **sample})
        self.note(str(sample))

    def stop(self):
        """Ends the program; whatever it printed on the way is a failure."""
        status = self.world.program.stop()
        assert status == 0, f"the program ended with {status}"
        self.world.check_silence()

    def _take_step(self):
        step = self._random.choices(self._steps, [weight for weight, _ in self._steps])[0][1]
        self.note(step.__name__)
        try:
            step(self.world)
        except VANISHED as error:
            # What was aimed at is gone.
            self.note(f"  {type(error).__name__}")
        except GLib.Error as error:
            self.note(f"  {error.message}")
            assert not error.matches(GLib.quark_from_string("g-io-error-quark"), 24), \
                f"the program does not answer: {error.message}"
