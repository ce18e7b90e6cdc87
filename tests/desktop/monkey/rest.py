"""The rest between plays: everything is put right, and the program must work."""

import contextlib
import os
import subprocess

from gi.repository import GLib
from virtualdesktop import Window, wait_until
from virtualdesktop.screen import VANISHED

from .resources import measure
from .world import GOOD, combination

# A combination is grabbed with and without each of two locks.
_VARIANTS = 4
_RECORDER = "Hotkey for "


class Rest:
    def __init__(self, world):
        self._world = world
        self._screen = world.screen
        self._program = world.program

    def check(self):
        """Returns what the program holds while nothing happens."""
        world = self._world
        self._put_right()
        self._come_to_rest()
        self._check_saving()
        self._close_everything()
        self._check_menu()
        self._check_hotkeys()
        self._check_palette()
        self._come_to_rest()
        world.check_life()
        world.check_silence()
        assert all(launch.wait(60) == 0 for launch in world.launches), "a second launch failed"
        world.launches.clear()
        world.desktop.notifications.clear()
        sample = measure(world.desktop, self._program.process.pid)
        sample["spare grabs"] = sample.pop("grabs") - _VARIANTS * len(self._combinations())
        return sample

    def _put_right(self):
        world = self._world
        subprocess.run(["setxkbmap", "us"], env=world.desktop.environment, check=True)
        world.release_keys()
        wait_until(lambda: self._screen.window_manager() == "Openbox", "no window manager")
        world.wait_for_panel()

    def _come_to_rest(self):
        """What was asked for last may still open while the first windows are closed."""
        def rests():
            self._close_everything()
            try:
                self._settle()
            except GLib.Error:
                wait_until(lambda: self._program.process.poll() is not None,
                           "the program does not answer")
            lives = self._world.lives
            self._world.check_life()
            return lives == self._world.lives and not self._world.windows()

        wait_until(rests, lambda: f"windows keep opening: {self._titles()}")

    def _close_everything(self):
        """Windows and menus, ours and the panel's."""
        world = self._world

        def closed():
            windows = world.windows()
            if not windows and self._screen.is_pointer_free():
                return True
            for window in windows:
                self._close(window[0])
            if not self._screen.is_pointer_free():
                self._screen.press("Escape")
                self._screen.click_ground()
            return False

        wait_until(closed, lambda: f"windows stay: {self._titles()}")

    def _titles(self):
        return [self._screen.title(window[0]) for window in self._world.windows()]

    def _close(self, window_id):
        with contextlib.suppress(*VANISHED):
            if self._world.is_popup(window_id):
                self._screen.click_ground()
            else:
                self._world.ask_to_close(window_id)

    def _settle(self):
        """Until no child runs and the icon shows."""
        world = self._world
        wait_until(lambda: not world.program.children(), "children stay")
        # Its answer comes after whatever was sent before.
        world.tray.menu.revision()
        self._program.tray()
        wait_until(world.desktop.panel.shows_icon, "the panel does not show the icon")

    def _check_saving(self):
        """What the settings window shows is what it stores."""
        self._program.tray().menu.click("Settings…")
        settings = Window(self._program, "Quillbar Settings")
        # The file may still wait for what could not be saved before.
        self._save(settings)
        self._repair_hotkeys(settings)
        self._save(settings)
        buttons = [button.name.partition(_RECORDER) for button in settings.elements("push button")]
        shown = [name for _, recorder, name in buttons if recorder]
        # Rows out of sight do not exist.
        wait_until(lambda: self._world.config()["pinned"][:len(shown)] == shown,
                   lambda: f"{shown} is shown, {self._world.config()} stored")

    def _save(self, settings):
        before = self._time_of_save()
        settings.click("push button", "Save")
        wait_until(lambda: self._time_of_save() != before, "a click on Save stores nothing")

    def _time_of_save(self):
        path = self._program.config_path
        return os.stat(path).st_mtime_ns if os.path.exists(path) else None

    def _repair_hotkeys(self, settings):
        """Keys without modifiers, recorded by chance, would swallow what is typed from now on."""
        for name, hotkey in self._world.hotkeys().items():
            if hotkey["modifiers"] & 0x1900:
                continue
            button = f"{_RECORDER}{name}" if name else "Quick open hotkey"
            settings.click("push button", button)
            settings.wait_for("push button", button, "records",
                              lambda found: found.description == "Press keys…")
            self._screen.press("Control", "Alt", self._world.random.choice("BFGHJKLNUVWY"))
            settings.wait_for("push button", button, "shows what was recorded",
                              lambda found: found.description != "Press keys…")

    def _check_menu(self):
        """Every pin has its row, and a click runs it."""
        menu = self._program.tray().menu
        pinned = self._world.config()["pinned"]
        rows = {name: None for name in pinned}

        def complete():
            # A row's hotkey follows its name, which is isolated then when it goes right to left.
            shown = {row.title.partition("  (")[0].strip("\u2068\u2069"): row.id
                     for row in menu.rows(images=False)}
            rows.update({name: shown.get(name) for name in rows})
            return None not in rows.values()

        wait_until(complete, lambda: f"{pinned} are pinned, the menu shows {menu.titles()}")
        chosen = next((name for name in pinned if name in GOOD), None)
        if not chosen:
            return
        self._program.forget_runs()
        menu.send(rows[chosen])
        # What was typed last may still run, too.
        wait_until(lambda: chosen in self._program.ran(),
                   lambda: f"{chosen!r} was clicked, {self._program.ran()} ran")
        wait_until(self._world.desktop.notifications.shown, "a run is not reported")

    def _combinations(self):
        found = [(hotkey["keyCode"], hotkey["modifiers"])
                 for hotkey in self._world.hotkeys().values()]
        return set(found)

    def _check_hotkeys(self):
        for hotkey in self._world.hotkeys().values():
            keys = combination(hotkey)
            if keys:
                wait_until(lambda: self._screen.is_grabbed(keys[0][-1], keys[1]),
                           f"{keys[0]} is not registered")

    def _check_palette(self):
        hotkeys = self._world.hotkeys()
        mine = hotkeys.pop(None)
        keys = combination(mine)
        if not keys or mine in hotkeys.values():
            return
        self._screen.press(*keys[0])
        palette = Window(self._program, "Quillbar")
        self._screen.type("zq")
        wait_until(lambda: palette.elements("text")[0].text() == "zq", "the palette is deaf")
