"""A short run of the seeded monkey; `script/monkey` makes long ones."""

import os

from monkey.monkey import Monkey
from monkey.resources import ALLOWANCE

ACCESSIBILITY = True
SEED = 20
STEPS = 60


def test_random_use_breaks_nothing(desktop):
    path = os.path.join(desktop.folder, "monkey.log")
    with open(path, "w", encoding="utf-8") as log:
        monkey = Monkey(desktop, os.environ["QUILLBAR"], os.environ["QUILLBAR_TOOL"], SEED, log)
        try:
            monkey.start()
            for _ in range(3):
                monkey.play(STEPS)
            monkey.stop()
        except BaseException:
            with open(path, encoding="utf-8") as steps:
                print(*steps.readlines()[-60:], sep="")
            raise
    *used, last = monkey.samples[1:]
    # So short a run is all warm-up: what is drawn and cached still grows.
    for name in ALLOWANCE.keys() - {"own memory"}:
        assert last[name] <= max(sample[name] for sample in used) + ALLOWANCE[name], monkey.samples
