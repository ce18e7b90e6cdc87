"""The monkey: takes steps at random, then rests: everything is put right, the program must work,
and what it holds is counted."""

import contextlib
import os
import random

import Xlib.ext.res
from gi.repository import Gio, GLib
from virtualdesktop import Program, Window, wait_until
from virtualdesktop.screen import VANISHED
from Xlib import X
from Xlib.protocol import event

from .steps import LETTERS, STEPS

# No more than the settings show at once.
_SCRIPTS = {"Alpha": "", "Beta": "", "C <b>&amp; _c_": "", "Slow": "sleep 1", "Broken": "exit 3"}
_PALETTE_RECORDER, _RECORDER = "Quick open hotkey", "Hotkey for "
# A combination is grabbed with and without each of two locks.
_GRABS_EACH = 4
# How much more the end of a run may hold: a window that is kept for the next time, with all that
# belongs to it.
_ALLOWANCE = {"own memory": 1024, "descriptors": 1, "threads": 1, "x resources": 14}


class Monkey:
    """Uses one program on one desktop, and prints every step."""

    def __init__(self, desktop, binary, tool, seed):
        self.desktop, self.screen = desktop, desktop.screen
        # Windows vanish while they are aimed at.
        self.screen.display.set_error_handler(lambda *_: None)
        self.random = random.Random(seed)
        self.program = Program(desktop, binary, os.path.join(desktop.folder, "monkey"))
        self.tool, self._real_tool = os.path.join(self.program.home, "shortcuts"), tool
        # What ends each trouble that lasts.
        self.troubles = {}
        self._samples = []

    def start(self):
        for name, script in _SCRIPTS.items():
            self.program.add_shortcut(name, script)
        self.mend_tool()
        self.program.pin(*_SCRIPTS, groupOf={"Beta": "Work"})
        self.menu = self.program.start().menu
        self._rest()

    def play(self, steps):
        """Takes that many steps, then rests."""
        for _ in range(steps):
            self._take_step()
            self._check_life()
        self._rest()

    def growth(self):
        """What grew: the first third of a run warms up."""
        before, after = self._samples[len(self._samples) // 3], self._samples[-1]
        return {name for name, more in _ALLOWANCE.items() if after[name] > before[name] + more}

    def mend_tool(self):
        with contextlib.suppress(FileNotFoundError):
            os.remove(self.tool)
        os.symlink(self._real_tool, self.tool)

    def pick(self, choices):
        """One of them, printed; None of nothing."""
        chosen = self.random.choice(choices) if choices else None
        print(f"  {getattr(chosen, 'name', chosen)!r}")
        return chosen

    def has_menu(self):
        return any(self._is_menu(window[0]) for window in self.program.windows())

    def elements(self, roles):
        found = self.desktop.accessibility.elements(self.program.process.pid)
        return [element for element in found if element.role in roles]

    def close(self, window_id):
        """What the window manager's close button does; a menu is clicked away."""
        if self._is_menu(window_id):
            self.screen.click_ground()
            return
        window = self.screen.display.create_resource_object("window", window_id)
        atom = self.screen.display.intern_atom
        window.send_event(event.ClientMessage(
            window=window, client_type=atom("WM_PROTOCOLS"),
            data=(32, [atom("WM_DELETE_WINDOW"), X.CurrentTime, 0, 0, 0])))
        self.screen.display.sync()

    def _is_menu(self, window_id):
        window = self.screen.display.create_resource_object("window", window_id)
        return bool(window.get_attributes().override_redirect)

    def _take_step(self):
        step = self.random.choices(STEPS, [weight for weight, _ in STEPS])[0][1]
        print(step.__name__)
        try:
            step(self)
        except VANISHED as error:
            print(f"  {type(error).__name__}")
        except GLib.Error as error:
            print(f"  {error.message}")
            assert not error.matches(Gio.io_error_quark(), Gio.IOErrorEnum.TIMED_OUT), \
                f"the program does not answer: {error.message}"

    def _check_life(self):
        status = self.program.process.poll()
        assert status is None, f"the program ended with {status}: {self.program.take_output()}"

    def _rest(self):
        for end in self.troubles.values():
            end()
        self.troubles.clear()
        self._come_to_rest()
        pins = self._check_saving()
        self._check_hotkeys(pins)
        self._come_to_rest()
        self.desktop.notifications.clear()
        # A shell says so whose script is gone.
        output = [line for line in self.program.take_output().splitlines()
                  if "/proc/self/cwd/shortcuts" not in line]
        assert not output, f"the program writes: {output}"
        self._samples.append(self._measure(_GRABS_EACH * (1 + len(pins))))
        print("rest", self._samples[-1], flush=True)

    def _come_to_rest(self):
        """Until no window is open, no child runs and the icon shows. What was asked for last may
        open after the first windows are closed."""
        def rests():
            self._check_life()
            for window in self.program.windows():
                with contextlib.suppress(*VANISHED):
                    self.close(window[0])
            if not self.screen.is_pointer_free():
                self.screen.press("Escape")
                self.screen.click_ground()
            # Answered after what was sent before.
            self.menu.titles()
            return not self.program.windows() and not self.program.children() \
                and self.screen.is_pointer_free() and self.desktop.panel.shows_icon()

        wait_until(rests, lambda: f"{self.program.windows()}, children {self.program.children()}")

    def _check_saving(self):
        """The settings store what they show; returns the pins. Every hotkey is recorded anew, for
        one without modifiers would swallow what is typed."""
        self.menu.click("Settings…")
        settings = Window(self.program, "Quillbar Settings")
        recorders = [button.name for button in settings.elements("push button")
                     if button.name.startswith((_PALETTE_RECORDER, _RECORDER))]
        for name, letter in zip(recorders, LETTERS):
            settings.click("push button", name)
            settings.wait_for("push button", name, "records",
                              lambda found: found.description == "Press keys…")
            self.screen.press("Control", "Alt", letter)
            settings.wait_for("push button", name, "shows what was recorded",
                              lambda found: found.description != "Press keys…")
        path = self.program.config_path
        before = os.stat(path).st_mtime_ns
        settings.click("push button", "Save")
        wait_until(lambda: os.stat(path).st_mtime_ns != before, "a click on Save stores nothing")
        pins = [name.removeprefix(_RECORDER) for name in recorders if name != _PALETTE_RECORDER]
        stored = self.program.read_config()["pinned"]
        assert stored == pins, f"{pins} are shown, {stored} are stored"
        self.close(settings.id)
        settings.wait_closed()
        return pins

    def _check_hotkeys(self, pins):
        """Each hotkey is claimed, the first pin's runs it, the palette's opens one to type in."""
        for letter, _ in zip(LETTERS, [None, *pins]):
            wait_until(lambda: self.screen.is_grabbed(letter, X.ControlMask | X.Mod1Mask),
                       f"{letter} is not registered")
        if pins:
            self.program.forget_runs()
            self.screen.press("Control", "Alt", LETTERS[1])
            # What was typed last may still run, too.
            wait_until(lambda: pins[0] in self.program.ran(), lambda: f"{self.program.ran()} ran")
            wait_until(self.desktop.notifications.shown, "a run is not reported")
        self.screen.press("Control", "Alt", LETTERS[0])
        palette = Window(self.program, "Quillbar")
        self.screen.type("zq")
        wait_until(lambda: palette.elements("text")[0].text() == "zq", "the palette is deaf")

    def _measure(self, hotkey_grabs):
        """Kilobytes and counts of what the program holds, without the grabs of its hotkeys."""
        process_id = self.program.process.pid
        with open(f"/proc/{process_id}/smaps_rollup", encoding="ascii") as file:
            # What no other process shares, and so none changes.
            own = next(int(line.split()[1]) for line in file if line.startswith("Anonymous:"))
        display = self.screen.display
        clients = display.res_query_client_ids(
            [{"client": 0, "mask": Xlib.ext.res.LocalClientPIDMask}]).ids
        resources = [kind.count for client in clients if list(client.value) == [process_id]
                     for kind in display.res_query_client_resources(client.spec.client).types]
        return {
            "own memory": own,
            "descriptors": len(os.listdir(f"/proc/{process_id}/fd")),
            "threads": len(os.listdir(f"/proc/{process_id}/task")),
            "x resources": sum(resources) - hotkey_grabs,
        }
