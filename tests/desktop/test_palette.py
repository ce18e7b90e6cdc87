"""The palette, summoned and used with real keys and the real mouse."""

import contextlib
import itertools

from gi.repository import GLib
from virtualdesktop import wait_until
from virtualdesktop.client import Client

ACCESSIBILITY = True


def start(program, *names):
    program.pin(*names)
    program.start()
    program.wait_for_hotkey()


def listed(palette):
    return [row.name for row in palette.elements("list item")]


def wait_listed(palette, *names):
    wait_until(lambda: listed(palette) == list(names),
               lambda: f"{list(names)} should be listed, {listed(palette)} are")


def test_typing_arrows_keypad_and_mouse_choose(program):
    screen = program.desktop.screen
    start(program, "Alpha", "Beta", "Gamma")
    expected = []
    for typed, keys, name in (("ga", ["Return"], "Gamma"),
                              ("", ["Up", "Down", "KeypadEnter"], "Beta"),
                              ("", ["Down"] * 5 + ["KeypadEnter"], "Gamma")):
        palette = program.open_palette()
        screen.type(typed)
        for key in keys:
            screen.press(key)
        palette.wait_closed()
        expected.append(name)
        program.wait_for_runs(*expected)

    palette = program.open_palette()
    palette.click("list item", "Beta")
    palette.wait_for("list item", "Beta", "is selected", lambda row: row.selected)
    screen.click(*palette.middle("list item", "Alpha"), count=2)
    palette.wait_closed()
    program.wait_for_runs(*expected, "Alpha")


def test_hotkey_brings_the_palette_before_other_windows_with_the_keyboard(program):
    desktop, screen = program.desktop, program.desktop.screen
    start(program, "Alpha", "Beta")
    palette = program.open_palette()
    screen.type("be")
    wait_listed(palette, "Beta")
    with Client(desktop) as other:
        other.take_focus()
        assert palette.is_open()
        again = program.open_palette()
        assert (again.id, len(program.windows())) == (palette.id, 1)
        assert palette.elements("text")[0].text() == "be"
        unmapped = other.display.create_resource_object("window", palette.id)
        unmapped.unmap()
        # Once it has let go of the window, the window manager removes the state.
        wait_until(lambda: not unmapped.get_wm_state(), "the window manager keeps the palette")
        assert program.open_palette().id == palette.id
        screen.press("Return")
        palette.wait_closed()
    program.wait_for_runs("Beta")

    with strict_window_manager(desktop), Client(desktop) as other:
        # The person is typing elsewhere when the hotkey comes.
        other.take_focus()
        screen.type("abc")
        palette = program.open_palette()
        screen.type("be")
        wait_listed(palette, "Beta")
        screen.press("Return")
        palette.wait_closed()
    program.wait_for_runs("Beta", "Beta")


@contextlib.contextmanager
def strict_window_manager(desktop):
    """A window manager that lets no window take the keyboard unasked, for the block."""
    desktop.bus.call("org.xfce.Xfconf", "/org/xfce/Xfconf", "org.xfce.Xfconf", "SetProperty",
                     "(ssv)", "xfwm4", "/general/prevent_focus_stealing", GLib.Variant("b", True))
    desktop.start(["xfwm4", "--replace", "--compositor=off"])
    wait_until(lambda: desktop.screen.window_manager() == "Xfwm4", "xfwm4 does not take over")
    yield
    desktop.start(["openbox", "--sm-disable", "--replace"])
    wait_until(lambda: desktop.screen.window_manager() == "Openbox", "openbox does not come back")


def test_palette_is_dragged_by_its_background_and_centred_when_summoned(program):
    start(program, "Alpha")
    palette, screen = program.open_palette(), program.desktop.screen
    x, y, width, height = palette.area()
    footer = (x + 40, y + height - 12)
    screen.point(*footer)
    screen.button(True)
    # The window manager takes the pointer over some time after the press.
    distance = itertools.count(1)

    def follows():
        screen.point(footer[0] - next(distance) % 90, footer[1])
        return palette.area()[0] < x

    wait_until(follows, "the palette does not follow the pointer")
    screen.button(False)
    wait_until(screen.is_pointer_free, "the window manager keeps the pointer")
    wait_until(lambda: palette.element("frame", "Quillbar").extents() == palette.area(),
               "the program never learns that it was moved")
    screen.press("Super", "Alt", "T")
    wait_until(lambda: palette.area() == (x, y, width, height), "the hotkey does not centre it")
    palette.dismiss()
