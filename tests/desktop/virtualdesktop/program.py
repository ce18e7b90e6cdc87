"""A Quillbar with a home of its own on a virtual desktop."""

import contextlib
import json
import os
import signal
import stat
import time

from gi.repository import GLib
from Xlib import X

from .tray import TrayItem
from .waiting import settled, wait_until
from .window import Window

# The windows of a first start are over, so that a test sees only what it asks for.
_SETTLED = {"onboarded": True, "permissionsShown": True, "iconSymbol": "heart.fill"}

# Far longer than a menu takes on a busy machine: a second click would close it again.
_SECONDS_BETWEEN_CLICKS = 15


class Program:
    def __init__(self, desktop, binary, home):
        self.desktop = desktop
        self.binary = str(binary)
        self.home = str(home)
        self.data = os.path.join(self.home, ".local", "share")
        self.config_home = os.path.join(self.home, ".config")
        self.config_path = os.path.join(self.data, "Quillbar", "config.json")
        self.login_entry = os.path.join(
            self.config_home, "autostart", "com.quillbar.launcher.desktop")
        self.process = None
        # In whole pixels; assistive programs are told points.
        self.pixels_a_point = 1
        # What starts the program in its own place, with its process id.
        self.wrapper = []
        self.shortcuts_folder = os.path.join(self.data, "shortcuts")
        self._ran_path = os.path.join(self.home, "ran")
        for folder in (self.data, self.config_home, self.shortcuts_folder):
            os.makedirs(folder, mode=0o700, exist_ok=True)

    @property
    def environment(self):
        return {"HOME": self.home, "XDG_DATA_HOME": self.data, "XDG_CONFIG_HOME": self.config_home,
                "XDG_STATE_HOME": os.path.join(self.home, ".local", "state"),
                "XDG_CACHE_HOME": os.path.join(self.home, ".cache")}

    def add_shortcut(self, name, script=""):
        """A shortcut that notes its name in `ran`, then does what the script says."""
        self.write_shortcut(
            name, f'#!/bin/sh\nprintf "%s\\n" "$SHORTCUT_NAME" >>"{self._ran_path}"\n{script}\n')

    def write_shortcut(self, name, text):
        path = os.path.join(self.shortcuts_folder, name)
        with open(path, "w", encoding="utf-8") as file:
            file.write(text)
        os.chmod(path, stat.S_IRWXU)

    def ran(self):
        """Names of the shortcuts that were started, in order."""
        with open(self._ran_path, "a+", encoding="utf-8") as file:
            file.seek(0)
            return file.read().splitlines()

    def forget_runs(self):
        with open(self._ran_path, "w", encoding="utf-8"):
            pass

    def children(self):
        """The process ids of its children."""
        thread = f"/proc/{self.process.pid}/task/{self.process.pid}"
        with open(f"{thread}/children", encoding="ascii") as file:
            return [int(child) for child in file.read().split()]

    def wait_for_runs(self, *names):
        wait_until(lambda: self.ran() == list(names),
                   lambda: f"{list(names)} should have run, {self.ran()} did")

    def pin(self, *names, **settings):
        """Writes a configuration that pins the names, and adds the shortcuts that are missing."""
        for name in names:
            if not os.path.exists(os.path.join(self.shortcuts_folder, name)):
                self.add_shortcut(name)
        self.write_config({**_SETTLED, "pinned": list(names), **settings})

    def write_config(self, config):
        os.makedirs(os.path.dirname(self.config_path), mode=0o700, exist_ok=True)
        with open(self.config_path, "w", encoding="utf-8") as file:
            json.dump(config, file)

    def read_config(self):
        with open(self.config_path, encoding="utf-8") as file:
            return json.load(file)

    def launch(self, **environment):
        """Starts the program without waiting for anything."""
        self.pixels_a_point = int(environment.get("QT_SCALE_FACTOR", 1))
        self.process = self.desktop.start(
            [*self.wrapper, self.binary], {**self.environment, **environment}, name="quillbar")
        return self.process

    def start(self, **environment):
        """Starts the program and waits for its icon in the panel and its menu."""
        self.launch(**environment)
        tray = self.tray()
        wait_until(tray.menu.rows, "the menu never comes")
        return tray

    def open_window(self, row, title):
        """The window that a row of the menu opens."""
        self.tray().menu.click(row)
        return Window(self, title)

    def open_settings(self):
        return self.open_window("Settings…", "Quillbar Settings")

    def open_about(self):
        return self.open_window("About Quillbar", "About Quillbar")

    def open_palette(self):
        """By its hotkey, as it is set from the beginning."""
        self.desktop.screen.press("Super", "Alt", "T")
        return Window(self, "Quillbar")

    def wait_for_hotkey(self):
        """Waits for the end of the start, when the palette's hotkey is there."""
        wait_until(lambda: self.desktop.screen.is_grabbed("T", X.Mod1Mask | X.Mod4Mask),
                   "the palette's hotkey is not registered")

    def tray(self):
        """The program's registered status item."""
        return wait_until(self._find_tray,
                          lambda: f"no status item: {self.desktop.log('quillbar')}")

    def _find_tray(self):
        if self.process.poll() is not None:
            raise AssertionError(
                f"the program ended with {self.process.returncode}: {self.desktop.log('quillbar')}")
        for name, path in self.desktop.panel.items():
            # An item may go while it is looked at.
            with contextlib.suppress(GLib.Error):
                if self.desktop.bus.process_of(name) == self.process.pid:
                    return TrayItem(self.desktop.bus, name, path)
        return None

    def windows(self):
        return self.desktop.screen.windows(process=self.process.pid)

    def open_own_menu(self):
        """Clicks the icon in the panel; returns the menu's window."""
        panel = self.desktop.panel
        wait_until(panel.shows_icon, "the icon does not show in the panel")
        settled(panel.area)
        return self.open_menu_by(panel.click_icon)

    def open_menu_by(self, click):
        """Clicks until the menu is there and has the mouse; returns its window. A click goes astray
        while the panel still moves icons about, and people click again."""
        next_click = 0.0

        def shown():
            nonlocal next_click
            if not self.large_windows() and time.monotonic() >= next_click:
                click()
                next_click = time.monotonic() + _SECONDS_BETWEEN_CLICKS
            return self.large_windows()

        menu = wait_until(shown, "a click on the icon opens no menu")[0]
        # It is shown before it can be used.
        wait_until(lambda: not self.desktop.screen.is_pointer_free(), "the menu gets no mouse")
        return menu

    def take_output(self):
        """What it has written to its standard output and error; forgotten afterwards."""
        lines = self.desktop.log("quillbar").splitlines(keepends=True)
        os.truncate(os.path.join(self.desktop.folder, "quillbar.log"), 0)
        # Qt's word for an accessibility service that takes its time.
        return "".join(line for line in lines if not line.startswith("QSpiApplication::"))

    def large_windows(self):
        """The windows except the icon's own, which is one on its way into a tray."""
        return [window for window in self.windows() if window[4] > 64]

    def stop(self, how=signal.SIGTERM):
        """Ends the program; returns its exit status."""
        return self.desktop.processes.end(self.process, how)
