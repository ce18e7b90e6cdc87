"""Pictures of a Quillbar at work: for the documents, light and dark, and what script/run shows
where there is no display."""

import os
import sys

from Xlib import X

from .client import Client
from .desktop import VirtualDesktop
from .program import Program
from .screen import KEY
from .services import Portal
from .waiting import NeverHappened, wait_until
from .window import Window

_CONTROL_OPTION, _COMMAND_OPTION = 0x1800, 0x900
_KEY_J, _KEY_RETURN, _KEY_SPACE, _KEY_T = 38, 36, 49, 17
_TAKEN = {"Join stand-up": {"keyCode": _KEY_J, "modifiers": _CONTROL_OPTION}}

_PINS = {"Tidy downloads": None, "Join stand-up": "Work", "Connect to office": "Work",
         "Start focus hour": "Work", "Back up photos": "Home", "Scan to PDF": "Home"}
_OTHERS = ["Empty trash", "Merge PDF files", "Mute everything", "Plain-text clipboard",
           "Restart Wi-Fi", "Show public address"]
_SETTINGS = {
    "groupOf": {name: section for name, section in _PINS.items() if section},
    "menuHotkey": {"keyCode": _KEY_T, "modifiers": _COMMAND_OPTION},
    "shortcutHotkeys": {
        "Connect to office": {"keyCode": _KEY_SPACE, "modifiers": _CONTROL_OPTION},
        "Start focus hour": {"keyCode": _KEY_RETURN, "modifiers": _CONTROL_OPTION},
    },
    "launchAtLoginShortcuts": {"Connect to office": True},
}
# What is seen of the desktop around a window, and the height of its title bar.
_EDGE, _TITLE = 12, 20
# The pictures of the documents have two pixels a point.
_DOUBLE = {"QT_SCALE_FACTOR": "2"}
# The shell tells a script's end to its own trap, whatever ended it.
_SAMPLE = """#!/bin/sh
trap 'echo "$SHORTCUT_NAME: exit status $?" >>"$HOME/outcome"' EXIT
echo "Hello, $(id -un)" >"$HOME/hello.txt"
"""


def draw_pictures(binary, folder):
    """Draws every picture of the documents into the folder."""
    os.makedirs(folder, exist_ok=True)
    for scheme, ending in (("light", ""), ("dark", "-dark")):
        with (VirtualDesktop("2560x1600", accessibility=True) as desktop,
              Portal(desktop, scheme)):
            program = Program(desktop, binary, os.path.join(desktop.folder, "person"))
            for name in [*_PINS, *_OTHERS]:
                program.write_shortcut(name, "#!/bin/sh\n")
            _draw(program, lambda name: os.path.join(folder, f"{name}{ending}.png"))


def _draw(program, path_of):
    program.start(**_DOUBLE)
    picture_of_window(Window(program, "Welcome to Quillbar"), path_of("welcome"))
    program.stop()
    program.pin(*_PINS, **_SETTINGS)
    program.start(**_DOUBLE)
    picture_of_menu(program, path_of("menu"))
    picture_of_window(program.open_settings(), path_of("settings"))
    _draw_summon(program, path_of("palette"))
    program.stop()
    with Client(program.desktop) as other:
        other.grab(KEY["J"], X.ControlMask | X.Mod1Mask)
        _draw_marked_hotkey(program, path_of("marked-hotkey"))
    program.stop()
    _draw_failure(program, path_of("failure"))


def _draw_summon(program, path):
    """The palette as it is summoned, searched and left by Return, as one animated picture."""
    screen = program.desktop.screen
    program.wait_for_hotkey()
    palette = program.open_palette()
    x, y, width, height = palette.area()
    area = (x - _EDGE, y - _EDGE, x + width + _EDGE, y + height + _EDGE)
    frames = [screen.settled_picture().crop(area)]
    for letter, found in (("f", 3), ("o", 1), ("c", 1)):
        screen.type(letter)
        wait_until(lambda: len(palette.elements("list item")) == found, f"{letter} finds others")
        frames.append(screen.settled_picture().crop(area))
    screen.press("Return")
    palette.wait_closed()
    frames.append(screen.settled_picture().crop(area))
    # An animated picture has one palette: of the first frame, which shows every colour.
    first = frames[0].quantize(256, dither=0)
    others = [frame.quantize(palette=first, dither=0) for frame in frames[1:]]
    first.save(path, save_all=True, append_images=others, loop=0,
               duration=[1200, 350, 350, 1500, 1000])


