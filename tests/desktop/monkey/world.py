"""What the monkey knows of the world: the program, its windows, and the troubles that last."""

import json
import os

from virtualdesktop import Program, wait_until
from virtualdesktop.portal import Portal
from virtualdesktop.screen import KEY
from Xlib import X
from Xlib.protocol import event

NAMES = ["Alpha", "Beta", "Gamma", "Delta <b>&amp;", "_under_ score", "Émile ☕", "שלום",
         "x" * 60, "Slow", "Loud", "Broken", "Killed"]
_SCRIPTS = {"Slow": "sleep 1", "Loud": "head -c 3000000 /dev/zero", "Broken": "exit 3",
            "Killed": "kill -9 $$"}
# Shortcuts that end well, and at once.
GOOD = [name for name in NAMES if name not in _SCRIPTS]

# Physical keys by the codes that the settings hold.
KEYS_BY_CODE = {
    0: "A", 1: "S", 2: "D", 3: "F", 4: "H", 5: "G", 6: "Z", 7: "X", 8: "C", 9: "V", 11: "B",
    12: "Q", 13: "W", 14: "E", 15: "R", 16: "Y", 17: "T", 31: "O", 32: "U", 34: "I", 35: "P",
    37: "L", 38: "J", 40: "K", 45: "N", 46: "M", 49: "Space", 53: "Escape", 36: "Return",
    48: "Tab", 51: "BackSpace", 125: "Down", 126: "Up",
}
_MODIFIERS = {0x100: ("Super", X.Mod4Mask), 0x200: ("Shift", X.ShiftMask),
              0x800: ("Alt", X.Mod1Mask), 0x1000: ("Control", X.ControlMask)}
DEFAULT_HOTKEY = {"keyCode": 17, "modifiers": 0x900}


def combination(hotkey):
    """(key names, X modifiers) of a stored hotkey; None for a key that the monkey has not."""
    name = KEYS_BY_CODE.get(hotkey["keyCode"])
    if not name:
        return None
    held = [value for bit, value in _MODIFIERS.items() if hotkey["modifiers"] & bit]
    return [*(key for key, _ in held), name], sum(mask for _, mask in held)


# Where the menu quits the program, above its lower edge.
_MENU_END = 90


