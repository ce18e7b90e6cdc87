"""Desktops without a status-notifier host: trays that embed windows, or nothing at all."""

import pytest
from PIL import ImageStat
from virtualdesktop import EmbeddingTray, VirtualDesktop, Window, wait_until
from virtualdesktop.services import HostlessWatcher
from virtualdesktop.waiting import settled

TRAYER = ["panel", "trayer", "--edge", "top", "--align", "left", "--widthtype", "request",
          "--transparent", "true", "--alpha", "0"]
TRAYS = {
    "dark trayer": [*TRAYER, "--tint", "0x000000", "--height", "24"],
    "light trayer": [*TRAYER, "--tint", "0xffffff", "--height", "32"],
    "tint2": ["tint2", "tint2"],
}


@pytest.fixture(scope="module")
def desktop():
    with VirtualDesktop() as running:
        running.panel.kill()
        yield running


@pytest.fixture(params=TRAYS)
def tray(desktop, request):
    with EmbeddingTray(desktop, *TRAYS[request.param]) as running:
        yield running


def contrast(picture):
    """How far the middle's brightness is from the corners', of 255."""
    grey = picture.convert("L")
    ground = grey.getpixel((0, 0))
    box = (grey.width // 2 - 3, grey.height // 2 - 3, grey.width // 2 + 3, grey.height // 2 + 3)
    return abs(ImageStat.Stat(grey.crop(box)).mean[0] - ground)


def wait_for_readable_icon(tray):
    def readable():
        icon = tray.icon()
        return icon and contrast(icon) > 120

    wait_until(readable, "the icon cannot be told from the tray")


def open_menu(program, tray, button):
    wait_for_readable_icon(tray)
    return program.open_menu_by(lambda: tray.click_icon(button))


def test_icon_is_seen_and_both_buttons_open_the_menu(program, tray):
    program.pin("A", "B")
    program.launch()
    screen = program.desktop.screen
    wait_for_readable_icon(tray)
    before = settled(tray.icon)
    _, x, y, width, height = open_menu(program, tray, button=1)
    whole = screen.root.get_geometry()
    assert x >= 0 and y >= 0 and x + width <= whole.width and y + height <= whole.height
    screen.press("2")
    program.wait_for_runs("B")
    wait_until(lambda: not program.large_windows(), "the menu stays open")

    open_menu(program, tray, button=3)
    screen.press("Down")
    screen.press("Return")
    program.wait_for_runs("B", "A")
    wait_until(lambda: tray.icon() == before, "the icon does not get over the runs")


def test_icon_follows_from_tray_to_tray(program):
    program.pin("A")
    program.launch()
    for name in ("dark trayer", "dark trayer", "tint2"):
        with EmbeddingTray(program.desktop, *TRAYS[name]) as tray:
            wait_for_readable_icon(tray)


def test_a_watcher_that_hangs_is_not_waited_for(program):
    with HostlessWatcher(program.desktop) as watcher, \
            EmbeddingTray(program.desktop, *TRAYS["dark trayer"]) as tray:
        program.launch()
        wait_until(lambda: len(watcher.calls) == 3, "the watcher is not asked again")
        # The toolkit's own question, for which the program would wait, is another.
        assert watcher.calls == ["RegisterStatusNotifierItem", "Get", "Get"]
        watcher.go_on()
        wait_for_readable_icon(tray)


def test_without_any_tray_the_program_says_so_and_stays_reachable(program):
    program.pin("A")
    program.launch()
    # Of two that start at once either may be the first.
    wait_until(lambda: program.desktop.bus.process_of("com.quillbar.Quillbar")
               == program.process.pid, "the program does not take its name")
    second = program.desktop.start([program.binary], program.environment, name="second")
    settings = Window(program, "Quillbar Settings")
    assert second.wait() == 0
    program.desktop.screen.press("Escape")
    settings.wait_closed()
    (shown,) = wait_until(program.desktop.notifications.shown, "the program says nothing")
    assert shown["summary"] == "Quillbar is running"
    assert "Press Super+Alt+T to jump to any shortcut" in shown["body"]
    assert not shown["hints"].get("transient")