def _draw_failure(program, path):
    """The notification of a failed run, as dunst shows it."""
    desktop = program.desktop
    program.write_shortcut("Tidy downloads", "#!/bin/sh\nexit 1\n")
    program.start(**_DOUBLE)
    desktop.notifications.stop()
    dunst = desktop.start(["dunst"], {"HOME": program.home})
    wait_until(lambda: desktop.bus.owner(desktop.notifications.NAME), "dunst does not start")
    program.tray().menu.click("Tidy downloads")
    _, x, y, width, height = wait_until(lambda: desktop.screen.windows(instance="Dunst"),
                                        "the failure is not told")[0]
    picture = desktop.screen.settled_picture()
    _store(picture.crop((x - _EDGE, y - _EDGE, x + width + _EDGE, y + height + _EDGE)), path)
    desktop.processes.end(dunst)
    desktop.notifications.start()
    program.stop()


def picture_of_menu(program, path):
    """The menu that a click on the icon opens, under the icon."""
    menu = program.open_own_menu()
    picture = program.desktop.screen.settled_picture()
    _store(picture.crop((0, 0, menu[1] + menu[3] + 24, menu[2] + menu[4] + 24)), path)
    program.desktop.screen.press("Escape")
    wait_until(lambda: not program.windows(), "Escape did not close the menu")


def picture_of_window(window, path):
    """The window, which is closed afterwards."""
    x, y, width, height = window.area()
    picture = window.screen.settled_picture()
    area = (x - _EDGE, y - _TITLE - _EDGE, x + width + _EDGE, y + height + _EDGE)
    _store(picture.crop(area), path)
    window.dismiss()


def _draw_marked_hotkey(program, path):
    """The row of a hotkey that another program has, with the pointer on its recorder."""
    screen = program.desktop.screen
    program.pin(*_PINS, **{**_SETTINGS,
                           "shortcutHotkeys": {**_SETTINGS["shortcutHotkeys"], **_TAKEN}})
    program.start(**_DOUBLE)
    window = program.open_settings()
    recorder = window.middle("push button", "Hotkey for Join stand-up")
    screen.point(*recorder)
    tooltip = wait_until(lambda: [shown for shown in program.windows() if shown[0] != window.id],
                         "no reason is shown")[0]
    x, _, width, _ = window.area()
    top, bottom = recorder[1] - 160, tooltip[2] + tooltip[4] + 40
    _store(screen.settled_picture().crop((x - _EDGE, top, x + width + _EDGE, bottom)), path)
    screen.point(0, 0)
    window.dismiss()


def _store(picture, path):
    os.makedirs(os.path.dirname(os.path.abspath(path)), exist_ok=True)
    # A window has few colours: a palette of them makes a small file that looks the same.
    picture.quantize(256, dither=0).save(path, optimize=True)


def demonstrate(binary, screenshot):
    """Prints what ran with its exit status; returns the process's own."""
    try:
        with VirtualDesktop() as desktop:
            return _demonstrate(desktop, binary, screenshot)
    except (NeverHappened, AssertionError, RuntimeError) as failure:
        print(f"script/run: {failure}", file=sys.stderr)
        return 1


def _demonstrate(desktop, binary, screenshot):
    program = Program(desktop, binary, os.path.join(desktop.folder, "home"))
    program.write_shortcut("Say hello", _SAMPLE)
    program.pin("Say hello", "Tidy downloads", groupOf={"Tidy downloads": "Files"})
    tray = program.start()
    picture_of_menu(program, screenshot)

    tray.menu.click("Say hello")
    outcome = os.path.join(program.home, "outcome")
    wait_until(lambda: os.path.exists(outcome), "“Say hello” was chosen but did not run")
    shown = wait_until(desktop.notifications.shown, "Quillbar did not report the run")
    with open(outcome, encoding="utf-8") as file:
        print(f"Ran from the tray menu: {file.read().strip()}")
    print(f"Quillbar reported: {shown[0]['summary']}: {shown[0]['body']}")
    print(f"Picture of the open menu: {screenshot}")
    for name, open_window in (("palette", program.open_palette),
                              ("settings", program.open_settings)):
        path = os.path.join(os.path.dirname(screenshot), f"{name}.png")
        picture_of_window(open_window(), path)
        print(f"Picture of the {name}: {path}")
    return program.stop()
