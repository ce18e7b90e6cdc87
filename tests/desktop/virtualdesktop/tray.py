"""The program's status item as a panel sees it."""

from .menu import ExportedMenu

_INTERFACE = "org.kde.StatusNotifierItem"


class TrayItem:
    def __init__(self, bus, name, path):
        self._bus, self._name, self._path = bus, name, path
        self.menu = ExportedMenu(bus, name, self.read("Menu"))

    def read(self, key):
        return self._bus.read(self._name, self._path, _INTERFACE, key)

    def call(self, method, signature, *arguments):
        return self._bus.call(self._name, self._path, _INTERFACE, method, signature, *arguments)

    @property
    def icon_name(self):
        return self.read("IconName")

    def on_new_icon(self, callback):
        return self._bus.on_signal(self._name, _INTERFACE, "NewIcon", lambda *_: callback())
