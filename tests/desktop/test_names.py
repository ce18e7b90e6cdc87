"""The names that people give, through everything that shows them."""

import html
import unicodedata

import pytest
from virtualdesktop import wait_until

ACCESSIBILITY = True
NAMES = [
    "under_score __init__ _x",
    "this & that && more &amp;",
    "<b>bold</b> <i>",
    'quotes "\'`$HOME %s %1 \\n',
    "emoji 💜 👩‍👩‍👧 🇩🇪",
    "עברית (שלום) abc",
    "turned \u202egnp.exe",
    "combining e\u0301 Z\u0338\u035a",
    "long words " * 22 + "end",
]
# What every menu shows of a name that is too long for one.
CUT = 80


def shown(name):
    return name if len(name) <= CUT else name[:CUT] + "…"


def within_a_text(name):
    """What is written from right to left turns nothing around but itself."""
    turns = {"R", "AL", "RLO"} & set(map(unicodedata.bidirectional, name))
    return f"\u2068{name}\u2069" if turns else name


@pytest.fixture
def named(program):
    """A program with a shortcut of each name, started."""
    for number, name in enumerate(NAMES):
        escaped = name.replace("\\", "\\\\")
        program.write_shortcut(
            f"{number}.desktop",
            f"[Desktop Entry]\nType=Application\nName={escaped}\nExec=true\n")
    program.write_config({"onboarded": True, "permissionsShown": True,
                          "iconSymbol": "heart.fill", "pinned": NAMES,
                          "groupOf": {NAMES[2]: "<b>Tom & Jerry_</b>"}})
    program.start()
    return program


def test_reports_name_every_shortcut_exactly(named):
    notifications, menu = named.desktop.notifications, named.tray().menu
    for count, name in enumerate(NAMES, start=1):
        menu.click(shown(name))
        wait_until(lambda: len(notifications.shown()) == count, f"{name[:40]} is not reported")
        body = notifications.shown()[-1]["body"]
        assert html.unescape(body) == f"Launched “{within_a_text(name)}”"
        assert "<" not in body


def test_menus_show_every_name_and_stay_on_the_screen(named):
    screen, titles = named.desktop.screen, named.tray().menu.titles()
    assert [title for title in titles if title in map(shown, NAMES)] == list(map(shown, NAMES))
    assert "<B>TOM & JERRY_</B>" in titles

    _, x, _, width, _ = named.open_own_menu()
    assert x >= 0 and width < 800
    rows = wait_until(
        lambda: named.desktop.accessibility.open_menu_rows(named.process.pid),
        "assistive programs are not told of the menu")
    assert [row.name for row in rows if row.name in NAMES] == NAMES
    screen.press("Escape")
    wait_until(lambda: not named.windows(), "the menu stays open")

    # The menu that the panel draws.
    named.desktop.panel.click_icon(button=3)
    menus = wait_until(lambda: [window for window in screen.windows() if window[4] > 100],
                       "the panel shows no menu")
    assert max(menu[3] for menu in menus) < 1000
    screen.press("Escape")


def test_windows_name_their_rows_exactly(named):
    for row, title in (("Type to Jump…", "Quillbar"), ("Settings…", "Quillbar Settings")):
        window = named.open_window(row, title)
        for name in NAMES[:3]:
            window.element("list item", name)
        window.dismiss()
