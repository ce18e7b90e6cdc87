"""The least that a status-notifier host can be: it notes when items register, and reads them."""

import time

from gi.repository import Gio, GLib

_NAME = "org.kde.StatusNotifierWatcher"
_ITEM = "org.kde.StatusNotifierItem"
_MENU = "com.canonical.dbusmenu"
_INTERFACES = f"""
<node><interface name="{_NAME}">
  <method name="RegisterStatusNotifierItem"><arg type="s" direction="in"/></method>
  <method name="RegisterStatusNotifierHost"><arg type="s" direction="in"/></method>
  <property name="RegisteredStatusNotifierItems" type="as" access="read"/>
  <property name="IsStatusNotifierHostRegistered" type="b" access="read"/>
  <property name="ProtocolVersion" type="i" access="read"/>
  <signal name="StatusNotifierItemRegistered"><arg type="s"/></signal>
</interface></node>"""
_PROPERTIES = {
    "RegisteredStatusNotifierItems": GLib.Variant("as", []),
    "IsStatusNotifierHostRegistered": GLib.Variant("b", True),
    "ProtocolVersion": GLib.Variant("i", 0),
}


class Item:
    """One registered status item and its menu."""

    def __init__(self, bus, sender, service):
        self._bus = bus
        self.registered_at = time.monotonic_ns()
        self.name = sender if service.startswith("/") else service
        self.path = service if service.startswith("/") else "/StatusNotifierItem"

    def read(self):
        """What a panel asks for before it shows the item; returns the menu's rows."""
        # Unpacking the pictures in Python would take longer than all else.
        values = self._call(self.path, "org.freedesktop.DBus.Properties", "GetAll",
                            GLib.Variant("(s)", (_ITEM,))).get_child_value(0)
        self._menu = values.lookup_value("Menu", None).get_string()
        layout = self._call(self._menu, _MENU, "GetLayout",
                            GLib.Variant("(iias)", (0, -1, []))).get_child_value(1)
        rows = layout.get_child_value(2)
        return [_row(rows.get_child_value(index).get_variant())
                for index in range(rows.n_children())]

    def _call(self, path, interface, method, arguments):
        return self._bus.connection.call_sync(
            self.name, path, interface, method, arguments, None, Gio.DBusCallFlags.NONE, -1, None)

    def click(self, row):
        """Sends the click without waiting; returns when, in nanoseconds."""
        message = Gio.DBusMessage.new_method_call(self.name, self._menu, _MENU, "Event")
        message.set_body(GLib.Variant("(isvu)", (row, "clicked", GLib.Variant("i", 0), 0)))
        message.set_flags(Gio.DBusMessageFlags.NO_REPLY_EXPECTED)
        before = time.monotonic_ns()
        self._bus.connection.send_message(message, Gio.DBusSendMessageFlags.NONE)
        return before


def _row(value):
    label = value.get_child_value(1).lookup_value("label", None)
    return value.get_child_value(0).get_int32(), label.get_string() if label else ""


class Watcher:
    def __init__(self, bus):
        self._bus = bus
        self._items = []
        interface = Gio.DBusNodeInfo.new_for_xml(_INTERFACES).interfaces[0]
        bus.connection.register_object(
            "/StatusNotifierWatcher", interface, self._called, lambda *call: _PROPERTIES[call[4]],
            None)
        bus.call("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                 "RequestName", "(su)", _NAME, 0)

    def _called(self, _connection, sender, _path, _interface, method, arguments, invocation):
        if method == "RegisterStatusNotifierItem":
            self._items.append(Item(self._bus, sender, arguments[0]))
        invocation.return_value(None)

    def next_item(self, patience=30):
        """Waits for the next registration."""
        context = GLib.MainContext.default()
        late = []
        timer = GLib.timeout_add_seconds(patience, lambda: late.append(True))
        while not self._items:
            context.iteration(True)
            if late:
                raise RuntimeError("no status item registered")
        GLib.source_remove(timer)
        return self._items.pop(0)
