"""The program's status item and its menu as a panel sees them."""

import re
from dataclasses import dataclass

from gi.repository import GLib

_ITEM = "org.kde.StatusNotifierItem"
_MENU = "com.canonical.dbusmenu"


class TrayItem:
    def __init__(self, bus, name, path):
        self._bus, self._name, self._path = bus, name, path
        self.menu = ExportedMenu(bus, name, bus.read(name, path, _ITEM, "Menu"))

    def call(self, method, signature, *arguments):
        return self._bus.call(self._name, self._path, _ITEM, method, signature, *arguments)

    @property
    def icon_name(self):
        return self._bus.read(self._name, self._path, _ITEM, "IconName")


@dataclass
class Row:
    id: int
    name: str
    icon: bytes


class ExportedMenu:
    def __init__(self, bus, name, path):
        self._bus, self._name, self._path = bus, name, path

    def rows(self):
        """The rows that are no separators; none until the tool has listed."""
        _, (_, _, children) = self._bus.call(
            self._name, self._path, _MENU, "GetLayout", "(iias)", 0, -1, ["label", "icon-data"])
        return [Row(row_id, _plain_text(values["label"]), bytes(values.get("icon-data", b"")))
                for row_id, values, _ in children if "label" in values]

    def titles(self):
        return [row.name for row in self.rows()]

    def row(self, title):
        """The first row of that title; an error names the rows there are."""
        found = next((row for row in self.rows() if row.name == title), None)
        assert found, f"no row {title!r} in {self.titles()}"
        return found

    def click(self, title):
        """What a host sends when the person clicks the row."""
        self.send(self.row(title).id)

    def send(self, row_id, event="clicked"):
        self._bus.call(self._name, self._path, _MENU, "Event", "(isvu)",
                       row_id, event, GLib.Variant("i", 0), 0)


def _plain_text(label):
    """A label as the host shows it: `_x` marks a key, `__` is one underscore."""
    return re.sub("_(.?)", r"\1", label, flags=re.DOTALL)
