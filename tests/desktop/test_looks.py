"""Windows in the desktop's colours and at its scale."""

import io
import os
import signal
import subprocess

import pytest
from PIL import Image, ImageChops
from virtualdesktop import VirtualDesktop, Window, wait_until
from virtualdesktop.portal import Portal


@pytest.fixture(scope="module")
def desktop():
    with VirtualDesktop(size="1400x1500") as running:
        yield running


def test_windows_have_the_desktops_colours_from_the_first_one_on(program):
    program.pin("A", "B")
    os.remove(os.path.join(program.shortcuts_folder, "B"))
    with Portal(program.desktop, "dark") as portal:
        # The menu comes only after the alert is answered.
        program.launch()
        alert = Window(program, "Quillbar")
        alert.wait_dark()
        portal.change("light")
        alert.wait_light()
        alert.screen.press("Escape")


def test_without_a_portal_the_name_of_the_gtk_theme_tells(program):
    program.pin("A")
    program.start()
    about = program.open_about()
    about.wait_light()
    configuration = os.path.join(program.home, "xsettingsd.conf")

    def name_theme(name):
        with open(configuration, "w", encoding="utf-8") as file:
            file.write(f'Xft/DPI 98304\nNet/ThemeName "{name}"\n')

    name_theme("Adwaita-dark")
    manager = program.desktop.start(["xsettingsd", "--config", configuration])
    about.wait_dark()
    name_theme("Arc-Darker")
    manager.send_signal(signal.SIGHUP)
    about.wait_light()
    program.desktop.processes.end(manager)


def test_under_kde_windows_have_the_persons_colours(program):
    with open(os.path.join(program.config_home, "kdeglobals"), "w", encoding="utf-8") as file:
        file.write("[Colors:Window]\nBackgroundNormal=120,60,90\n"
                   "[Colors:Button]\nBackgroundNormal=120,60,90\n")
    program.pin("A")
    program.start(XDG_CURRENT_DESKTOP="KDE", KDE_SESSION_VERSION="5")
    about = program.open_about()
    wait_until(lambda: about.ground() == (120, 60, 90), lambda: f"the window has {about.ground()}")


@pytest.fixture
def set_dots_per_inch(desktop):
    def put(value):
        subprocess.run(["xrdb", "-merge", "-"], input=f"Xft.dpi: {value}\n".encode(),
                       env=desktop.environment, check=True)

    yield put
    put(96)


def picture_of_settings(program, scale):
    settings, screen = program.open_settings(), program.desktop.screen
    area = settings.area()
    assert area[2:] == (560 * scale, 700 * scale)
    # It is shown before it is drawn.
    wait_until(lambda: screen.picture(area).getcolors(16) is None, "the window stays empty")
    screen.settled_picture()
    return screen.picture(area)


@pytest.mark.parametrize("scale, environment, dots", [
    (1.5, {"QT_SCALE_FACTOR": "1.5"}, 96), (2, {}, 192)])
def test_windows_are_drawn_at_the_desktops_scale(program, set_dots_per_inch, scale, environment, dots):
    program.pin("A")
    program.start()
    small = picture_of_settings(program, 1)
    program.stop()
    set_dots_per_inch(dots)
    program.start(**environment)
    icon = Image.open(io.BytesIO(program.tray().menu.row("A").icon))
    assert icon.width == 16 * scale
    large = picture_of_settings(program, scale)
    # Not enlarged, and everything where it was.
    assert ImageChops.difference(
        large, small.resize(large.size, Image.Resampling.NEAREST)).getbbox()
    averaged = [picture.convert("L").resize((28, 35), Image.Resampling.BOX)
                for picture in (small, large)]
    assert max(ImageChops.difference(*averaged).getdata()) < 60
