"""A short run of the seeded monkey; `script/monkey` makes long ones."""

import os
import sys

from monkey.monkey import Monkey
from monkey.resources import growth

ACCESSIBILITY = True
SEED = 20
STEPS = 60


def test_random_use_breaks_nothing(desktop):
    # What is printed is shown when the test fails.
    monkey = Monkey(desktop, os.environ["QUILLBAR"], os.environ["QUILLBAR_TOOL"], SEED, sys.stdout)
    monkey.start()
    for _ in range(3):
        monkey.play(STEPS)
    monkey.stop()
    # So short a run is all warm-up: what is drawn and cached still grows.
    assert set(growth(monkey.samples)) <= {"own memory"}, monkey.samples
