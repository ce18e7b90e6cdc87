"""Windows in the desktop's colours and at its scale."""

import os
import subprocess

import pytest
from PIL import Image, ImageChops
from virtualdesktop import VirtualDesktop, Window, wait_until
from virtualdesktop.portal import Portal


@pytest.fixture(scope="module")
def desktop():
    with VirtualDesktop(size="1400x1500") as running:
        yield running


def wait_for_ground(window, is_dark):
    def is_right():
        x, y, _, _ = window.area()
        lightness = sum(window.screen.picture((x + 4, y + 4, 1, 1)).getpixel((0, 0))) // 3
        return lightness < 80 if is_dark else lightness > 200

    wait_until(is_right, f"{window.title} does not become {'dark' if is_dark else 'light'}")


def test_windows_have_the_desktops_colours_from_the_first_one_on(program):
    program.pin("A", "B")
    os.remove(os.path.join(program.shortcuts_folder, "B"))
    with Portal(program.desktop, "dark") as portal:
        # The menu comes only after the alert is answered.
        program.launch()
        alert = Window(program, "Quillbar")
        wait_for_ground(alert, is_dark=True)
        portal.change("light")
        wait_for_ground(alert, is_dark=False)
        alert.screen.press("Escape")


def test_without_a_portal_windows_are_light(program):
    program.pin("A")
    program.start()
    wait_for_ground(program.open_about(), is_dark=False)


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
    large = picture_of_settings(program, scale)
    # Not enlarged, and everything where it was.
    assert ImageChops.difference(
        large, small.resize(large.size, Image.Resampling.NEAREST)).getbbox()
    averaged = [picture.convert("L").resize((28, 35), Image.Resampling.BOX)
                for picture in (small, large)]
    assert max(ImageChops.difference(*averaged).getdata()) < 60
