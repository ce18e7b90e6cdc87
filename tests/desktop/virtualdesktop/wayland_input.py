"""A keyboard and a pointer that a Wayland compositor takes for real ones.

Speaks the few requests that it takes (virtual-keyboard-unstable-v1,
wlr-virtual-pointer-unstable-v1) itself: a tool that types text invents key codes of its own, and
what is tested here are physical keys.
"""

import ctypes
import os
import socket
import struct
import time

from .input import KEY, Input

_DISPLAY = 1
_SEAT = "wl_seat"
_KEYBOARDS = "zwp_virtual_keyboard_manager_v1"
_POINTERS = "zwlr_virtual_pointer_manager_v1"

_MODIFIERS = {"Shift": 1, "Control": 4, "Alt": 8, "Super": 64}
# The kernel's codes by X's numbers.
_BUTTONS = {1: 0x110, 2: 0x112, 3: 0x111}


class WaylandInput(Input):
    def __init__(self, socket_path, size):
        self._socket = socket.socket(socket.AF_UNIX, socket.SOCK_STREAM)
        self._socket.connect(socket_path)
        self._size = size
        self._last_id = _DISPLAY
        self._depressed = 0
        registry = self._new_id()
        self._send(_DISPLAY, 1, struct.pack("=I", registry))
        globals_ = self._announced(registry)
        seat, keyboards, pointers = (
            self._bind(registry, *globals_[name], name) for name in (_SEAT, _KEYBOARDS, _POINTERS))
        self._keyboard, self._pointer = self._new_id(), self._new_id()
        self._send(keyboards, 0, struct.pack("=II", seat, self._keyboard))
        self._set_keymap(_us_keymap())
        self._send(pointers, 0, struct.pack("=II", seat, self._pointer))

    def close(self):
        self._socket.close()

    def key_down(self, name):
        self._key(name, True)

    def key_up(self, name):
        self._key(name, False)

    def click(self, x, y, button=1):
        self._send(self._pointer, 1, struct.pack("=IIIII", _now(), x, y, *self._size))
        self._send(self._pointer, 4)
        for is_down in (True, False):
            self._send(self._pointer, 2, struct.pack("=III", _now(), _BUTTONS[button], is_down))
            self._send(self._pointer, 4)

    def _key(self, name, is_down):
        self._send(self._keyboard, 1, struct.pack("=III", _now(), KEY[name] - 8, is_down))
        bit = _MODIFIERS.get(name, 0)
        self._depressed = self._depressed | bit if is_down else self._depressed & ~bit
        if bit:
            self._send(self._keyboard, 2, struct.pack("=IIII", self._depressed, 0, 0, 0))

    def _set_keymap(self, keymap):
        descriptor = os.memfd_create("keymap")
        os.write(descriptor, keymap)
        xkb_text = 1
        self._send(self._keyboard, 0, struct.pack("=II", xkb_text, len(keymap)), descriptor)
        os.close(descriptor)

    def _announced(self, registry):
        """What the compositor offers: names and versions by interface."""
        done = self._new_id()
        self._send(_DISPLAY, 0, struct.pack("=I", done))
        found = {}
        while True:
            sender, opcode, body = self._receive()
            if sender == done:
                return found
            if sender == registry and opcode == 0:
                name, length = struct.unpack_from("=II", body)
                interface = body[8:8 + length - 1].decode()
                found[interface] = (name, struct.unpack_from("=I", body, len(body) - 4)[0])

    def _bind(self, registry, name, version, interface):
        new = self._new_id()
        text = interface.encode() + b"\0"
        text += b"\0" * (-len(text) % 4)
        self._send(registry, 0, struct.pack("=II", name, len(interface) + 1) + text
                   + struct.pack("=II", min(version, 1), new))
        return new

    def _new_id(self):
        self._last_id += 1
        return self._last_id

    def _send(self, receiver, opcode, body=b"", descriptor=None):
        message = struct.pack("=II", receiver, (len(body) + 8) << 16 | opcode) + body
        socket.send_fds(self._socket, [message], [] if descriptor is None else [descriptor])

    def _receive(self):
        sender, head = struct.unpack("=II", self._read(8))
        return sender, head & 0xFFFF, self._read((head >> 16) - 8)

    def _read(self, count):
        data = self._socket.recv(count, socket.MSG_WAITALL)
        if len(data) < count:
            raise RuntimeError("the compositor closed the connection")
        return data


def _now():
    return time.monotonic_ns() // 1_000_000 & 0xFFFFFFFF


def _us_keymap():
    xkb = ctypes.CDLL("libxkbcommon.so.0")
    for function in (xkb.xkb_context_new, xkb.xkb_keymap_new_from_names):
        function.restype = ctypes.c_void_p
    xkb.xkb_keymap_get_as_string.restype = ctypes.c_char_p
    context = ctypes.c_void_p(xkb.xkb_context_new(0))
    keymap = ctypes.c_void_p(xkb.xkb_keymap_new_from_names(context, None, 0))
    text_v1 = 1
    return xkb.xkb_keymap_get_as_string(keymap, text_v1) + b"\0"
