"""What assistive programs are told about a program's windows, menus and alerts."""

from .bus import Bus
from .waiting import wait_until

_ACCESSIBLE = "org.a11y.atspi.Accessible"
_ACTION = "org.a11y.atspi.Action"
_REGISTRY = "org.a11y.atspi.Registry"
_ROOT = "/org/a11y/atspi/accessible/root"
_STATES = {"checked": 4, "enabled": 8, "focused": 12, "selected": 23, "shown": 25}
_PROPERTIES = "org.freedesktop.DBus.Properties"
_QUESTIONS = [
    (_ACCESSIBLE, "GetState"), (_ACCESSIBLE, "GetRoleName"),
    (_PROPERTIES, "Get", "(ss)", _ACCESSIBLE, "Name"),
    (_PROPERTIES, "Get", "(ss)", _ACCESSIBLE, "Description")]


class Element:
    """Its name, role and description, and whether it is in each of the states."""

    def __init__(self, bus, reference, answers):
        self._bus, self._reference = bus, reference
        (states,), (self.role,), (self.name,), (self.description,) = answers
        bits = states[0] | states[1] << 32
        for state, bit in _STATES.items():
            setattr(self, state, bool(bits >> bit & 1))

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
        # Menus are nobody's children: assistive programs learn of them when they open.
        self._opened = []
        self.bus.call(_REGISTRY, "/org/a11y/atspi/registry", _REGISTRY, "RegisterEvent", "(s)",
                      "object:state-changed:showing")
        self.bus.on_signal(None, "org.a11y.atspi.Event.Object", "StateChanged", self._note_opening)

    def close(self):
        self.bus.close()

    def elements(self, process, role=None):
        """Everything the process shows, outermost first."""
        # Level by level, all of one at once: each answer alone takes long on a busy machine.
        children, found, level = {}, {}, self._programs(process)
        top = level
        while level:
            found.update(zip(level, self._look(level)))
            children.update(zip(level, self._children(level)))
            level = [child for reference in level for child in children[reference]]

        def inwards(references):
            for reference in references:
                yield found[reference]
                yield from inwards(children[reference])

        return [element for element in inwards(top)
                if element and element.shown and role in (None, element.role)]

    def windows(self, process):
        """The windows that the process shows."""
        windows = [window for below in self._children(self._programs(process)) for window in below]
        return [window for window in self._look(windows) if window and window.shown]

    def open_menu_rows(self, process):
        """What the menu that opened last tells of its rows, separators left out."""
        for reference in reversed(self._opened):
            if self.bus.process_of(reference[0]) == process:
                (rows,) = self._children([reference])
                return [row for row in self._look(rows) if row and row.role != "separator"]
        return []

    def wait_for(self, process, role, name):
        return wait_until(
            lambda: next((element for element in self.elements(process, role)
                          if element.name == name), None),
            lambda: f"no {role} {name!r} among "
                    f"{[(element.role, element.name) for element in self.elements(process)]}")

    def _programs(self, process):
        (programs,) = self._children([(_REGISTRY, _ROOT)])
        return [program for program in programs if self.bus.process_of(program[0]) == process]

    def _note_opening(self, path, arguments, sender):
        if arguments[:2] == ("showing", 1):
            self._opened.append((sender, path))

    def _children(self, references):
        """The children of each; of one that has vanished, none."""
        return [answer[0] if answer else [] for answer in self.bus.call_all(
            (*reference, _ACCESSIBLE, "GetChildren") for reference in references)]

    def _look(self, references):
        """An element for each; None for one that has vanished."""
        answers = iter(self.bus.call_all(
            (*reference, *question) for reference in references for question in _QUESTIONS))
        each = [(reference, [next(answers) for _ in _QUESTIONS]) for reference in references]
        return [None if None in told else Element(self.bus, reference, told)
                for reference, told in each]
