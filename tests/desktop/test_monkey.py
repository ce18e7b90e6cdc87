"""A short run of the seeded monkey; `script/monkey` makes long ones."""

import os

from monkey import Monkey
from monkey.resources import ALLOWANCE

ACCESSIBILITY = True
SEED = 20
STEPS = 60


def test_random_use_breaks_nothing(desktop, request):
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
    _, *used, last = monkey.samples
    for name, allowed in ALLOWANCE.items():
        # So short a run is all warm-up: what is drawn and cached still grows.
        if name != "own memory":
            most = max(sample[name] for sample in used) + allowed
            assert last[name] <= most, (name, monkey.samples)
