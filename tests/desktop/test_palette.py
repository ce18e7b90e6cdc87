"""The palette, summoned and used with real keys and the real mouse."""

import contextlib
import itertools

import Xlib.display
from gi.repository import GLib
from virtualdesktop import Window, probe, wait_until
from Xlib import X

ACCESSIBILITY = True
ROW_HEIGHT = 32
FIRST_ROW = 60


def start(program, *names):
    program.pin(*names)
    program.start()
    probe.wait_for_hotkey(program)


def press_hotkey(program):
    program.desktop.screen.press("Super", "Alt", "T")


def summon(program):
    press_hotkey(program)
    return Window(program, "Quillbar")


def listed(palette):
    return [row.name for row in palette.elements("list item")]


def wait_listed(palette, *names):
    wait_until(lambda: listed(palette) == list(names),
               lambda: f"{list(names)} should be listed, {listed(palette)} are")


def selected(palette):
    return [row.name for row in palette.elements("list item") if row.selected]


def row_middle(palette, row):
    x, y, width, _ = palette.area()
    return x + width // 2, y + FIRST_ROW + row * ROW_HEIGHT + ROW_HEIGHT // 2


@contextlib.contextmanager
def other_window(desktop):
    """A window of another program, which has the keyboard."""
    display = Xlib.display.Display(desktop.environment["DISPLAY"])
    try:
        screen = display.screen()
        window = screen.root.create_window(20, 300, 300, 200, 0, screen.root_depth,
                                           background_pixel=screen.white_pixel,
                                           event_mask=X.KeyPressMask)
        window.set_wm_name("Other")
        window.set_wm_class("other", "Other")
        window.map()
        display.sync()
        wait_until(lambda: desktop.screen.windows("other"), "the other window does not show")
        _, x, y, width, height = desktop.screen.windows("other")[0]
        desktop.screen.click(x + width // 2, y + height // 2)
        wait_until(lambda: desktop.screen.focused_window() == window.id,
                   "the other window does not get the keyboard")
        yield window
    finally:
        display.close()


def test_typing_arrows_keypad_and_mouse_choose(program):
    screen = program.desktop.screen
    start(program, "Alpha", "Beta", "Gamma")
    expected = []
    for typed, keys, name in (("ga", ["Return"], "Gamma"),
                              ("", ["Up", "Down", "KeypadEnter"], "Beta"),
                              ("", ["Down"] * 5 + ["KeypadEnter"], "Gamma")):
        palette = summon(program)
        screen.type(typed)
        for key in keys:
            screen.press(key)
        palette.wait_closed()
        expected.append(name)
        program.wait_for_runs(*expected)

    palette = summon(program)
    screen.click(*row_middle(palette, 1))
    wait_until(lambda: selected(palette) == ["Beta"], "a click does not select")
    screen.double_click(*row_middle(palette, 0))
    palette.wait_closed()
    program.wait_for_runs(*expected, "Alpha")

    palette = summon(program)
    screen.type("x")
    screen.press("Return")
    wait_listed(palette, "No shortcuts match")
    screen.press("Escape")
    palette.wait_closed()
    assert program.ran() == [*expected, "Alpha"]


def test_hotkey_brings_the_palette_before_other_windows_with_the_keyboard(program):
    desktop, screen = program.desktop, program.desktop.screen
    start(program, "Alpha", "Beta")
    palette = summon(program)
    screen.type("be")
    wait_listed(palette, "Beta")
    with other_window(desktop):
        assert palette.is_open()
        again = summon(program)
        assert (again.id, len(program.windows())) == (palette.id, 1)
        assert palette.elements("text")[0].text() == "be"
        screen.press("Return")
        palette.wait_closed()
    program.wait_for_runs("Beta")

    with strict_window_manager(desktop), other_window(desktop) as other:
        # The person is typing elsewhere when the hotkey comes.
        screen.type("abc")
        wait_until(lambda: screen.focused_window() == other.id)
        palette = summon(program)
        screen.type("be")
        wait_listed(palette, "Beta")
        screen.press("Return")
        palette.wait_closed()
    program.wait_for_runs("Beta", "Beta")


def test_palette_is_dragged_by_its_background_and_centred_when_summoned(program):
    start(program, "Alpha")
    palette = summon(program)
    x, y, width, height = palette.area()
    screen = program.desktop.screen
    footer = (x + 40, y + height - 12)
    screen.point(*footer)
    screen.button(True)
    # The window manager takes the pointer over some time after the press.
    distance = itertools.count(1)

    def follows():
        screen.point(footer[0] - next(distance) % 90, footer[1])
        return palette.area()[0] < x

    wait_until(follows, "the palette does not follow the pointer")
    screen.point(footer[0] - 90, footer[1] + 60)
    # It moves by what the pointer moves from when it was taken, some points after the press.
    wait_until(lambda: abs(palette.area()[0] - x + 90) < 10 and palette.area()[1] == y + 60,
               lambda: f"moved to {palette.area()[:2]} from {(x, y)}")
    screen.button(False)
    wait_until(screen.is_pointer_free, "the window manager keeps the pointer")
    wait_until(lambda: palette.element("frame", "Quillbar").extents() == palette.area(),
               "the program never learns that it was moved")
    press_hotkey(program)
    wait_until(lambda: palette.area() == (x, y, width, height), "the hotkey does not centre it")
    screen.press("Escape")
    palette.wait_closed()


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


# The last one, as the panel is busy with so long a menu for some time.
def test_thousands_of_pins_are_searched_and_only_rows_in_sight_exist(program):
    names = [f"Pin {number}" for number in range(10_000)]
    start(program, *names)
    palette = summon(program)
    assert len(listed(palette)) < 20
    program.desktop.screen.type("pin 9876")
    wait_listed(palette, "Pin 9876")
    program.desktop.screen.press("Return")
    program.wait_for_runs("Pin 9876")
