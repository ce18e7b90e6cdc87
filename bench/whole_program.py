"""Whole-program figures of Quillbar beside the least that a Qt tray program can be.

Runs the two by turns on a private virtual desktop and prints medians, extremes and ratios.
"""

import argparse
import os
import pathlib
import signal
import statistics
import subprocess
import sys
import time

sys.path.insert(0, str(pathlib.Path(__file__).parents[1] / "tests" / "desktop"))

from virtualdesktop import Program, VirtualDesktop  # noqa: E402
from virtualdesktop.waiting import wait_until  # noqa: E402

from watcher import Watcher  # noqa: E402

PINS = [f"Shortcut {number}" for number in range(1, 11)]
SETTLING_SECONDS = 2


class Contender:
    """A tray program that can be started again and again."""

    def __init__(self, binary, environment):
        self._binary = str(binary)
        self._environment = environment
        self.process_id = None

    def start(self, watcher):
        """Returns the registered item and the milliseconds from spawn to registration."""
        before = time.monotonic_ns()
        self.process_id = os.posix_spawn(self._binary, [self._binary], self._environment)
        item = watcher.next_item()
        return item, (item.registered_at - before) / 1e6

    def stop(self):
        if self.process_id is None:
            return
        os.kill(self.process_id, signal.SIGTERM)
        os.waitpid(self.process_id, 0)
        self.process_id = None

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.stop()


MEMORY_FIGURES = {
    "Proportional memory when idle": ("Pss",),
    "Private memory when idle": ("Private_Clean", "Private_Dirty"),
    "Resident memory when idle (does not depend on other programs)": ("Rss",),
}


def memory(process_id):
    """The figures above, in MB."""
    values = {}
    with open(f"/proc/{process_id}/smaps_rollup", encoding="ascii") as file:
        for line in file:
            key, _, value = line.partition(":")
            if value.endswith("kB\n"):
                values[key] = int(value.split()[0]) / 1024
    return [sum(values[key] for key in keys) for keys in MEMORY_FIGURES.values()]


def other_users_of_qt():
    """How many processes share the pages of Qt with the measured one."""
    users = 0
    for maps in pathlib.Path("/proc").glob("[0-9]*/maps"):
        try:
            users += "libQt6Core" in maps.read_text(encoding="utf-8", errors="replace")
        except OSError:
            # It ended meanwhile.
            continue
    return users


def context_switches(process_id):
    """How often each thread of the process went to sleep or was interrupted so far."""
    total = {}
    for status in pathlib.Path(f"/proc/{process_id}/task").glob("*/status"):
        total[status.parent.name] = sum(
            int(line.split()[1]) for line in status.read_text(encoding="ascii").splitlines()
            if "ctxt_switches" in line)
    return total


def wakeups(before, after):
    """A thread that has ended woke up at least for that."""
    lasting = sum(count - before.get(thread, 0) for thread, count in after.items())
    return lasting + len(before.keys() - after.keys())


def spread(values, unit):
    return (f"{statistics.median(values):8.2f} {unit} "
            f"({min(values):.2f} to {max(values):.2f}, {len(values)} runs)")


def report(title, ours, floor, unit):
    ratio = statistics.median(ours) / statistics.median(floor)
    print(f"{title}\n  Quillbar {spread(ours, unit)}\n  floor    {spread(floor, unit)}\n"
          f"  ratio    {ratio:8.2f}", flush=True)


def measure_starts(contenders, watcher, rounds):
    registered, answered = [[], []], [[], []]
    for number in range(rounds + 1):
        for index, contender in enumerate(contenders):
            with contender:
                item, elapsed = contender.start(watcher)
                item.read()
                # The first round warms the file cache.
                if number > 0:
                    registered[index].append(elapsed)
                    since_registration = (time.monotonic_ns() - item.registered_at) / 1e6
                    answered[index].append(elapsed + since_registration)
    report("Start to registered status item", *registered, "ms")
    report("Start to the menu being read", *answered, "ms")


