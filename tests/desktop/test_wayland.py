"""A Wayland session: the host draws the menu, and no portal has the hotkeys."""

import contextlib
import os

import pytest
from gi.repository import GLib
from virtualdesktop import Program, wait_until
from virtualdesktop.waiting import NeverHappened
from virtualdesktop.wayland import WaylandDesktop

APPLICATION = ("com.quillbar.Quillbar", "/com/quillbar/Quillbar", "org.freedesktop.Application")
# The middles of the settings window's pop-up and recorder.
ICON_MENU, RECORDER = (410, 98), (400, 134)


@pytest.fixture(scope="module")
def desktop():
    with WaylandDesktop(accessibility=True) as running:
        yield running


def start_with(program, *names, **settings):
    program.pin(*names, **settings)
    tray = program.start()
    wait_until(lambda: len(tray.menu.rows()) > 1, "the menu never comes")


def act(program, action, **platform_data):
    """What `gapplication action` does, with what a launcher hands over."""
    program.desktop.bus.call(*APPLICATION, "ActivateAction", "(sava{sv})", action, [],
                             {key: GLib.Variant("s", value) for key, value in
                              platform_data.items()})


def wait_for_window(program, title):
    """The window as the compositor tells of it, once it has the keyboard."""
    return wait_until(
        lambda: next((window for window in program.windows()
                      if window["name"] == title and window["focused"]), None),
        lambda: f"no {title!r}: {[window['name'] for window in program.windows()]}")


def wait_closed(program):
    wait_until(lambda: not program.windows(), "the window stays open")


def first_badge(picture):
    """Where the first row's badge is, the topmost coloured thing on the screen."""
    colored = picture.convert("HSV").getchannel("S").point(lambda saturation: saturation > 150)
    box = colored.getbbox()
    return (box[0] + 5, box[1] + 5) if box else None


def shown_rows(program):
    found = program.desktop.accessibility.elements(program.process.pid, "list item")
    return [row.name for row in found]


def open_menu_of_host(desktop, button):
    """The bar drops a click while it reads the menu: then one clicks again."""
    for _ in range(3):
        desktop.panel.click_icon(button)
        with contextlib.suppress(NeverHappened):
            return wait_until(lambda: first_badge(desktop.screen.settled_picture()), patience=15)
    raise NeverHappened("no menu comes")


def test_the_host_opens_the_menu_on_either_button(program):
    start_with(program, "A", "B")
    wait_until(program.desktop.panel.shows_icon, "the icon does not show in the bar")
    for count, button in enumerate((1, 3), start=1):
        badge = open_menu_of_host(program.desktop, button)
        program.desktop.screen.click(*badge)
        program.wait_for_runs(*["A"] * count)
    # GNOME's extension opens the menu by itself after this answer.
    with pytest.raises(GLib.Error, match="UnknownMethod"):
        program.tray().call("Activate", "(ii)", 0, 0)


def test_a_click_opens_the_palette_where_the_bar_draws_no_menu_and_it_ends_with_sway(tmp_path):
    with WaylandDesktop(swaybar=True) as desktop:
        program = Program(desktop, os.environ["QUILLBAR"], tmp_path)
        start_with(program, "A")
        wait_until(desktop.panel.shows_icon, "the icon does not show in the bar")
        for button in (1, 3):
            desktop.panel.click_icon(button)
            wait_for_window(program, "Quillbar")
            desktop.screen.press("Escape")
            wait_closed(program)

        act(program, "settings")
        wait_for_window(program, "Quillbar Settings")
        kept = program.read_config()
        desktop.lose_display()
        wait_until(lambda: program.process.poll() is not None, "the program stays")
        assert program.process.returncode == 1
        assert not desktop.runtime_files()
        assert program.read_config() == kept


def test_the_palette_runs_what_is_typed(program):
    start_with(program, "Alpha", "Beta")
    # A token that is too long for a message to the compositor would end the program.
    act(program, "palette", **{"activation-token": "x" * 10_000})
    palette = wait_for_window(program, "Quillbar")
    assert palette["app_id"] == "com.quillbar.Quillbar"
    assert palette["type"] == "floating_con"
    assert palette["border"] != "normal", "it has a title bar"
    program.desktop.screen.type("be")
    program.desktop.screen.press("Return")
    program.wait_for_runs("Beta")
    wait_closed(program)


def test_settings_record_physical_keys(program):
    start_with(program, "A")
    act(program, "settings")
    wait_for_window(program, "Quillbar Settings")
    screen = program.desktop.screen
    # There is no portal.
    recorder = program.desktop.accessibility.wait_for(
        program.process.pid, "push button", "Quick open hotkey")
    assert "Super+Alt+T. This session offers no global hotkeys." in recorder.description
    # The compositor's frame moves a window that is new.
    place = program.windows()[0]["rect"]
    screen.click(place["x"] + ICON_MENU[0], place["y"] + ICON_MENU[1])
    wait_until(lambda: "Star" in shown_rows(program), "no pop-up opens")
    screen.press("Escape")
    wait_until(lambda: "Star" not in shown_rows(program), "Escape does not close the pop-up")
    assert len(program.windows()) == 1
    screen.click(place["x"] + RECORDER[0], place["y"] + RECORDER[1])
    screen.press("Control", "Alt", "B")
    screen.press("Return")
    wait_until(lambda: program.read_config().get("menuHotkey")
               == {"keyCode": 11, "modifiers": 0x1800},
               lambda: f"nothing was recorded: {program.read_config()}")
    screen.press("Escape")
    wait_closed(program)
