"""Screens of many dots: windows keep their shape and are sharp."""

import io
import subprocess

import pytest
from PIL import Image, ImageChops
from virtualdesktop import VirtualDesktop, Window, wait_until

# The menu's row, the title of the window that it opens, and its frame.
WINDOWS = {"Settings…": ("Quillbar Settings", 560, 700),
           "About Quillbar": ("About Quillbar", 380, 460)}


@pytest.fixture(scope="module")
def desktop():
    with VirtualDesktop(size="1400x1500") as running:
        yield running


@pytest.fixture
def set_dots_per_inch(desktop):
    def put(value):
        subprocess.run(["xrdb", "-merge", "-"], input=f"Xft.dpi: {value}\n".encode(),
                       env=desktop.environment, check=True)

    yield put
    put(96)


def pictures(program, scale):
    """The inside of each window."""
    menu, screen, found = program.tray().menu, program.desktop.screen, []
    for row, (title, width, height) in WINDOWS.items():
        menu.click(row)
        window = Window(program, title)
        area = window.area()
        assert area[2:] == (width * scale, height * scale)
        # It is shown before it is drawn.
        wait_until(lambda: screen.picture(area).getcolors(16) is None, "the window stays empty")
        screen.settled_picture()
        found.append(screen.picture(area))
        screen.press("Escape")
        window.wait_closed()
    return found


@pytest.mark.parametrize("scale, environment, dots", [
    (1.5, {"QT_SCALE_FACTOR": "1.5"}, 96), (2, {}, 192)])
def test_windows_are_their_frames_times_the_scale(program, set_dots_per_inch, scale, environment,
                                                  dots):
    program.pin("A")
    program.start()
    plain = pictures(program, 1)
    program.stop()
    set_dots_per_inch(dots)
    program.start(**environment)
    icon = Image.open(io.BytesIO(program.tray().menu.row("A", images=True).icon))
    assert icon.width == 16 * scale
    for small, large in zip(plain, pictures(program, scale)):
        # Drawn at the scale, not enlarged, and everything where it was.
        enlarged = small.resize(large.size, Image.Resampling.NEAREST)
        assert ImageChops.difference(large, enlarged).getbbox()
        averaged = [picture.convert("L").resize((28, 35), Image.Resampling.BOX)
                    for picture in (small, large)]
        assert max(ImageChops.difference(*averaged).getdata()) < 60
