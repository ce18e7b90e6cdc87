"""The virtual desktop of a Wayland session: sway, without a screen or a graphics card, and waybar."""

import io
import json
import os
import pwd
import shutil
import subprocess
import tempfile

from PIL import Image

from .bus import Bus, start_bus
from .desktop import VirtualDesktop
from .notifications import Notifications
from .panel import WATCHER, registered_items
from .waiting import wait_until
from .wayland_input import WaylandInput

_SIZE = (1280, 800)
_BAR_HEIGHT = 32
_COMPOSITOR = f"""output * resolution {_SIZE[0]}x{_SIZE[1]}
xwayland disable
"""
_BAR = {"layer": "top", "height": _BAR_HEIGHT, "modules-right": ["tray"],
        "tray": {"icon-size": 22, "spacing": 10}}


class WaylandDesktop(VirtualDesktop):
    """Has `windows`, `input` and `bar` where the other has a screen and a panel."""

    def _start(self):
        self.environment = self._base_environment()
        self.environment["XDG_SESSION_TYPE"] = "wayland"
        address = start_bus(self.processes, self.folder, self.environment)
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = address
        self.bus = Bus(address)
        self._start_compositor()
        self.input = WaylandInput(self.environment["WAYLAND_DISPLAY"], _SIZE)
        self.notifications = Notifications(self)
        self.notifications.start("body", "body-markup")
        self.panel = Bar(self)
        self.panel.start()

    def _start_compositor(self):
        # Its own folder, and clients are told whole paths: as root it runs as somebody else.
        folder = self._compositor_folder = tempfile.mkdtemp(prefix="quillbar-sway-")
        configuration = os.path.join(folder, "config")
        with open(configuration, "w", encoding="utf-8") as file:
            file.write(_COMPOSITOR)
        os.chmod(configuration, 0o644)
        self.compositor = self.start(
            ["sway", "--config", configuration],
            {"WLR_BACKENDS": "headless", "WLR_RENDERER": "pixman", "WLR_LIBINPUT_NO_DEVICES": "1",
             "HOME": folder, "XDG_RUNTIME_DIR": folder}, **_not_as_root(folder))

        def sockets():
            names = os.listdir(folder)
            displays = [name for name in names if name.startswith("wayland-") and "." not in name]
            controls = [name for name in names if name.startswith("sway-ipc.")]
            return displays + controls if displays and controls else None

        display, control = wait_until(sockets, lambda: f"sway did not start: {self.log('sway')}")
        self.environment["WAYLAND_DISPLAY"] = os.path.join(folder, display)
        self.environment["SWAYSOCK"] = os.path.join(folder, control)

    def write(self, name, text):
        path = os.path.join(self.folder, name)
        with open(path, "w", encoding="utf-8") as file:
            file.write(text)
        return path

    def control(self, *arguments):
        """Asks the compositor or tells it something."""
        return json.loads(self._output("swaymsg", "-r", *arguments))

    def windows(self, process=None):
        """The shown windows as the compositor describes them."""
        found, nodes = [], [self.control("-t", "get_tree")]
        while nodes:
            node = nodes.pop()
            nodes += node["nodes"] + node["floating_nodes"]
            if node.get("pid") and process in (None, node["pid"]):
                found.append(node)
        return found

    def picture(self):
        """The pixels of the whole screen."""
        return Image.open(io.BytesIO(self._output("grim", "-t", "ppm", "-")))

    def settled_picture(self):
        """The whole screen, once two looks at it agree."""
        last = [self.picture()]

        def settled():
            last.append(self.picture())
            return last[-1].tobytes() == last[-2].tobytes()

        wait_until(settled, "the screen never comes to rest")
        return last[-1]

    def _output(self, *command):
        return subprocess.run(command, env=self.environment, check=True, stdout=subprocess.PIPE,
                              timeout=60).stdout

    def _tear_down(self):
        if hasattr(self, "input"):
            self.input.close()
        super()._tear_down()
        if hasattr(self, "_compositor_folder"):
            shutil.rmtree(self._compositor_folder, ignore_errors=True)


def _not_as_root(folder):
    """How to start a process that refuses to be root's, with a folder to keep its files in."""
    if os.geteuid() != 0:
        return {}
    nobody = pwd.getpwnam("nobody")
    os.chown(folder, nobody.pw_uid, nobody.pw_gid)
    return {"user": nobody.pw_uid, "group": nobody.pw_gid, "extra_groups": []}


class Bar:
    """The bar whose tray shows the program's icon."""

    def __init__(self, desktop):
        self._desktop = desktop

    def start(self):
        self._process = self._desktop.start([
            "waybar", "--config", self._desktop.write("waybar.json", json.dumps(_BAR)),
            "--style", self._desktop.write("waybar.css", "window { background: #202020; }")])
        wait_until(lambda: self._desktop.bus.owner(WATCHER), "the bar's tray did not start")

    def items(self):
        return registered_items(self._desktop.bus)