def measure_memory(contenders, watcher, rounds):
    figures = [[], []]
    others = other_users_of_qt()
    for _ in range(rounds):
        for contender, results in zip(contenders, figures):
            with contender:
                item, _ = contender.start(watcher)
                item.read()
                time.sleep(SETTLING_SECONDS)
                results.append(memory(contender.process_id))
    others = max(others, other_users_of_qt())
    for title, ours, floor in zip(MEMORY_FIGURES, zip(*figures[0]), zip(*figures[1])):
        report(title, ours, floor, "MB")
    if others:
        print(f"  {others} other programs share Qt's pages: proportional and private memory are "
              "too low", flush=True)


def measure_wakeups(contenders, watcher, seconds):
    for contender in contenders:
        item, _ = contender.start(watcher)
        item.read()
    time.sleep(SETTLING_SECONDS)
    before = [context_switches(contender.process_id) for contender in contenders]
    time.sleep(seconds)
    after = [context_switches(contender.process_id) for contender in contenders]
    for contender in contenders:
        contender.stop()
    ours, floor = map(wakeups, before, after)
    print(f"Wake-ups in {seconds} idle seconds\n  Quillbar {ours:8}\n  floor    {floor:8}",
          flush=True)


class ChildStarts:
    """The file in which the benchmark's child notes when it began."""

    def __init__(self, path):
        self._path = path
        self._seen = 0

    def next(self):
        """Waits for one more entry."""
        lines = wait_until(self._new_lines, "the child never began")
        self._seen = len(lines)
        return int(lines[-1])

    def _new_lines(self):
        if not os.path.exists(self._path):
            return None
        text = pathlib.Path(self._path).read_text(encoding="ascii")
        lines = text.split("\n")[:-1]
        return lines if len(lines) > self._seen else None


def measure_child_starts(title, build, starts, rounds, act):
    """From the act, which returns its nanosecond, to the child's first instruction, by turns with
    the least that starting a child takes."""
    ours, floor = [], []
    entries = ChildStarts(starts)
    bare = subprocess.Popen(
        [build / "bench" / "bench_spawn", build / "bench" / "bench_child"],
        env={"QUILLBAR_BENCH_STARTS": starts}, stdin=subprocess.PIPE, stdout=subprocess.PIPE)
    for number in range(rounds + 1):
        before = act(number)
        ours.append((entries.next() - before) / 1e6)
        time.sleep(0.3)
        bare.stdin.write(b"\n")
        bare.stdin.flush()
        before = int(bare.stdout.readline())
        floor.append((entries.next() - before) / 1e6)
    bare.communicate()
    ours, floor = ours[1:], floor[1:]
    report(f"{title} to the child's first instruction (floor: a bare spawn)", ours, floor, "ms")
    extra = statistics.median(ours) - statistics.median(floor)
    print(f"  more     {extra:8.2f} ms", flush=True)


def measure_clicks(quillbar, build, starts, watcher, rounds):
    with quillbar:
        item, _ = quillbar.start(watcher)

        def click(number):
            row = next(row for row, label in item.read() if label == PINS[number % len(PINS)])
            time.sleep(0.3)
            return item.click(row)

        measure_child_starts("Click", build, starts, rounds, click)


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("build", type=pathlib.Path, help="the build folder of preset bench")
    # 0 leaves a measurement out.
    parser.add_argument("--starts", type=int, default=20)
    parser.add_argument("--memories", type=int, default=5)
    parser.add_argument("--idle-seconds", type=int, default=30)
    parser.add_argument("--clicks", type=int, default=30)
    options = parser.parse_args()
    bench = options.build / "bench"

    with VirtualDesktop(panel=False) as desktop:
        program = Program(desktop, options.build / "src" / "quillbar", desktop.folder + "/person")
        program.pin(*PINS)
        starts = desktop.folder + "/starts"
        environment = {
            **desktop.environment, **program.environment, "QUILLBAR_BENCH_STARTS": starts}
        watcher = Watcher(desktop.bus)
        contenders = [Contender(options.build / "src" / "quillbar", environment),
                      Contender(bench / "bench_floor", environment)]
        try:
            if options.starts:
                measure_starts(contenders, watcher, options.starts)
            if options.memories:
                measure_memory(contenders, watcher, options.memories)
            if options.clicks:
                measure_clicks(contenders[0], options.build, starts, watcher, options.clicks)
            if options.idle_seconds:
                measure_wakeups(contenders, watcher, options.idle_seconds)
        finally:
            for contender in contenders:
                contender.stop()


if __name__ == "__main__":
    main()
