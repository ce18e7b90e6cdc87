"""A portal, run as a process of its own: whether the desktop prefers dark colours, and hotkeys.

A line on its standard input is a change, "dark" or "light", or the press of a hotkey: "press" and
what the hotkey is for. Every question for hotkeys is a line of JSON on its standard output.
"""

import json

import sys

from gi.repository import Gio, GLib

_NAME = "org.freedesktop.portal.Desktop"
_PATH = "/org/freedesktop/portal/desktop"
_SETTINGS = "org.freedesktop.portal.Settings"
_SHORTCUTS = "org.freedesktop.portal.GlobalShortcuts"
_REQUEST = "org.freedesktop.portal.Request"
_KEY = ("org.freedesktop.appearance", "color-scheme")
_XML = f"""<node><interface name="{_SETTINGS}">
  <method name="Read">
    <arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="v" direction="out"/>
  </method>
  <signal name="SettingChanged"><arg type="s"/><arg type="s"/><arg type="v"/></signal>
</interface><interface name="{_SHORTCUTS}">
  <method name="CreateSession">
    <arg type="a{{sv}}" direction="in"/><arg type="o" direction="out"/>
  </method>
  <method name="BindShortcuts">
    <arg type="o" direction="in"/><arg type="a(sa{{sv}})" direction="in"/>
    <arg type="s" direction="in"/><arg type="a{{sv}}" direction="in"/>
    <arg type="o" direction="out"/>
  </method>
  <signal name="Activated">
    <arg type="o"/><arg type="s"/><arg type="t"/><arg type="a{{sv}}"/>
  </signal>
  <property name="version" type="u" access="read"/>
</interface></node>"""


class Portal:
    def __init__(self, bus, is_dark):
        self._bus, self._is_dark = bus, is_dark
        self._session, self._ids = None, {}
        settings, shortcuts = Gio.DBusNodeInfo.new_for_xml(_XML).interfaces
        bus.register_object(_PATH, settings, self._answer)
        bus.register_object(_PATH, shortcuts, self._answer_shortcuts, self._version)
        GLib.io_add_watch(sys.stdin, GLib.IO_IN, self._change)

    def _preference(self):
        return GLib.Variant("u", 1 if self._is_dark else 2)

    def _answer(self, _bus, _sender, _path, _interface, _method, arguments, invocation):
        if arguments.unpack() == _KEY:
            inner = GLib.Variant("v", self._preference())
            invocation.return_value(GLib.Variant("(v)", (inner,)))
        else:
            invocation.return_dbus_error("org.freedesktop.portal.Error.NotFound", "no such setting")

    def _version(self, *_):
        return GLib.Variant("u", 1)

    def _answer_shortcuts(self, bus, sender, _path, _interface, method, arguments, invocation):
        values = arguments.unpack()
        options, client = values[-1], sender[1:].replace(".", "_")
        request = f"{_PATH}/request/{client}/{options['handle_token']}"
        results = {}
        if method == "CreateSession":
            self._session = f"{_PATH}/session/{client}/{options['session_handle_token']}"
            results["session_handle"] = GLib.Variant("s", self._session)
        else:
            asked = dict(values[1])
            self._ids = {about["description"]: known for known, about in asked.items()}
            print(json.dumps({about["description"]: about["preferred_trigger"]
                              for about in asked.values()}), flush=True)
        invocation.return_value(GLib.Variant("(o)", (request,)))
        bus.emit_signal(None, request, _REQUEST, "Response", GLib.Variant("(ua{sv})", (0, results)))

    def _press(self, description):
        self._bus.emit_signal(None, _PATH, _SHORTCUTS, "Activated", GLib.Variant(
            "(osta{sv})", (self._session, self._ids[description], 1, {})))

    def _change(self, source, _condition):
        line = source.readline()
        if not line:
            return False
        if line.startswith("press "):
            self._press(line[6:].rstrip("\n"))
            return True
        self._is_dark = line.strip() == "dark"
        self._bus.emit_signal(None, _PATH, _SETTINGS, "SettingChanged",
                              GLib.Variant("(ssv)", (*_KEY, self._preference())))
        return True


def main():
    bus = Gio.bus_get_sync(Gio.BusType.SESSION)
    # Kept for as long as the loop runs.
    portal = Portal(bus, sys.argv[1] == "dark")  # noqa: F841
    Gio.bus_own_name_on_connection(bus, _NAME, Gio.BusNameOwnerFlags.NONE, None, None)
    GLib.MainLoop().run()


if __name__ == "__main__":
    main()
