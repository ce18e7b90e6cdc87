"""A portal that tells whether the desktop prefers dark colours, run as a process of its own.

Every line on its standard input, "dark" or "light", is a change.
"""

import sys

from gi.repository import Gio, GLib

_NAME = "org.freedesktop.portal.Desktop"
_PATH = "/org/freedesktop/portal/desktop"
_SETTINGS = "org.freedesktop.portal.Settings"
_KEY = ("org.freedesktop.appearance", "color-scheme")
_XML = f"""<node><interface name="{_SETTINGS}">
  <method name="Read">
    <arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="v" direction="out"/>
  </method>
  <signal name="SettingChanged"><arg type="s"/><arg type="s"/><arg type="v"/></signal>
</interface></node>"""


class Portal:
    def __init__(self, bus, is_dark):
        self._bus, self._is_dark = bus, is_dark
        bus.register_object(_PATH, Gio.DBusNodeInfo.new_for_xml(_XML).interfaces[0], self._answer)
        GLib.io_add_watch(sys.stdin, GLib.IO_IN, self._change)

    def _preference(self):
        return GLib.Variant("u", 1 if self._is_dark else 2)

    def _answer(self, _bus, _sender, _path, _interface, _method, arguments, invocation):
        if arguments.unpack() == _KEY:
            inner = GLib.Variant("v", self._preference())
            invocation.return_value(GLib.Variant("(v)", (inner,)))
        else:
            invocation.return_dbus_error("org.freedesktop.portal.Error.NotFound", "no such setting")

    def _change(self, source, _condition):
        line = source.readline()
        if not line:
            return False
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
