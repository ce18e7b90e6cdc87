"""The desktop's services that tests stand in for, each run as a process of its own.

`notifications FILE CAPABILITY...` writes down what it is asked to show, one JSON object a line.
`portal dark|light` answers what colours are preferred, and has hotkeys: every question for them is a
line of JSON on its standard output. A line on its standard input is a change, "dark" or "light", or
the press of a hotkey, "press" and what the hotkey is for.
"""

import json
import sys

from gi.repository import Gio, GLib

_PORTAL_PATH = "/org/freedesktop/portal/desktop"
_SETTINGS = "org.freedesktop.portal.Settings"
_SHORTCUTS = "org.freedesktop.portal.GlobalShortcuts"
_SCHEME = ("org.freedesktop.appearance", "color-scheme")
_NOTIFICATIONS_XML = """<node><interface name="org.freedesktop.Notifications">
  <method name="GetCapabilities"><arg direction="out" type="as"/></method>
  <method name="Notify">
    <arg direction="in" type="s"/><arg direction="in" type="u"/><arg direction="in" type="s"/>
    <arg direction="in" type="s"/><arg direction="in" type="s"/><arg direction="in" type="as"/>
    <arg direction="in" type="a{sv}"/><arg direction="in" type="i"/>
    <arg direction="out" type="u"/>
  </method>
</interface></node>"""
_PORTAL_XML = f"""<node><interface name="{_SETTINGS}">
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


class Notifications:
    def __init__(self, path, *capabilities):
        self._path, self._capabilities, self._count = path, capabilities, 0

    def answer(self, method, _sender, *values):
        if method == "GetCapabilities":
            return GLib.Variant("(as)", (self._capabilities,))
        _, _, _, summary, body, _, hints, _ = values
        with open(self._path, "a", encoding="utf-8") as file:
            print(json.dumps({"summary": summary, "body": body, "hints": hints}, default=repr),
                  file=file)
        self._count += 1
        return GLib.Variant("(u)", (self._count,))


class Portal:
    def __init__(self, bus, scheme):
        self._bus, self._scheme = bus, scheme
        self._session, self._ids = None, {}
        GLib.io_add_watch(sys.stdin, GLib.IO_IN, self._change)

    def _preference(self):
        return GLib.Variant("u", 1 if self._scheme == "dark" else 2)

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
            print(json.dumps({about["description"]: about["preferred_trigger"]
                              for about in asked.values()}), flush=True)
        # The answer to the call comes first.
        GLib.idle_add(self._emit, request, "org.freedesktop.portal.Request", "Response",
                      GLib.Variant("(ua{sv})", (0, results)))
        return GLib.Variant("(o)", (request,))

    def _change(self, source, _condition):
        word, _, description = source.readline().rstrip("\n").partition(" ")
        if word == "press":
            self._emit(_PORTAL_PATH, _SHORTCUTS, "Activated", GLib.Variant(
                "(osta{sv})", (self._session, self._ids[description], 1, {})))
        elif word:
            self._scheme = word
            self._emit(_PORTAL_PATH, _SETTINGS, "SettingChanged",
                       GLib.Variant("(ssv)", (*_SCHEME, self._preference())))
        return bool(word)

    def _emit(self, path, interface, name, values):
        self._bus.emit_signal(None, path, interface, name, values)


def serve(bus, name, path, xml, service):
    def answer(_bus, sender, _path, _interface, method, values, invocation):
        invocation.return_value(service.answer(method, sender, *values.unpack()))

    for interface in Gio.DBusNodeInfo.new_for_xml(xml).interfaces:
        bus.register_object(path, interface, answer, lambda *_: GLib.Variant("u", 1))
    Gio.bus_own_name_on_connection(bus, name, Gio.BusNameOwnerFlags.NONE, None, None)
    GLib.MainLoop().run()


def main():
    bus = Gio.bus_get_sync(Gio.BusType.SESSION)
    kind, *arguments = sys.argv[1:]
    if kind == "portal":
        serve(bus, "org.freedesktop.portal.Desktop", _PORTAL_PATH, _PORTAL_XML,
              Portal(bus, *arguments))
    else:
        serve(bus, "org.freedesktop.Notifications", "/org/freedesktop/Notifications",
              _NOTIFICATIONS_XML, Notifications(*arguments))


if __name__ == "__main__":
    main()
