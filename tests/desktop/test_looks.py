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


def test_without_a_portal_the_names_of_theme_and_font_of_gtk_tell(program):
    program.pin("A")
    program.start()
    about = program.open_about()
    wait_dark(about, False)
    configuration = os.path.join(program.home, "xsettingsd.conf")
    with open(configuration, "w", encoding="utf-8") as file:
        file.write('Xft/DPI 98304\nNet/ThemeName "Adwaita-dark"\nGtk/FontName "Sans Bold 22"\n')
    manager = program.desktop.start(["xsettingsd", "--config", configuration])
    wait_dark(about)
    width = about.area()[2]
    program.stop()
    program.start()
    assert program.open_about().area()[2] == 2 * width
    program.desktop.processes.end(manager)


def test_windows_and_menu_grow_alike_with_the_desktops_text(program):
    program.pin("A")
    sizes = []
    for points in (10, 20):
        with open(os.path.join(program.config_home, "kdeglobals"), "w", encoding="utf-8") as file:
            file.write(f"[General]\nfont=Sans,{points},-1,5,50,0,0,0,0,0\n")
        program.start(XDG_CURRENT_DESKTOP="KDE")
        window = program.open_settings()
        sizes.append(window.area()[2:])
        window.dismiss()
        sizes[-1] += program.open_own_menu()[3:]
        program.stop()
    assert sizes[1] == pytest.approx([2 * length for length in sizes[0]], rel=0.02)


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
