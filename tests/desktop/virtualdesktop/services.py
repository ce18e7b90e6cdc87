"""The desktop's services that tests stand in for, each on a connection and a thread of its own."""

import threading

from gi.repository import Gio, GLib

from .bus import Bus
from .waiting import wait_until

_PORTAL_PATH = "/org/freedesktop/portal/desktop"
_SETTINGS = "org.freedesktop.portal.Settings"
_SHORTCUTS = "org.freedesktop.portal.GlobalShortcuts"
_SCHEME = ("org.freedesktop.appearance", "color-scheme")


class Service:
    """From start() to stop(), or for a `with` block. The subclass answers calls, on the thread."""

    def __init__(self, desktop):
        self._desktop = desktop
        self._goes_on = threading.Event()
        self._goes_on.set()

    def start(self):
        self._loop = GLib.MainLoop(GLib.MainContext())
        self._bus = Bus(self._desktop.environment["DBUS_SESSION_BUS_ADDRESS"])
        threading.Thread(target=self._serve, daemon=True).start()
        wait_until(lambda: self._desktop.bus.owner(self.NAME), f"{self.NAME} did not start")

    def stop(self):
        self._bus.close()
        self._loop.quit()
        wait_until(lambda: not self._desktop.bus.owner(self.NAME), f"{self.NAME} stayed")

    def hang(self):
        """Takes calls and answers none until go_on()."""
        self._goes_on.clear()

    def go_on(self):
        self._goes_on.set()

    def __enter__(self):
        self.start()
        return self

    def __exit__(self, *_):
        self.stop()

    def _serve(self):
        self._loop.get_context().push_thread_default()
        for interface in Gio.DBusNodeInfo.new_for_xml(self.XML).interfaces:
            self._bus.connection.register_object(
                self.PATH, interface, self._call, lambda *_: GLib.Variant("u", 1))
        Gio.bus_own_name_on_connection(
            self._bus.connection, self.NAME, Gio.BusNameOwnerFlags.NONE, None, None)
        self._loop.run()

    def _call(self, _bus, sender, _path, _interface, method, values, invocation):
        self._goes_on.wait()
        invocation.return_value(self.answer(method, sender, *values.unpack()))

    def _emit(self, path, interface, name, values):
        self._bus.connection.emit_signal(None, path, interface, name, values)


class Notifications(Service):
    """Keeps what it is asked to show."""

    NAME, PATH = "org.freedesktop.Notifications", "/org/freedesktop/Notifications"
    XML = f"""<node><interface name="{NAME}">
      <method name="GetCapabilities"><arg direction="out" type="as"/></method>
      <method name="Notify">
        <arg direction="in" type="s"/><arg direction="in" type="u"/><arg direction="in" type="s"/>
        <arg direction="in" type="s"/><arg direction="in" type="s"/><arg direction="in" type="as"/>
        <arg direction="in" type="a{{sv}}"/><arg direction="in" type="i"/>
        <arg direction="out" type="u"/>
      </method>
    </interface></node>"""

    def __init__(self, desktop):
        super().__init__(desktop)
        self.clear()

    def shown(self):
        """Everything shown since the start or the last clear(), oldest first."""
        return list(self._shown)

    def clear(self):
        self._shown = []

    def answer(self, method, _sender, *values):
        if method == "GetCapabilities":
            return GLib.Variant("(as)", (["body", "body-markup"],))
        _, _, _, summary, body, _, hints, _ = values
        self._shown.append({"summary": summary, "body": body, "hints": hints})
        return GLib.Variant("(u)", (len(self._shown),))


class Portal(Service):
    """Whether dark colours are preferred, and hotkeys."""

    NAME, PATH = "org.freedesktop.portal.Desktop", _PORTAL_PATH
    XML = f"""<node><interface name="{_SETTINGS}">
      <method name="Read">
        <arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="v" direction="out"/>
      </method>
    </interface><interface name="{_SHORTCUTS}">
      <method name="CreateSession">
        <arg type="a{{sv}}" direction="in"/><arg type="o" direction="out"/>
      </method>
      <method name="BindShortcuts">
        <arg type="o" direction="in"/><arg type="a(sa{{sv}})" direction="in"/>
        <arg type="s" direction="in"/><arg type="a{{sv}}" direction="in"/>
        <arg type="o" direction="out"/>
      </method>
      <property name="version" type="u" access="read"/>
    </interface></node>"""

    def __init__(self, desktop, scheme="light"):
        super().__init__(desktop)
        self._scheme, self._session, self._ids, self._questions = scheme, None, {}, []

    def change(self, scheme):
        """The person chooses "dark" or "light"."""
        self._scheme = scheme
        self._emit(_PORTAL_PATH, _SETTINGS, "SettingChanged",
                   GLib.Variant("(ssv)", (*_SCHEME, self._preference())))

    def press(self, description):
        """The person presses the hotkey that is for that."""
        self._emit(_PORTAL_PATH, _SHORTCUTS, "Activated", GLib.Variant(
            "(osta{sv})", (self._session, self._ids[description], 1, {})))

    def next_question(self):
        """The next set of hotkeys that a program asks for: triggers by what they are for."""
        wait_until(lambda: self._questions, "no hotkeys are asked for")
        return self._questions.pop(0)

    def answer(self, method, sender, *values):
        if method == "Read":
            wanted = self._preference() if values == _SCHEME else GLib.Variant("s", "")
            return GLib.Variant("(v)", (GLib.Variant("v", wanted),))
        options, client = values[-1], sender[1:].replace(".", "_")
        request = f"{_PORTAL_PATH}/request/{client}/{options['handle_token']}"
        results = {}
        if method == "CreateSession":
            self._session = f"{_PORTAL_PATH}/session/{client}/{options['session_handle_token']}"
            results["session_handle"] = GLib.Variant("s", self._session)
        else:
            asked = dict(values[1])
            self._ids = {about["description"]: known for known, about in asked.items()}
            self._questions.append({about["description"]: about["preferred_trigger"]
                                    for about in asked.values()})
        # Sent before the answer to the call: clients listen before they ask.
        self._emit(request, "org.freedesktop.portal.Request", "Response",
                   GLib.Variant("(ua{sv})", (0, results)))
        return GLib.Variant("(o)", (request,))

    def _preference(self):
        return GLib.Variant("u", 1 if self._scheme == "dark" else 2)
