"""What a person meets on the first launches, and the about window's links."""

import stat

import pytest
from virtualdesktop import Window, wait_until

ACCESSIBILITY = True
WELCOME, PERMISSIONS = "Welcome to Quillbar", "Quillbar permissions"
HAS_SHORTCUTS = ("Pick your shortcuts", "Not now")
NO_SHORTCUTS = ("Open Shortcuts App", "Later")


@pytest.fixture
def opened(program, tmp_path):
    """The addresses that were handed to the desktop so far; starts write them down."""
    folder = tmp_path / "bin"
    folder.mkdir()
    opener = folder / "xdg-open"
    opener.write_text(f'#!/bin/sh\nprintf "%s\\n" "$1" >>"{tmp_path}/opened"\n')
    opener.chmod(stat.S_IRWXU)
    program.path = f"{folder}:{program.desktop.environment['PATH']}"

    def addresses():
        path = tmp_path / "opened"
        return path.read_text().splitlines() if path.exists() else []

    return addresses


def start(program):
    """Starts and waits until the start-up is over; returns the titles of the windows it shows."""
    tray = program.start(PATH=getattr(program, "path", program.desktop.environment["PATH"]))
    # Whatever start-up shows is shown before the program answers the next request.
    tray.menu.rows()
    return [program.desktop.screen.title(window[0]) for window in program.windows()]


def buttons(window):
    return tuple(button.name for button in window.elements("push button"))


def flags(program):
    config = program.read_config()
    return config.get("onboarded", False), config.get("permissionsShown", False)


def test_three_launches_show_welcome_then_permissions_then_nothing(program):
    program.add_shortcut("Alpha")
    start(program)
    welcome = Window(program, WELCOME)
    assert len(program.windows()) == 1
    assert flags(program) == (True, False)
    assert program.stop() == 0 and not welcome.is_open()

    start(program)
    Window(program, PERMISSIONS)
    assert len(program.windows()) == 1
    assert flags(program) == (True, True)
    assert program.stop() == 0

    assert start(program) == []


def test_return_leads_to_the_list_to_pin_from(program):
    program.add_shortcut("Beta")
    program.add_shortcut("Alpha")
    start(program)
    welcome = Window(program, WELCOME)
    assert buttons(welcome) == HAS_SHORTCUTS
    program.desktop.screen.press("Return")
    welcome.wait_closed()
    settings = Window(program, "Quillbar Settings")
    settings.wait_for("check box", "Alpha", "gets the keyboard", lambda box: box.focused)
    program.desktop.screen.press("Space")
    settings.wait_for("list item", "Alpha", "is pinned", lambda row: row.shown)


def test_focused_list_is_seen_after_a_click_too(program):
    program.add_shortcut("Alpha")
    start(program)
    Window(program, WELCOME).click("push button", "Pick your shortcuts")
    settings = Window(program, "Quillbar Settings")
    settings.wait_for("check box", "Alpha", "gets the keyboard", lambda box: box.focused)
    area = mark_area(settings, "Alpha")
    marked = program.desktop.screen.settled_picture().crop(area)
    program.desktop.screen.press("Tab")
    wait_until(lambda: program.desktop.screen.picture().crop(area).tobytes() != marked.tobytes(),
               "the keyboard's place looks like any other")


def mark_area(window, name):
    """Where a check box's title is, from corner to corner."""
    x, y, _, height = window.element("check box", name).extents()
    return x + 16, y - 4, x + 80, y + height + 4


def test_no_shortcuts_offer_to_make_one(program, opened):
    start(program)
    welcome = Window(program, WELCOME)
    assert buttons(welcome) == NO_SHORTCUTS
    program.desktop.screen.press("Return")
    wait_until(opened, "nothing is opened")
    assert opened()[0].startswith(("shortcuts://", "file://"))
    assert welcome.is_open()
    welcome.click("push button", "Later")
    welcome.wait_closed()
    assert program.windows() == []


def test_permissions_link_leads_to_the_desktops_settings(program, tmp_path, opened):
    settings = tmp_path / "bin" / "xfce4-notifyd-config"
    settings.write_text(f'#!/bin/sh\necho settings >>"{tmp_path}/opened"\n')
    settings.chmod(stat.S_IRWXU)
    program.write_config({"pinned": [], "iconSymbol": "heart.fill", "onboarded": True})
    program.start(PATH=program.path, XDG_CURRENT_DESKTOP="XFCE")
    permissions = Window(program, PERMISSIONS)
    permissions.click("push button", "Open System Settings")
    wait_until(lambda: opened() == ["settings"], lambda: f"opened: {opened()}")
    assert permissions.is_open()
    permissions.click("push button", "Got it")
    permissions.wait_closed()


def test_about_links_open_their_addresses(program, opened):
    program.pin("Alpha")
    start(program)
    program.tray().menu.click("About Quillbar")
    about = Window(program, "About Quillbar")
    for count, link in enumerate(("@quillbar", "Quillbar Support"), start=1):
        about.click("push button", link)
        wait_until(lambda: len(opened()) == count, f"{link} opens nothing")
    profile, support = opened()
    assert profile != support
    assert all(address.startswith("https://") for address in opened())
    assert about.is_open()
    program.tray().menu.click("About Quillbar")
    assert Window(program, "About Quillbar").id == about.id
    assert len(program.windows()) == 1
