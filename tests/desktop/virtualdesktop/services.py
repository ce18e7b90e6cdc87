"""The desktop's services that tests stand in for, each on a connection and a thread of its own."""

import threading

from gi.repository import Gio, GLib

from .bus import Bus
from .waiting import wait_until

_SETTINGS = "org.freedesktop.portal.Settings"
_SCHEME = ("org.freedesktop.appearance", "color-scheme")


class Service:
    """From start() to stop(), or for a `with` block. The subclass answers calls, on the thread."""

    def __init__(self, desktop):
        self._desktop = desktop
        self._goes_on = threading.Event()
        self._goes_on.set()
        # The names of the methods, those too whose answers wait for go_on().
        self.calls = []

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
            self._bus.connection.register_object(self.PATH, interface, self._call)
        Gio.bus_own_name_on_connection(
            self._bus.connection, self.NAME, Gio.BusNameOwnerFlags.NONE, None, None)
        self._loop.run()

    def _call(self, _bus, _sender, _path, _interface, method, values, invocation):
        self.calls.append(method)
        self._goes_on.wait()
        invocation.return_value(self.answer(method, *values.unpack()))


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
      <signal name="ActivationToken"><arg type="u"/><arg type="s"/></signal>
      <signal name="ActionInvoked"><arg type="u"/><arg type="s"/></signal>
    </interface></node>"""

    def __init__(self, desktop):
        super().__init__(desktop)
        self.clear()

    def click(self, number, token):
        for signal, value in ("ActivationToken", token), ("ActionInvoked", "default"):
            self._bus.connection.emit_signal(
                None, self.PATH, self.NAME, signal, GLib.Variant("(us)", (number, value)))

    def shown(self):
        """Everything shown since the start or the last clear(), oldest first."""
        return list(self._shown)

    def clear(self):
        self._shown = []

    def answer(self, method, *values):
        if method == "GetCapabilities":
            return GLib.Variant("(as)", (["actions", "body", "body-markup"],))
        _, _, _, summary, body, actions, hints, _ = values
        self._shown.append(
            {"summary": summary, "body": body, "actions": actions, "hints": hints})
        return GLib.Variant("(u)", (len(self._shown),))


class HostlessWatcher(Service):
    """Takes status items that nothing shows; says so once, then hangs."""

    NAME, PATH = "org.kde.StatusNotifierWatcher", "/StatusNotifierWatcher"
    XML = f"""<node>
      <interface name="{NAME}">
        <method name="RegisterStatusNotifierItem"><arg direction="in" type="s"/></method>
      </interface>
      <interface name="org.freedesktop.DBus.Introspectable">
        <method name="Introspect"><arg direction="out" type="s"/></method>
      </interface>
      <interface name="org.freedesktop.DBus.Properties">
        <method name="Get">
          <arg type="s" direction="in"/><arg type="s" direction="in"/>
          <arg type="v" direction="out"/>
        </method>
      </interface>
    </node>"""

    def answer(self, method, *_):
        if method == "Introspect":
            return GLib.Variant("(s)", (self.XML,))
        if method == "Get":
            if self.calls.count(method) == 1:
                self.hang()
            return GLib.Variant("(v)", (GLib.Variant("b", False),))
        return None


class Portal(Service):
    """Whether dark colours are preferred."""

    NAME, PATH = "org.freedesktop.portal.Desktop", "/org/freedesktop/portal/desktop"
    XML = f"""<node><interface name="{_SETTINGS}">
      <method name="Read">
        <arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="v" direction="out"/>
      </method>
    </interface></node>"""

    def __init__(self, desktop, scheme):
        super().__init__(desktop)
        self._scheme = scheme

    def change(self, scheme):
        """The person chooses "dark" or "light"."""
        self._scheme = scheme
        self._bus.connection.emit_signal(
            None, self.PATH, _SETTINGS, "SettingChanged",
            GLib.Variant("(ssv)", (*_SCHEME, self._preference())))

    def answer(self, _method, *asked):
        value = self._preference() if asked == _SCHEME else GLib.Variant("s", "")
        return GLib.Variant("(v)", (GLib.Variant("v", value),))

    def _preference(self):
        return GLib.Variant("u", 1 if self._scheme == "dark" else 2)
