"""The windows that a start shows, and where their buttons and links lead."""

import stat

import pytest
from virtualdesktop import Window, wait_until

ACCESSIBILITY = True
WELCOME, PERMISSIONS = "Welcome to Quillbar", "Quillbar permissions"


@pytest.fixture
def opened(program, tmp_path):
    """What was asked of the desktop so far; the programs that it would start write it down."""
    folder, path = tmp_path / "bin", tmp_path / "opened"
    folder.mkdir()
    path.touch()
    for name, told in (("gio", "$2"), ("xfce4-notifyd-config", "settings")):
        opener = folder / name
        opener.write_text(f'#!/bin/sh\nprintf "%s\\n" "{told}" >>"{path}"\n')
        opener.chmod(stat.S_IRWXU)
    program.path = f"{folder}:{program.desktop.environment['PATH']}"
    return lambda: path.read_text().splitlines()


def start(program, *titles):
    """Starts and waits until the start-up is over, which shows just the windows of these titles."""
    tray = program.start(PATH=program.path, XDG_CURRENT_DESKTOP="XFCE")
    # Whatever start-up shows is shown before the program answers the next request.
    tray.menu.rows()
    found = [Window(program, title) for title in titles]
    assert len(program.windows()) == len(titles)
    assert all(window.screen.has_icon(window.id) for window in found)
    return found


def buttons(window):
    return [button.name for button in window.elements("push button")]


def flags(program):
    config = program.read_config()
    return config.get("onboarded", False), config.get("permissionsShown", False)


def test_three_launches_show_welcome_then_permissions_then_nothing(program, opened):
    screen = program.desktop.screen
    program.add_shortcut("Beta")
    program.add_shortcut("Alpha")
    welcome, = start(program, WELCOME)
    assert buttons(welcome) == ["Pick your shortcuts", "Not now"]
    assert flags(program) == (True, False)
    welcome.click("push button", "Pick your shortcuts")
    welcome.wait_closed()
    settings = Window(program, "Quillbar Settings")
    settings.wait_for("check box", "Alpha", "gets the keyboard", lambda box: box.focused)
    screen.press("Space")
    settings.element("list item", "Alpha")
    assert program.stop() == 0

    permissions, = start(program, PERMISSIONS)
    assert flags(program) == (True, True)
    permissions.click("push button", "Open System Settings")
    wait_until(lambda: opened() == ["settings"], lambda: f"opened: {opened()}")
    assert permissions.is_open()
    permissions.click("push button", "Got it")
    permissions.wait_closed()
    assert program.stop() == 0

    start(program)
    about = program.open_about()
    for count, link in enumerate(("@quillbar", "Quillbar Support"), start=2):
        about.click("push button", link)
        wait_until(lambda: len(opened()) == count, f"{link} opens nothing")
    assert all(address.startswith("https://") for address in opened()[1:])
    assert program.open_about().id == about.id


def test_no_shortcuts_offer_to_make_one(program, opened):
    welcome, = start(program, WELCOME)
    assert buttons(welcome) == ["Open Shortcuts App", "Later"]
    program.desktop.screen.press("Return")
    wait_until(opened, "nothing is opened")
    assert opened()[0] == "shortcuts://"
    welcome.click("push button", "Later")
    welcome.wait_closed()
