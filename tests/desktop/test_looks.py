"""Windows in the desktop's colours and at its scale."""

import io
import os
import subprocess

import pytest
from PIL import Image
from virtualdesktop import VirtualDesktop, Window, wait_until
from virtualdesktop.services import Portal


@pytest.fixture(scope="module")
def desktop():
    with VirtualDesktop(size="1400x1500") as running:
        yield running


def ground(window):
    x, y, _, _ = window.area()
    return window.screen.picture((x + 4, y + 4, 1, 1)).getpixel((0, 0))


def wait_dark(window, is_dark=True):
    wait_until(lambda: (max(ground(window)) < 80 if is_dark else min(ground(window)) > 200),
               lambda: f"the window has {ground(window)}")


def test_windows_have_the_desktops_colours_from_the_first_one_on(program):
    program.pin("A", "B")
    os.remove(os.path.join(program.shortcuts_folder, "B"))
    with Portal(program.desktop, "dark") as portal:
        # The menu comes only after the alert is answered.
        program.launch()
        alert = Window(program, "Quillbar")
        wait_dark(alert)
        portal.change("light")
        wait_dark(alert, False)
        alert.screen.press("Escape")


def test_without_a_portal_the_name_of_the_gtk_theme_tells(program):
    program.pin("A")
    program.start()
    about = program.open_about()
    wait_dark(about, False)
    configuration = os.path.join(program.home, "xsettingsd.conf")
    with open(configuration, "w", encoding="utf-8") as file:
        file.write('Xft/DPI 98304\nNet/ThemeName "Adwaita-dark"\n')
    manager = program.desktop.start(["xsettingsd", "--config", configuration])
    wait_dark(about)
    program.desktop.processes.end(manager)


# The last test, for the scale stays.
def test_windows_are_drawn_at_the_desktops_scale(program):
    program.pin("A")
    program.start()
    size = program.open_settings().area()[2:]
    program.stop()
    subprocess.run(["xrdb", "-merge", "-"], input=b"Xft.dpi: 192\n",
                   env=program.desktop.environment, check=True)
    program.start()
    assert Image.open(io.BytesIO(program.tray().menu.row("A").icon)).width == 32
    assert program.open_settings().area()[2:] == tuple(2 * length for length in size)
