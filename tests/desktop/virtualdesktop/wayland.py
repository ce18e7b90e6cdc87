"""The virtual desktop of a Wayland session: sway, in a window of a virtual X server, and a bar."""

import json
import os
import pwd
import shutil
import subprocess
import tempfile

from .desktop import VirtualDesktop
from .panel import WATCHER, registered_items
from .screen import Screen
from .waiting import wait_until

_SIZE = (1280, 800)
_BAR_HEIGHT = 32
_BAR_ID = "bar"
_COMPOSITOR = f"""output * resolution {_SIZE[0]}x{_SIZE[1]}
xwayland disable
bar {{
    id {_BAR_ID}
    # What starts it is the desktop: it needs the session bus.
    swaybar_command true
    status_command -
    position top
    height {_BAR_HEIGHT}
}}
"""
_BAR = {"layer": "top", "height": _BAR_HEIGHT, "modules-right": ["tray"],
        "tray": {"icon-size": 22, "spacing": 10}}


class WaylandDesktop(VirtualDesktop):
    """Its screen is a compositor's, and its panel a bar: waybar, or sway's own."""

    def __init__(self, swaybar=False, **options):
        super().__init__(**options)
        self._swaybar = swaybar

    def _start_screen(self):
        self.environment["XDG_SESSION_TYPE"] = "wayland"
        self.screen = Compositor(self, self._start_display())
        self._display = self.screen.process

    def _start_panel(self):
        self.panel = Bar(self, self._swaybar)
        self.panel.start()

    def lose_display(self):
        self.screen.close()
        super().lose_display()


class Compositor(Screen):
    """Shows its output in a window as large as the X server, whose keys and pointer it has."""

    def __init__(self, desktop, x_display):
        super().__init__(x_display)
        # A folder of its own, and clients are told whole paths: as root it runs as somebody else.
        self._folder = tempfile.mkdtemp(prefix="quillbar-sway-")
        configuration = os.path.join(self._folder, "config")
        with open(configuration, "w", encoding="utf-8") as file:
            file.write(_COMPOSITOR)
        os.chmod(configuration, 0o644)
        sockets = {"WAYLAND_DISPLAY": os.path.join(self._folder, "wayland-1"),
                   "SWAYSOCK": os.path.join(self._folder, "control")}
        self.process = desktop.start(
            ["sway", "--config", configuration],
            {"DISPLAY": x_display, "WLR_BACKENDS": "x11", "WLR_RENDERER": "pixman",
             "HOME": self._folder, "XDG_RUNTIME_DIR": self._folder,
             "SWAYSOCK": sockets["SWAYSOCK"]}, **_not_as_root(self._folder))
        wait_until(lambda: all(map(os.path.exists, sockets.values())),
                   lambda: f"sway did not start: {desktop.log('sway')}")
        self._environment = desktop.environment
        desktop.environment.update(sockets)

    def close(self):
        super().close()
        shutil.rmtree(self._folder, ignore_errors=True)

    def windows(self, process=None):
        """The shown windows as the compositor describes them."""
        tree = subprocess.run(["swaymsg", "-r", "-t", "get_tree"], env=self._environment,
                              check=True, stdout=subprocess.PIPE, timeout=60).stdout
        found, nodes = [], [json.loads(tree)]
        while nodes:
            node = nodes.pop()
            nodes += node["nodes"] + node["floating_nodes"]
            if node.get("pid") and process in (None, node["pid"]):
                found.append(node)
        return found


def _not_as_root(folder):
    """How to start a process that refuses to be root's, with a folder to keep its files in."""
    if os.geteuid() != 0:
        return {}
    nobody = pwd.getpwnam("nobody")
    os.chown(folder, nobody.pw_uid, nobody.pw_gid)
    return {"user": nobody.pw_uid, "group": nobody.pw_gid, "extra_groups": []}


class Bar:
    """Waybar, or sway's own, which draws no menus in this version."""

    def __init__(self, desktop, swaybar):
        self._desktop, self._swaybar = desktop, swaybar

    def start(self):
        self._desktop.start(self._command())
        wait_until(lambda: self._desktop.bus.owner(WATCHER), "the bar's tray did not start")

    def _command(self):
        if self._swaybar:
            return ["swaybar", "--bar_id", _BAR_ID]
        path = os.path.join(self._desktop.folder, "waybar.json")
        with open(path, "w", encoding="utf-8") as file:
            json.dump(_BAR, file)
        return ["waybar", "--config", path, "--style", "/dev/null"]

    def _icon_area(self):
        side = _BAR["tray"]["icon-size"]
        return _SIZE[0] - side, (_BAR_HEIGHT - side) // 2, side, side

    def click_icon(self, button=1):
        self._desktop.screen.click_middle(self._icon_area(), button)

    def shows_icon(self):
        return len(self._desktop.screen.picture(self._icon_area()).getcolors()) > 1

    def items(self):
        return registered_items(self._desktop.bus)
