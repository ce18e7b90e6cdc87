"""What assistive programs are told about a program's windows, menus and alerts."""

from dataclasses import dataclass

from gi.repository import GLib

from .bus import Bus
from .waiting import wait_until

_ACCESSIBLE = "org.a11y.atspi.Accessible"
_ACTION = "org.a11y.atspi.Action"
_REGISTRY = "org.a11y.atspi.Registry"
_ROOT = "/org/a11y/atspi/accessible/root"
_STATE_CHECKED = 4
_STATE_ENABLED = 8
_STATE_FOCUSED = 12
_STATE_SELECTED = 23
_STATE_SHOWING = 25


@dataclass
class Element:
    name: str
    role: str
    shown: bool
    enabled: bool
    checked: bool
    focused: bool
    selected: bool
    description: str
    _tree: "AccessibleTree"
    _reference: tuple

    def press(self):
        """Does what a click on the element does."""
        self._tree.bus.call(*self._reference, _ACTION, "DoAction", "(i)", 0)

    def act(self, name):
        """Does one of the things that the element offers to do."""
        offered = [action[0] for action in
                   self._tree.bus.call(*self._reference, _ACTION, "GetActions")[0]]
        self._tree.bus.call(*self._reference, _ACTION, "DoAction", "(i)", offered.index(name))

    def text(self):
        """What an editable element holds."""
        return self._tree.bus.call(
            *self._reference, "org.a11y.atspi.Text", "GetText", "(ii)", 0, -1)[0]

    def extents(self):
        """(x, y, width, height) on the screen."""
        return self._tree.bus.call(
            *self._reference, "org.a11y.atspi.Component", "GetExtents", "(u)", 0)[0]


class AccessibleTree:
    def __init__(self, session_bus):
        address = session_bus.call("org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress")[0]
        self.bus = Bus(address)
        self.bus.call("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                      "StartServiceByName", "(su)", _REGISTRY, 0)
        # Menus are nobody's children: assistive programs learn of them when they open.
        self._opened = []
        self.bus.call(_REGISTRY, "/org/a11y/atspi/registry", _REGISTRY, "RegisterEvent", "(s)",
                      "object:state-changed:showing")
        self.bus.on_signal(None, "org.a11y.atspi.Event.Object", "StateChanged", self._note_opening)

    def close(self):
        self.bus.close()

    def elements(self, process, role=None):
        """Everything the process shows, outermost first."""
        found = []
        for program in self._programs(process):
            self._collect(program, found)
        return [element for element in found if element.shown and role in (None, element.role)]

    def windows(self, process):
        """The windows that the process shows."""
        try:
            found = [self._element(child) for program in self._programs(process)
                     for child in self._children(program)]
        except GLib.Error:
            # A window may vanish while it is looked at.
            return []
        return [window for window in found if window.shown]

    def _programs(self, process):
        found = []
        for program in self._children((_REGISTRY, _ROOT)):
            try:
                if self.bus.process_of(program[0]) == process:
                    found.append(program)
            except GLib.Error:
                continue
        return found

    def open_menu_rows(self, process):
        """What the menu that opened last tells of its rows, separators left out."""
        for reference in reversed(self._opened):
            try:
                if self.bus.process_of(reference[0]) == process:
                    rows = [self._element(child) for child in self._children(reference)]
                    return [row for row in rows if row.role != "separator"]
            except GLib.Error:
                continue
        return []

    def _note_opening(self, path, arguments, sender):
        if arguments[:2] == ("showing", 1):
            self._opened.append((sender, path))

    def wait_for(self, process, role, name):
        return wait_until(
            lambda: next((element for element in self.elements(process, role)
                          if element.name == name), None),
            lambda: f"no {role} {name!r} among "
                    f"{[(element.role, element.name) for element in self.elements(process)]}")

    def _children(self, reference):
        return self.bus.call(*reference, _ACCESSIBLE, "GetChildren")[0]

    def _collect(self, reference, found):
        try:
            found.append(self._element(reference))
            for child in self._children(reference):
                self._collect(child, found)
        except GLib.Error:
            # An element may vanish while it is looked at.
            return

    def _element(self, reference):
        states = self.bus.call(*reference, _ACCESSIBLE, "GetState")[0]
        bits = states[0] | states[1] << 32
        return Element(
            name=self.bus.read(*reference, _ACCESSIBLE, "Name"),
            role=self.bus.call(*reference, _ACCESSIBLE, "GetRoleName")[0],
            shown=bool(bits >> _STATE_SHOWING & 1),
            enabled=bool(bits >> _STATE_ENABLED & 1),
            checked=bool(bits >> _STATE_CHECKED & 1),
            focused=bool(bits >> _STATE_FOCUSED & 1),
            selected=bool(bits >> _STATE_SELECTED & 1),
            description=self.bus.read(*reference, _ACCESSIBLE, "Description"),
            _tree=self,
            _reference=reference,
        )
