"""A notification service that writes down what it is asked to show, one JSON object a line.

Arguments: the file to write to, then the capabilities to announce.
"""

import json
import sys

from gi.repository import Gio, GLib

_INTERFACE = """
<node>
  <interface name="org.freedesktop.Notifications">
    <method name="GetCapabilities"><arg direction="out" type="as"/></method>
    <method name="GetServerInformation">
      <arg direction="out" type="s"/><arg direction="out" type="s"/>
      <arg direction="out" type="s"/><arg direction="out" type="s"/>
    </method>
    <method name="Notify">
      <arg direction="in" type="s"/><arg direction="in" type="u"/><arg direction="in" type="s"/>
      <arg direction="in" type="s"/><arg direction="in" type="s"/><arg direction="in" type="as"/>
      <arg direction="in" type="a{sv}"/><arg direction="in" type="i"/>
      <arg direction="out" type="u"/>
    </method>
    <method name="CloseNotification"><arg direction="in" type="u"/></method>
  </interface>
</node>
"""


class _Recorder:
    def __init__(self, path, capabilities):
        self._file = open(path, "a", encoding="utf-8", buffering=1)
        self._capabilities = capabilities
        self._count = 0

    def answer(self, _bus, _sender, _path, _interface, method, parameters, invocation):
        replies = {
            "GetCapabilities": lambda: GLib.Variant("(as)", (self._capabilities,)),
            "GetServerInformation": lambda: GLib.Variant(
                "(ssss)", ("recorder", "Quillbar", "1", "1.2")),
            "Notify": lambda: self._notify(*parameters.unpack()),
            "CloseNotification": lambda: None,
        }
        invocation.return_value(replies[method]())

    def _notify(self, application, replaces, icon, summary, body, actions, hints, expires):
        self._count += 1
        print(json.dumps({
            "application": application, "replaces": replaces, "icon": icon, "summary": summary,
            "body": body, "actions": actions, "hints": hints, "expires": expires,
        }, default=repr), file=self._file)
        return GLib.Variant("(u)", (self._count,))


def main():
    recorder = _Recorder(sys.argv[1], sys.argv[2:])
    interface = Gio.DBusNodeInfo.new_for_xml(_INTERFACE).interfaces[0]
    Gio.bus_own_name(
        Gio.BusType.SESSION, "org.freedesktop.Notifications", Gio.BusNameOwnerFlags.NONE,
        lambda bus, _name: bus.register_object(
            "/org/freedesktop/Notifications", interface, recorder.answer, None, None),
        None, None)
    GLib.MainLoop().run()


if __name__ == "__main__":
    main()
