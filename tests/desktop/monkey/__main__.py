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
    for name, last in monkey.samples[-1].items():
        print(f"{name:>12} {monkey.samples[0][name]:>8} {last:>8}")
    print(f"{monkey.count} steps; grew: {growth(monkey.samples) or 'nothing'}")
    return 1 if growth(monkey.samples) else 0


if __name__ == "__main__":
    sys.exit(main())
