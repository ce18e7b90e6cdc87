"""What assistive programs are told about a program's windows, menus and alerts."""

import contextlib

from gi.repository import GLib

from .bus import Bus
from .waiting import wait_until

_ACCESSIBLE = "org.a11y.atspi.Accessible"
_ACTION = "org.a11y.atspi.Action"
_REGISTRY = "org.a11y.atspi.Registry"
_ROOT = "/org/a11y/atspi/accessible/root"
_STATES = {"checked": 4, "enabled": 8, "focused": 12, "selected": 23, "shown": 25}
_PROPERTIES = "org.freedesktop.DBus.Properties"


class Element:
    """Its name, role and description, and whether it is in each of the states."""

    def __init__(self, bus, reference):
        self._bus, self._reference = bus, reference
        low, high = self._call(_ACCESSIBLE, "GetState")
        for state, bit in _STATES.items():
            setattr(self, state, bool((low | high << 32) >> bit & 1))
        self.role = self._call(_ACCESSIBLE, "GetRoleName")
        self.name, self.description = (
            self._call(_PROPERTIES, "Get", "(ss)", _ACCESSIBLE, key)
            for key in ("Name", "Description"))

    def act(self, name):
        """Does one of the things that the element offers to do."""
        offered = [action[0] for action in self._call(_ACTION, "GetActions")]
        self._call(_ACTION, "DoAction", "(i)", offered.index(name))

    def text(self):
        """What an editable element holds."""
        return self._call("org.a11y.atspi.Text", "GetText", "(ii)", 0, -1)

    def extents(self):
        """(x, y, width, height) on the screen."""
        return self._call("org.a11y.atspi.Component", "GetExtents", "(u)", 0)

    def _call(self, *call):
        return self._bus.call(*self._reference, *call)[0]


class AccessibleTree:
    def __init__(self, session_bus):
        address = session_bus.call("org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress")[0]
        self.bus = Bus(address)
        self.bus.call("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                      "StartServiceByName", "(su)", _REGISTRY, 0)
    def close(self):
        self.bus.close()

    def elements(self, process, role=None):
        """Everything the process shows, outermost first."""
        def inwards(references):
            for reference in references:
                yield from self._look([reference])
                yield from inwards(self._children(reference))

        return [element for element in inwards(self._programs(process))
                if element.shown and role in (None, element.role)]

    def windows(self, process):
        """The windows that the process shows."""
        return [window for program in self._programs(process)
                for window in self._look(self._children(program)) if window.shown]

    def wait_for(self, process, role, name):
        return wait_until(
            lambda: next((element for element in self.elements(process, role)
                          if element.name == name), None),
            lambda: f"no {role} {name!r} among "
                    f"{[(element.role, element.name) for element in self.elements(process)]}")

    def _programs(self, process):
        return [program for program in self._children((_REGISTRY, _ROOT))
                if self.bus.process_of(program[0]) == process]

    def _children(self, reference):
        """Of one that has vanished, none."""
        try:
            return self.bus.call(*reference, _ACCESSIBLE, "GetChildren")[0]
        except GLib.Error:
            return []

    def _look(self, references):
        """An element for each that has not vanished."""
        for reference in references:
            with contextlib.suppress(GLib.Error):
                yield Element(self.bus, reference)
