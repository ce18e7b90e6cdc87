"""Command line: uses the program for some minutes and tells what it held."""

import argparse
import sys
import time

from virtualdesktop import VirtualDesktop

from .monkey import Monkey
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
            while time.monotonic() < end:
                monkey.play(_STEPS)
            monkey.stop()
        except BaseException as failure:
            monkey.note(f"FAILED: {failure!r}")
            desktop.screen.picture().save(f"{options.log}.png")
            raise
        finally:
            _tell(monkey)
    grown = growth(monkey.samples)
    for line in grown:
        print(f"grew: {line}", file=sys.stderr)
    return 1 if grown else 0


def _tell(monkey):
    samples = monkey.samples
    print(f"{monkey.count} steps, {len(samples)} rests")
    shown = [samples[place * (len(samples) - 1) // 4] for place in range(5)] if samples else []
    for name in shown and shown[0]:
        print(f"{name:>12} " + " ".join(f"{sample[name]:>8}" for sample in shown))


if __name__ == "__main__":
    sys.exit(main())
