"""Command line: plays for some minutes and tells what the program held."""

import argparse
import contextlib
import sys
import time

from virtualdesktop import VirtualDesktop

from . import Monkey
from .resources import growth

_STEPS = 150


def main():
    parser = argparse.ArgumentParser(prog="monkey", description=__doc__)
    parser.add_argument("binary", help="a program that drives the tool in its home folder")
    parser.add_argument("tool", help="the tool to put there")
    parser.add_argument("log", help="the file to write every step to")
    parser.add_argument("--seed", type=int, required=True)
    parser.add_argument("--minutes", type=float, required=True)
    options = parser.parse_args()
    with VirtualDesktop(accessibility=True) as desktop, \
            open(options.log, "w", encoding="utf-8") as log:
        monkey = Monkey(desktop, options.binary, options.tool, options.seed, log)
        try:
            monkey.start()
            end = time.monotonic() + options.minutes * 60
            with contextlib.suppress(KeyboardInterrupt):
                while time.monotonic() < end:
                    monkey.play(_STEPS)
            monkey.stop()
        except Exception as failure:
            monkey.note(f"FAILED: {failure!r}")
            desktop.screen.picture().save(f"{options.log}.png")
            print(f"after {monkey.count} steps: {failure!r}", file=sys.stderr)
            _tell(monkey)
            raise
        _tell(monkey)
        return _judge(monkey)


def _tell(monkey):
    samples = monkey.samples
    print(f"{monkey.count} steps, {len(samples)} rests")
    if samples:
        shown = [samples[place * (len(samples) - 1) // 4] for place in range(5)]
        for name in samples[0]:
            print(f"{name:>12} " + " ".join(f"{sample[name]:>8}" for sample in shown))


def _judge(monkey):
    grown = growth(monkey.samples)
    for line in grown:
        print(f"grew: {line}", file=sys.stderr)
    return 1 if grown else 0


if __name__ == "__main__":
    sys.exit(main())
