"""The virtual desktop as a whole."""

import glob
import os
import shutil
import signal
import tempfile

from gi.repository import GLib

from .accessibility import AccessibleTree
from .bus import Bus, start_bus
from .panel import Panel
from .processes import Processes
from .screen import Screen
from .services import Notifications
from .waiting import wait_until

_ACCESSIBILITY = "org.a11y.Bus"
_REPORTS = "sanitizer"
_SANITIZERS = {
    # Deep enough to name what allocates; whole stacks make the program three times as slow.
    "ASAN_OPTIONS": "malloc_context_size=8",
    "UBSAN_OPTIONS": "",
    "LSAN_OPTIONS": "suppressions=" + os.path.join(os.path.dirname(__file__), "leaks.supp"),
}


class VirtualDesktop:
    """Brings up a private desktop for a `with` block and tears it down by process id."""

    def __init__(self, size="1280x800", panel=True, accessibility=False, root=None):
        self._size = size
        self._root = root
        self._with_panel = panel
        self._with_accessibility = accessibility
        self.accessibility = self.bus = self.screen = None

    def __enter__(self):
        self.folder = tempfile.mkdtemp(prefix="quillbar-desktop-")
        self.processes = Processes(self.folder)
        try:
            self._start()
        except BaseException:
            self._tear_down()
            raise
        return self

    def __exit__(self, failure, *_):
        reports = self._tear_down()
        assert failure or not reports, reports

    def start(self, arguments, environment=None, name=None, **options):
        """Starts a process that lives on this desktop."""
        return self.processes.start(
            arguments, {**self.environment, **(environment or {})}, name, **options)

    def log(self, name):
        return self._read(f"{name}.log")

    def take_reports(self):
        """What sanitizers reported of any process on this desktop; forgotten afterwards."""
        reports = ""
        for name in sorted(os.listdir(self.folder)):
            if name.startswith(_REPORTS):
                reports += self._read(name)
                os.remove(os.path.join(self.folder, name))
        return reports

    def lose_display(self):
        """The X server dies."""
        self.processes.end(self._display, signal.SIGKILL)
        self.screen = None

    def lose_bus(self):
        """The session bus dies, and assistive programs with it."""
        self.processes.end(self.bus_daemon, signal.SIGKILL)
        self.bus = self.accessibility = None

    def runtime_files(self):
        """What the program has put into the session's runtime folder."""
        return [name for name in os.listdir(self.environment["XDG_RUNTIME_DIR"])
                if "quillbar" in name.lower()]

    def _start(self):
        self.environment = self._base_environment()
        self._start_screen()
        self.bus_daemon, address = start_bus(
            self.processes, self.folder, self.environment, self._root)
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = address
        self.bus = Bus(address)
        self.notifications = Notifications(self)
        self.notifications.start()
        if self._with_accessibility:
            self._start_accessibility()
        if self._with_panel:
            self._start_panel()

    def _start_screen(self):
        self.environment["DISPLAY"] = self._start_display()
        self.screen = Screen(self.environment["DISPLAY"])
        self.start(["openbox", "--sm-disable"])

    def _start_panel(self):
        self.panel = Panel(self)
        self._start_helper("xfconfd", "org.xfce.Xfconf")
        self.panel.start()

    def _base_environment(self):
        """The environment of a fresh login: nothing of the person's own session leaks in."""
        environment = {
            "PATH": "/usr/local/bin:/usr/bin:/bin", "LANG": "C.UTF-8", "HOME": self._make("home"),
            "XDG_CONFIG_HOME": self._make("config"), "XDG_DATA_HOME": self._make("data"),
            "XDG_CACHE_HOME": self._make("cache"), "XDG_STATE_HOME": self._make("state"),
            "XDG_RUNTIME_DIR": self._make("runtime"), "XDG_CONFIG_DIRS": self._make("etc"),
            "XDG_SESSION_TYPE": "x11", "GTK_A11Y": "none", "NO_AT_BRIDGE": "1",
        }
        # Into files, as nobody sees what a program prints that another one started.
        reports = f"log_path={os.path.join(self.folder, _REPORTS)}"
        for key, more in _SANITIZERS.items():
            if key in os.environ:
                environment[key] = f"{os.environ[key]}:{reports}:{more}"
        return environment

    def _make(self, name):
        path = os.path.join(self.folder, name)
        os.makedirs(path, mode=0o700)
        return path

    def _read(self, name):
        with open(os.path.join(self.folder, name), encoding="utf-8", errors="replace") as file:
            return file.read()

    def _start_display(self):
        self._display, number = self.processes.start_that_tells(
            lambda descriptor: [
                "Xvfb", "-displayfd", descriptor, "-screen", "0", f"{self._size}x24", "-noreset",
                "-nolisten", "tcp"], self.environment)
        return f":{number}"

    def _start_helper(self, program, bus_name):
        """A service that a session's bus would start when it is asked for."""
        path, = (glob.glob(f"/usr/lib/*/xfce4/xfconf/{program}")
                 or glob.glob(f"/usr/libexec/{program}"))
        self.start([path])
        wait_until(lambda: self.bus.owner(bus_name), f"{program} did not start")

    def _start_accessibility(self):
        self._start_helper("at-spi-bus-launcher", _ACCESSIBILITY)
        self.bus.call(_ACCESSIBILITY, "/org/a11y/bus", "org.freedesktop.DBus.Properties", "Set",
                      "(ssv)", "org.a11y.Status", "IsEnabled", GLib.Variant("b", True))
        self.accessibility = AccessibleTree(self.bus)
        self.environment["QT_LINUX_ACCESSIBILITY_ALWAYS_ON"] = "1"

    def _tear_down(self):
        for connection in (self.accessibility, self.bus, self.screen):
            if connection:
                connection.close()
        self.processes.end_all()
        reports = self.take_reports()
        shutil.rmtree(self.folder, ignore_errors=True)
        return reports
