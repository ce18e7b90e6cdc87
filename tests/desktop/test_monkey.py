"""A short run of the seeded monkey; `script/monkey` makes long ones."""

import os
import time

from monkey.rests import Monkey

ACCESSIBILITY = True
SEED = int(os.environ.get("MONKEY_SEED", "20"))
MINUTES = int(os.environ.get("MONKEY_MINUTES", "0"))
STEPS = 60


def test_random_use_breaks_nothing(desktop):
    monkey = Monkey(desktop, os.environ["QUILLBAR"], os.environ["QUILLBAR_TOOL"], SEED)
    monkey.start()
    end = time.monotonic() + 60 * MINUTES
    played = 0
    while played < 3 or time.monotonic() < end:
        monkey.play(STEPS)
        played += 1
    assert monkey.program.stop() == 0
    # So short a run is all warm-up: what is drawn and cached still grows.
    assert monkey.growth() <= (set() if MINUTES else {"own memory"})
