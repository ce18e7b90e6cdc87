"""How fast the palette answers, beside the least that a resident Qt panel can be.

The keys come from XTEST and the paintings are seen through X Damage, on a private virtual desktop.
"""

import argparse
import os
import pathlib
import select
import signal
import subprocess
import sys
import time

import Xlib.display
from gi.repository import GLib
from Xlib import X
from Xlib.ext import damage, xtest

sys.path.insert(0, str(pathlib.Path(__file__).parents[1] / "tests" / "desktop"))

from virtualdesktop import Program, VirtualDesktop  # noqa: E402
from virtualdesktop.screen import KEY  # noqa: E402
from virtualdesktop.waiting import NeverHappened, wait_until  # noqa: E402

from launchers import Launcher, installed  # noqa: E402
from summoned import PAUSE, Summoned  # noqa: E402
from whole_program import ChildStarts, measure_child_starts, memory, spread  # noqa: E402

HOTKEY = {"keyCode": 11, "modifiers": 0x1800}
HOTKEY_KEYS = ("Control", "Alt", "B")
# Where the names begin, below the query field, and how much of them counts as the list.
LIST_TOP, LEAST_LIST = 56, (100, 20)
LEAST_PALETTE = (360, 180)
LEAST_SETTINGS = (300, 200)
DIGITS = "123"
WORD = "query"
LETTERS = {"q": 24, "u": 30, "e": 26, "r": 27, "y": 29}
PATIENCE = 20
SETTLING_SECONDS = 2


class Keyboard:
    """Another program's window with the focus, keys, and what is painted on the screen."""

    def __init__(self, desktop):
        self.display = Xlib.display.Display(desktop.environment["DISPLAY"])
        screen = self.display.screen()
        self.root = screen.root
        self.window = self.root.create_window(
            0, 0, 60, 40, 0, screen.root_depth, event_mask=X.KeyPressMask,
            # No window manager has a say in a window that is to be typed into at once.
            override_redirect=True)
        self.window.map()
        self.display.damage_query_version()
        self.root.damage_create(damage.DamageReportRawRectangles)
        self.display.sync()

    def close(self):
        self.display.close()

    def take_focus(self):
        def has_focus():
            if self.window.get_attributes().map_state != X.IsViewable:
                return False
            self.window.set_input_focus(X.RevertToParent, X.CurrentTime)
            return self.display.get_input_focus().focus == self.window

        wait_until(has_focus, "the other window never gets the focus")

    def keys_seen(self):
        """The keys that went to the other window since the last call; forgets the paintings."""
        self.display.sync()
        events = [self.display.next_event() for _ in range(self.display.pending_events())]
        return [event.detail for event in events if event.type == X.KeyPress]

    def tap(self, code, after=0):
        xtest.fake_input(self.display, X.KeyPress, code, time=after)
        xtest.fake_input(self.display, X.KeyRelease, code)

    def hotkey(self):
        for name in HOTKEY_KEYS:
            xtest.fake_input(self.display, X.KeyPress, KEY[name])
        for name in reversed(HOTKEY_KEYS):
            xtest.fake_input(self.display, X.KeyRelease, KEY[name])

    def milliseconds_until_painted(self, act, least, top=0):
        """From now until something of that size, reaching below the line, is painted."""
        self.keys_seen()
        before = time.monotonic_ns()
        act()
        self.display.flush()
        while True:
            while self.display.pending_events():
                event = self.display.next_event()
                area = getattr(event, "area", None)
                if (area and area.width >= least[0] and area.height >= least[1]
                        and area.y + area.height > top + least[1]):
                    return (time.monotonic_ns() - before) / 1e6
            if time.monotonic_ns() - before > PATIENCE * 1e9:
                raise NeverHappened("nothing was painted")
            select.select([self.display.fileno()], [], [], PATIENCE)


