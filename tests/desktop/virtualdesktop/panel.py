"""The panel whose status area shows the program's icon, and trays of the older kind."""

import os
import signal

from Xlib.error import BadMatch

from .waiting import wait_until

WATCHER = "org.kde.StatusNotifierWatcher"
_SELECTION = "_NET_SYSTEM_TRAY_S0"

# Only the status area, as small as what it shows: the icon is always the panel's middle.
_CONFIGURATION = """<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfce4-panel" version="1.0">
  <property name="configver" type="int" value="2"/>
  <property name="panels" type="array">
    <value type="int" value="1"/>
    <property name="dark-mode" type="bool" value="true"/>
    <property name="panel-1" type="empty">
      <property name="position" type="string" value="p=6;x=0;y=0"/>
      <property name="position-locked" type="bool" value="true"/>
      <property name="length" type="uint" value="1"/>
      <property name="length-adjust" type="bool" value="true"/>
      <property name="size" type="uint" value="32"/>
      <property name="icon-size" type="uint" value="22"/>
      <property name="plugin-ids" type="array"><value type="int" value="1"/></property>
    </property>
  </property>
  <property name="plugins" type="empty">
    <property name="plugin-1" type="string" value="systray">
      <property name="square-icons" type="bool" value="true"/>
    </property>
  </property>
</channel>
"""


class Panel:
    def __init__(self, desktop):
        self._desktop = desktop
        self._process = None
        folder = os.path.join(desktop.folder, "config", "xfce4", "xfconf", "xfce-perchannel-xml")
        os.makedirs(folder)
        with open(os.path.join(folder, "xfce4-panel.xml"), "w", encoding="utf-8") as file:
            file.write(_CONFIGURATION)

    def start(self):
        self._process = self._desktop.start(["xfce4-panel", "--disable-wm-check"])
        wait_until(lambda: self._desktop.bus.owner(WATCHER),
                   "the panel's status area did not start")

    def kill(self):
        """Ends the panel as a crash would."""
        self._desktop.processes.end(self._process, signal.SIGKILL)
        wait_until(lambda: not self._desktop.bus.owner(WATCHER), "the panel's status area stayed")

    def area(self):
        """Where the panel is: (x, y, width, height), or None while it is not shown."""
        shown = self._desktop.screen.windows(instance="xfce4-panel")
        return shown[0][1:] if shown else None

    def shows_icon(self):
        """Whether enough pixels differ from the panel's ground."""
        area = self.area()
        if not area or not self.items():
            return False
        picture = self._desktop.screen.picture(area)
        counts = sorted(count for count, _ in picture.getcolors(picture.width * picture.height))
        # The bare panel has a few border pixels of its own.
        return sum(counts[:-1]) > 150

    def click_icon(self, button=1):
        self._desktop.screen.click_middle(self.area(), button)

    def items(self):
        return registered_items(self._desktop.bus)


def registered_items(bus):
    """Bus names and paths of the registered status items."""
    if not bus.owner(WATCHER):
        return []
    registered = bus.read(
        WATCHER, "/StatusNotifierWatcher", WATCHER, "RegisteredStatusNotifierItems")
    return [(item.partition("/")[0], "/" + item.partition("/")[2]) for item in registered]


class EmbeddingTray:
    """A tray that embeds the windows of icons. Runs the command, whose window has that
    instance name, for a `with` block."""

    def __init__(self, desktop, instance, *command):
        self._desktop, self._instance, self._command = desktop, instance, command

    def __enter__(self):
        self._process = self._desktop.start(self._command)
        self._owner = wait_until(lambda: self._desktop.screen.selection_owner(_SELECTION),
                                 f"{self._command[0]} shows no tray")
        return self

    def __exit__(self, *_):
        """Ends the tray as a crash would."""
        self._desktop.processes.end(self._process, signal.SIGKILL)
        wait_until(lambda: self._desktop.screen.selection_owner(_SELECTION) != self._owner,
                   f"{self._command[0]} stays")

    def icon_area(self):
        """Where the program's icon is: (x, y, width, height), or None."""
        screen = self._desktop.screen
        icons = [screen.shown_inside(window[0], "quillbar")
                 for window in screen.windows(instance=self._instance)]
        return next((screen.area(icon) for icon in icons if icon), None)

    def icon(self):
        """The icon's picture, or None."""
        area = self.icon_area()
        try:
            return self._desktop.screen.picture(area) if area else None
        except BadMatch:
            # On its way into the tray a window may be off the screen.
            return None

    def click_icon(self, button=1):
        area = wait_until(self.icon_area, "the tray has no icon")
        self._desktop.screen.click_middle(area, button)
