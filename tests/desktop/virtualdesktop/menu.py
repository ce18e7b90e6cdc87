"""The program's menu as a panel reads it: com.canonical.dbusmenu."""

import re
from dataclasses import dataclass, field

from gi.repository import GLib

_INTERFACE = "com.canonical.dbusmenu"


@dataclass
class Row:
    id: int
    name: str = ""
    separator: bool = False
    enabled: bool = True
    visible: bool = True
    shortcut: list = field(default_factory=list)
    icon: bytes = b""
    rows: list = field(default_factory=list)


def plain_text(label):
    """A label as the host shows it: `_x` marks a key, `__` is one underscore."""
    return re.sub("_(.?)", r"\1", label, flags=re.DOTALL)


class ExportedMenu:
    def __init__(self, bus, name, path):
        self._bus, self._name, self._path = bus, name, path

    @property
    def address(self):
        """The bus name and the path of the menu."""
        return self._name, self._path

    def revision(self):
        return self._layout(["type"])[0]

    def is_filled(self):
        """Whether there are rows: they come after the icon, when the tool has listed."""
        return bool(self._layout(["type"])[1][2])

    def rows(self, images=True):
        """The rows; unpacking the images of thousands takes Python long."""
        wanted = [] if images else ["type", "label", "enabled", "visible", "shortcut"]
        return [_row(child) for child in self._layout(wanted)[1][2]]

    def row(self, title, images=False):
        """The first row of that title; an error names the rows there are."""
        rows = self.rows(images)
        for row in rows:
            if row.name == title:
                return row
        raise AssertionError(f"no row {title!r} in {[row.name for row in rows]}")

    def titles(self):
        return ["---" if row.separator else row.name for row in self.rows(images=False)]

    def click(self, title):
        """What a host sends when the person clicks the row."""
        self.send(self.row(title).id)

    def send(self, row_id, event="clicked"):
        self._bus.call(self._name, self._path, _INTERFACE, "Event", "(isvu)",
                       row_id, event, GLib.Variant("i", 0), 0)

    def _layout(self, wanted=()):
        return self._bus.call(self._name, self._path, _INTERFACE, "GetLayout", "(iias)", 0, -1,
                              wanted)


def _row(layout):
    row_id, values, children = layout
    return Row(
        id=row_id,
        name=plain_text(values.get("label", "")),
        separator=values.get("type") == "separator",
        enabled=values.get("enabled", True),
        visible=values.get("visible", True),
        shortcut=values.get("shortcut", []),
        icon=bytes(values.get("icon-data", b"")),
        rows=[_row(child) for child in children],
    )
