"""The names that people give, through everything that shows them."""

import html
import unicodedata

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


def start(program):
    """Starts the program with a shortcut of each name; returns its menu."""
    for number, name in enumerate(NAMES):
        escaped = name.replace("\\", "\\\\")
        program.write_shortcut(
            f"{number}.desktop",
            f"[Desktop Entry]\nType=Application\nName={escaped}\nExec=true\n")
    program.write_config({"onboarded": True, "permissionsShown": True,
                          "iconSymbol": "heart.fill", "pinned": NAMES,
                          "groupOf": {NAMES[2]: "<b>Tom & Jerry_</b>"}})
    return program.start().menu


def shown(name):
    return name if len(name) <= CUT else name[:CUT] + "…"


def within_a_text(name):
    """What is written from right to left turns nothing around but itself."""
    turns = {"R", "AL", "RLO"} & set(map(unicodedata.bidirectional, name))
    return f"\u2068{name}\u2069" if turns else name


def test_notifications_menus_and_windows_show_every_name(program):
    desktop, menu = program.desktop, start(program)
    titles = menu.titles()
    assert [title for title in titles if title in map(shown, NAMES)] == list(map(shown, NAMES))
    assert "<B>TOM & JERRY_</B>" in titles
    for count, name in enumerate(NAMES, start=1):
        menu.click(shown(name))
        wait_until(lambda: len(desktop.notifications.shown()) == count, f"{name} is not reported")
        body = desktop.notifications.shown()[-1]["body"]
        assert "<" not in body
        assert html.unescape(body) == f"Launched “{within_a_text(name)}”"

    for open_window in (program.open_palette, program.open_settings):
        window = open_window()
        for name in NAMES[:3]:
            window.element("list item", name)
        window.dismiss()
