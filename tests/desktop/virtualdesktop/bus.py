"""The private session bus and plain calls on it."""

import os

from gi.repository import Gio, GLib

_CONFIGURATION = """<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <listen>unix:path={socket}</listen>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
  <!-- A bus starts with tighter limits than a session's has. -->
  <limit name="max_incoming_bytes">1000000000</limit>
  <limit name="max_outgoing_bytes">1000000000</limit>
  <limit name="max_message_size">{longest}</limit>
  <limit name="max_replies_per_connection">50000</limit>
</busconfig>
"""

CALL_TIMEOUT_MS = 30_000
LONGEST_MESSAGE = 16_000_000


class Bus:
    """One connection to a message bus."""

    def __init__(self, address):
        self.connection = Gio.DBusConnection.new_for_address_sync(
            address, Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT
            | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION, None, None)
        self.connection.set_exit_on_close(False)

    def call(self, name, path, interface, method, signature="()", *arguments):
        """Calls a method and returns its results as plain values, a tuple."""
        reply = self.connection.call_sync(
            name, path, interface, method, GLib.Variant(signature, arguments), None,
            Gio.DBusCallFlags.NO_AUTO_START, CALL_TIMEOUT_MS, None)
        return reply.unpack()

    def read(self, name, path, interface, key):
        return self.call(name, path, "org.freedesktop.DBus.Properties", "Get", "(ss)",
                         interface, key)[0]

    def owner(self, name):
        """The unique name that owns a name now, or None."""
        return self._ask("GetNameOwner", name)

    def process_of(self, name):
        """The process that owns a name now, or None."""
        return self._ask("GetConnectionUnixProcessID", name)

    def _ask(self, question, name):
        try:
            return self.call("org.freedesktop.DBus", "/org/freedesktop/DBus",
                             "org.freedesktop.DBus", question, "(s)", name)[0]
        except GLib.Error:
            return None

    def close(self):
        self.connection.close_sync(None)


def start_bus(processes, folder, environment, root=None):
    """Starts a bus; returns its process and its address. It activates nothing, unless it is that of
    a system in a root folder of its own: then what is installed there."""
    socket = os.path.join(folder, "bus")
    if root:
        command = ["/usr/sbin/chroot", root, "dbus-daemon", "--session",
                   f"--address=unix:path={socket}"]
    else:
        configuration = os.path.join(folder, "bus.conf")
        with open(configuration, "w", encoding="utf-8") as file:
            file.write(_CONFIGURATION.format(socket=socket, longest=LONGEST_MESSAGE))
        command = ["dbus-daemon", f"--config-file={configuration}"]
    return processes.start_that_tells(
        lambda descriptor: [*command, "--nofork", f"--print-address={descriptor}"], environment,
        "dbus-daemon")