class Contender(Summoned):
    """A running program whose palette the hotkey opens."""

    def __init__(self, title, desktop, keyboard, arguments, environment):
        super().__init__(title, keyboard)
        self._desktop = desktop
        self.process = subprocess.Popen(
            [str(argument) for argument in arguments], env=environment,
            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.process.send_signal(signal.SIGTERM)
        self.process.wait()

    def windows(self):
        return self._desktop.screen.windows(process=self.process.pid)

    def wait_ready(self):
        """Until it has started and rests. Trying to take its hotkey would get in its way."""
        used = None
        while used != (used := self._processor_time()):
            time.sleep(SETTLING_SECONDS)

    def _processor_time(self):
        fields = pathlib.Path(f"/proc/{self.process.pid}/stat").read_text(encoding="ascii")
        return [int(ticks) for ticks in fields.rpartition(")")[2].split()[11:13]]

    def summon(self):
        self._keyboard.take_focus()
        elapsed = self._keyboard.milliseconds_until_painted(self._keyboard.hotkey, LEAST_PALETTE)
        wait_until(self._has_focus, f"{self.title}'s palette gets no focus")
        return elapsed

    def _has_focus(self):
        focus = self._keyboard.display.get_input_focus().focus
        return focus not in (self._keyboard.window, X.NONE, X.PointerRoot) and self.windows()

    def dismiss(self):
        self._keyboard.tap(KEY["Escape"])
        self._keyboard.display.flush()
        wait_until(lambda: not self.windows(), f"{self.title}'s palette stays open")
        time.sleep(PAUSE)

    def what_a_key_paints(self):
        return LEAST_LIST, self.windows()[0][2] + LIST_TOP


class Bench:
    def __init__(self, options, desktop, keyboard):
        self._options, self._desktop, self._keyboard = options, desktop, keyboard
        self._people = 0
        self.starts = desktop.folder + "/starts"

    def quillbar(self, pins, **settings):
        self._people += 1
        program = Program(self._desktop, self._options.build / "src" / "quillbar",
                          f"{self._desktop.folder}/person{self._people}")
        for name in pins:
            pathlib.Path(program.shortcuts_folder, name).touch(mode=0o700)
        program.pin(*pins, menuHotkey=HOTKEY, **settings)
        return Contender("Quillbar", self._desktop, self._keyboard, [program.binary], {
            **self._desktop.environment, **program.environment,
            "QUILLBAR_BENCH_STARTS": self.starts})

    def floor(self, count):
        return Contender("floor", self._desktop, self._keyboard,
                         [self._options.build / "bench" / "bench_panel", count],
                         self._desktop.environment)

    def measure_paintings(self, count):
        print(f"{count} pins", flush=True)
        pins = [f"Shortcut {number}" for number in range(1, count + 1)]
        codes = [KEY[digit] for digit in DIGITS]
        for make in (lambda: self.quillbar(pins), lambda: self.floor(count)):
            with make() as contender:
                contender.wait_ready()
                self._report_paintings(contender.title, contender.summons(self._options.summons),
                                       contender.key_presses(self._options.keys, codes))
        for title, command in installed().items():
            launcher = Launcher(title, command, self._desktop.environment, self._keyboard, pins)
            self._report_paintings(title, launcher.summons(self._options.launches),
                                   launcher.key_presses(self._options.keys, codes))

    @staticmethod
    def _report_paintings(title, summons, keys):
        for what, (first, later) in (("Hotkey to painted,", summons), ("Key to list,", keys)):
            print(f"  {what:18} {title:9} {spread(later, 'ms')}; the very first {first:.2f} ms",
                  flush=True)

    def measure_blind_typing(self):
        print("Letters typed blindly, 15 ms apart: runs in which none was lost")
        with self.quillbar([WORD]) as quillbar:
            quillbar.wait_ready()
            entries = ChildStarts(self.starts)
            quillbar.summon()
            quillbar.dismiss()
            for after in (0, 10, 20, 30):
                kept = sum(self._types_blindly(quillbar, entries, after)
                           for _ in range(self._options.blind))
                print(f"  the first {after:2} ms after the hotkey: {kept} of "
                      f"{self._options.blind}", flush=True)

    def _types_blindly(self, quillbar, entries, after):
        self._keyboard.take_focus()
        self._keyboard.keys_seen()
        self._keyboard.hotkey()
        for letter in WORD:
            self._keyboard.tap(LETTERS[letter], after)
            after = 15
        self._keyboard.display.sync()
        wait_until(quillbar.windows, "no palette")
        self._keyboard.tap(KEY["Return"], 15)
        self._keyboard.display.sync()
        try:
            wait_until(lambda: not quillbar.windows(), patience=1)
        except NeverHappened:
            quillbar.dismiss()
            return False
        entries.next()
        return not set(self._keyboard.keys_seen()).intersection(LETTERS.values())

    def measure_running(self):
        with self.quillbar(["One", "Two"]) as quillbar:
            quillbar.wait_ready()

            def press_return(_number):
                wait_until(lambda: not quillbar.windows(), "the palette stays open")
                quillbar.summon()
                time.sleep(PAUSE)
                self._keyboard.display.sync()
                before = time.monotonic_ns()
                self._keyboard.tap(KEY["Return"])
                self._keyboard.display.flush()
                return before

            measure_child_starts(
                "Return", self._options.build, self.starts, self._options.runs, press_return)

    def measure_settings(self):
        pins = [f"Shortcut {number}" for number in range(1, 1001)]
        with self.quillbar(pins) as quillbar:
            quillbar.wait_ready()
            elapsed = self._keyboard.milliseconds_until_painted(self._open_settings, LEAST_SETTINGS)
        print(f"Opening the settings window with 1000 shortcuts: {elapsed:.2f} ms", flush=True)

    def _open_settings(self):
        self._desktop.bus.connection.call(
            "com.quillbar.Quillbar", "/com/quillbar/Quillbar", "org.freedesktop.Application",
            "ActivateAction", GLib.Variant("(sava{sv})", ("settings", [], {})), None, 0, -1,
            None, None)
        self._desktop.bus.connection.flush_sync(None)

    def measure_memory(self):
        with self.quillbar(["One", "Two"]) as quillbar:
            quillbar.wait_ready()
            before = memory(quillbar.process.pid)[0]
            quillbar.summons(0)
            first = memory(quillbar.process.pid)[0]
            quillbar.summons(8)
            tenth = memory(quillbar.process.pid)[0]
        print(f"Proportional memory: {before:.2f} MB idle, {first:.2f} MB after the first opening, "
              f"{tenth:.2f} MB after ten", flush=True)


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("build", type=pathlib.Path, help="the build folder of preset bench")
    # 0 leaves a measurement out.
    parser.add_argument("--pins", type=int, nargs="*", default=[10, 1_000, 100_000])
    parser.add_argument("--summons", type=int, default=40)
    parser.add_argument("--launches", type=int, default=10, help="of other launchers")
    parser.add_argument("--keys", type=int, default=10, help="rounds of three letters")
    parser.add_argument("--blind", type=int, default=10)
    parser.add_argument("--runs", type=int, default=30)
    parser.add_argument("--settings", type=int, choices=(0, 1), default=1)
    parser.add_argument("--memories", type=int, choices=(0, 1), default=1)
    options = parser.parse_args()

    print(f"Load of the machine: {os.getloadavg()[0]:.1f} on {os.cpu_count()} processors")
    with VirtualDesktop(panel=False) as desktop:
        keyboard = Keyboard(desktop)
        bench = Bench(options, desktop, keyboard)
        for count in options.pins:
            bench.measure_paintings(count)
        if options.blind:
            bench.measure_blind_typing()
        if options.runs:
            bench.measure_running()
        if options.settings:
            bench.measure_settings()
        if options.memories:
            bench.measure_memory()
        keyboard.close()


if __name__ == "__main__":
    main()