class World:
    def __init__(self, desktop, binary, tool, source, note):
        self.desktop, self.random, self.note = desktop, source, note
        self.screen = desktop.screen
        # Windows vanish while they are aimed at.
        self.screen.display.set_error_handler(lambda *_: None)
        self.program = Program(desktop, binary, os.path.join(desktop.folder, "monkey"))
        self.tool = os.path.join(self.program.home, "shortcuts")
        self._real_tool = tool
        self.portal = Portal(desktop, "light")
        self.launches = []
        self.lives = 1
        self.tray = None
        self._troubles = {}
        self._now = 0

    def start(self):
        self.portal.__enter__()
        for name in NAMES:
            self.add_shortcut(name)
        self.mend_tool()
        self.program.pin(*NAMES[:4], "Slow", "Broken", groupOf={"Beta": "Work"},
                         shortcutHotkeys={"Alpha": {"keyCode": 11, "modifiers": 0x1800}})
        self.tray = self.program.start()

    def add_shortcut(self, name):
        self.program.add_shortcut(name, _SCRIPTS.get(name, ""))

    def mend_tool(self):
        if os.path.lexists(self.tool):
            os.remove(self.tool)
        os.symlink(self._real_tool, self.tool)

    def chance(self, probability):
        return self.random.random() < probability

    def pick(self, choices):
        """One of them, written down; None of nothing."""
        chosen = self.random.choice(choices) if choices else None
        self.note(f"  {chosen!r}" if not isinstance(chosen, list) else f"  {' '.join(chosen)}")
        return chosen

    def pick_element(self, elements):
        chosen = self.random.choice(elements) if elements else None
        self.note(f"  {chosen and (chosen.role, chosen.name[:40])}")
        return chosen

    def pick_row(self, rows):
        chosen = self.random.choice(rows) if rows else None
        self.note(f"  {chosen and chosen.title[:40]!r}")
        return chosen

    def has_trouble(self, name):
        return name in self._troubles

    def trouble(self, name, end):
        """A trouble that `end` ends some steps later, at the latest at the next rest."""
        self._troubles[name] = (self._now + self.random.randint(2, 25), end)

    def end_troubles(self, now=None):
        """Ends those whose time has come; all of them without a time."""
        self._now = now if now is not None else self._now
        for name, (due, end) in list(self._troubles.items()):
            if now is None or now >= due:
                self.note(f"  end of {name}")
                del self._troubles[name]
                end()

    def check_life(self):
        """A click may have met the menu's last row: then the program ends well, and starts anew."""
        status = self.program.process.poll()
        if status is None:
            return
        assert status == 0, f"the program ended with {status}: {self.program.take_output()}"
        self.note("quit")
        self._end_launches()
        self.lives += 1
        self.end_troubles()
        self._start_again()

    def _start_again(self):
        self.program.launch()
        self.tray = self.program.tray()

        def started():
            if self.tray.menu.is_filled():
                return True
            # The question about pins that are gone comes before the menu.
            for window in self.windows():
                self.ask_to_close(window[0])
            return False

        wait_until(started, "the menu never comes")

    def _end_launches(self):
        """One that came too late to be the second is the program by now."""
        for launch in self.launches:
            self.desktop.processes.end(launch)
        self.launches.clear()

    def check_silence(self):
        # The tool's own words are not the program's, nor are those of a shell whose script is gone.
        output = [line for line in self.program.take_output().splitlines()
                  if "/proc/self/cwd/shortcuts" not in line]
        assert not output, f"the program writes: {output}"

    def config(self):
        """The stored settings; of no pins while the file is not there."""
        try:
            return self.program.read_config()
        except (OSError, json.JSONDecodeError):
            return {"pinned": []}

    def hotkeys(self):
        """The stored hotkeys by what they open; the palette's under None."""
        config = self.config()
        found = {name: hotkey for name, hotkey in config.get("shortcutHotkeys", {}).items()
                 if name in config["pinned"]}
        return {None: config.get("menuHotkey", DEFAULT_HOTKEY), **found}

    def elements(self, *roles):
        found = self.desktop.accessibility.elements(self.program.process.pid)
        return [element for element in found if element.role in roles]

    def windows(self):
        return self.program.windows()

    def is_popup(self, window_id):
        window = self.screen.display.create_resource_object("window", window_id)
        return bool(window.get_attributes().override_redirect)

    def has_popup(self):
        return any(self.is_popup(window[0]) for window in self.windows())

    def ask_to_close(self, window_id):
        """What the window manager's close button does."""
        window = self.screen.display.create_resource_object("window", window_id)
        atom = self.screen.display.intern_atom
        window.send_event(event.ClientMessage(
            window=window, client_type=atom("WM_PROTOCOLS"),
            data=(32, [atom("WM_DELETE_WINDOW"), X.CurrentTime, 0, 0, 0])))
        self.screen.display.sync()

    def click(self, x, y, button=1):
        """A click, but not on the lower end of a menu: there one quits."""
        for window_id, left, top, width, height in self.windows():
            end = top + height
            if left <= x < left + width and end - _MENU_END <= y < end and self.is_popup(window_id):
                return
        self.screen.click(x, y, button)

    def click_icon(self, button=1):
        area = self.desktop.panel.area()
        if area:
            x, y, width, height = area
            self.screen.click(x + width // 2, y + height // 2, button)

    def release_keys(self):
        for name in KEY:
            self.screen.key_up(name)

    def restart_window_manager(self):
        before = self.screen.window_manager_id()
        self.desktop.start(["openbox", "--sm-disable", "--replace"])
        # One that starts takes the keyboard from the window that opens meanwhile.
        wait_until(lambda: self.screen.window_manager_id() not in (0, before),
                   "no window manager follows")

    def wait_for_panel(self):
        wait_until(lambda: self.desktop.panel.area(), "the panel does not show")
