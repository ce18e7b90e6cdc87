"""What assistive programs are told of every window, and where each element stands."""

from virtualdesktop import Window, wait_until

ACCESSIBILITY = True
# Layout only: their children count, they themselves say nothing.
_LAYOUT = {"application", "frame", "panel", "filler", "separator", "graphic"}
_BEZEL = 1

GENERAL = [
    ("label", "GENERAL", (24, 20, 240, 18)),
    ("check box", "Start Quillbar at login", (26, 44, 300, 20)),
    ("label", "Menu bar icon:", (28, 88, 120, 20)),
    ("combo box", "Menu bar icon", (200, 82, 336, 28)),
    ("label", "Quick open hotkey:", (28, 126, 120, 20)),
    ("push button", "Quick open hotkey", (200, 120, 336, 28)),
    ("label", "PINNED SHORTCUTS", (24, 182, 240, 18)),
    ("label", "Drag to reorder · Set a hotkey or login", (210, 182, 326, 18)),
    ("list", "Pinned shortcuts", (24 + _BEZEL, 206 + _BEZEL, 510, 154)),
]
AVAILABLE = [
    ("label", "ALL SHORTCUTS", (24, 380, 240, 18)),
    ("label", "Turn on the ones you want to pin", (210, 380, 326, 18)),
    ("check box", "Zed", (34 + _BEZEL, 410 + _BEZEL, 460, 20)),
    ("push button", "Close", (358, 636, 82, 30)),
    ("push button", "Save", (456, 636, 80, 30)),
]


def row(name, number):
    """The elements of a pinned row; the table begins inside the bezel."""
    x, y = 24 + _BEZEL, 206 + _BEZEL + 30 * number
    return [
        ("list item", name, (x, y, 510, 30)),
        ("label", name, (x + 26, y + 7, 128, 16)),
        ("push button", f"Hotkey for {name}", (x + 160, y + 1, 128, 28)),
        ("check box", f"Login for {name}", (x + 294, y + 7, 58, 16)),
        ("combo box", f"Section for {name}", (x + 358, y + 4, 124, 22)),
        ("push button", "Remove", (x + 510 - 24, y + 6, 20, 18)),
    ]


WELCOME = [
    ("label", "Welcome to Quillbar", (0, 126, 420, 30)),
    ("label", "Your Shortcuts, one click from the menu bar.", (0, 160, 420, 20)),
    ("label", "Pin the Shortcuts you use most and they'll live right in your menu bar, always a "
              "click away. Set a hotkey to fire one from anywhere, or let Quillbar auto-run your "
              "favorites at login.", (40, 186, 340, 84)),
    ("label", "Press ⌥⌘T to jump to any shortcut.", (0, 392, 420, 16)),
    ("push button", "Pick your shortcuts", (116, 302, 188, 34)),
    ("push button", "Not now", (150, 344, 120, 22)),
]
PERMISSIONS = [
    ("label", "Quillbar permissions", (0, 126, 400, 30)),
    ("label", "Two permissions let Quillbar do its best work.", (20, 160, 360, 20)),
    ("label", "Input Monitoring", (78, 214, 280, 18)),
    ("label", "Lets you record hotkeys to run shortcuts.", (78, 236, 280, 16)),
    ("label", "Notifications", (78, 280, 280, 18)),
    ("label", "Quiet confirmation when a shortcut launches.", (78, 302, 280, 16)),
    ("label", "You can manage both anytime in System Settings.", (20, 336, 360, 16)),
    ("push button", "Got it", (120, 366, 160, 34)),
]
ABOUT = [
    ("label", "Quillbar", (0, 128, 380, 32)),
    ("label", "Your Shortcuts, one click from the menu bar.", (20, 186, 340, 26)),
    ("label", "Quillbar pins your favorite Shortcuts to the MacOS menu bar so your everyday apps "
              "are one click away.\n\nYour setup survives reboots and logouts, no re-adding ever. "
              "Your Shortcuts stay on your Mac: no account, no analytics, no tracking.",
     (25, 224, 330, 140)),
    ("label", "Made by the Quillbar authors", (0, 394, 380, 20)),
    ("push button", "@quillbar", (130, 420, 120, 22)),
    ("push button", "Quillbar Support", (0, 444, 380, 16)),
]
PALETTE = [
    ("text", "Search pinned shortcuts", (22, 14, 356, 30)),
    ("list", "Pinned shortcuts", (8, 60, 384, 150)),
    ("list item", "A", (8, 60, 384, 32)),
    ("list item", "B", (8, 92, 384, 32)),
    ("label", "↑↓ move · ⏎ run · esc close", (16, 218, 368, 16)),
]


def place_in(frame, element):
    x, y, width, height = element.extents()
    return x - frame[0], y - frame[1], width, height


def stands_at(place, frame):
    return all(abs(is_at - due) <= 1 for is_at, due in zip(place, frame))


def assert_shows(window, expected, others=()):
    """Everything expected is there and in place; what else there is has been named too."""
    elements = window.elements()
    window_frame = next(element for element in elements if element.role == "frame").extents()
    for role, name, frame in expected:
        places = [place_in(window_frame, element) for element in elements
                  if (element.role, element.name) == (role, name)]
        assert any(stands_at(place, frame) for place in places), \
            f"{role} {name!r} should stand at {frame}, stands at {places}"
    known = {(role, name) for role, name, _ in expected}
    unknown = [(element.role, element.name) for element in elements
               if element.role not in _LAYOUT and (element.role, element.name) not in known
               and not element.name.startswith(others or "\0")]
    assert unknown == []
    # What one sees and can act on is never without a name.
    assert [element.role for element in elements
            if element.role in ("push button", "check box", "combo box", "text")
            and not element.name and not element.description] == []


def assert_opens(window, size, expected, others=()):
    assert window.area()[2:] == size
    assert_shows(window, expected, others)


def test_every_window_is_told_and_in_place(program):
    program.add_shortcut("Zed")
    program.start()
    assert_opens(Window(program, "Welcome to Quillbar"), (420, 430), WELCOME)
    program.stop()
    program.start()
    assert_opens(Window(program, "Quillbar permissions"), (400, 460), PERMISSIONS)
    program.stop()

    program.pin("A", "B", groupOf={"B": "Games"}, launchAtLoginShortcuts={"B": True},
                shortcutHotkeys={"B": {"keyCode": 0, "modifiers": 0x100}})
    program.start()
    settings = program.open_settings()
    assert_opens(settings, (560, 700), [*GENERAL, *row("A", 0), *row("B", 1), *AVAILABLE],
                 ("Quillbar ",))
    # State is told, not only shown.
    told = {(element.role, element.name): element for element in settings.elements()}
    assert told["push button", "Hotkey for B"].description == "⌘A. This key cannot start a shortcut."
    assert told["push button", "Hotkey for A"].description == "None"
    assert told["combo box", "Section for B"].description == "Games"
    assert [told["check box", f"Login for {name}"].checked for name in "AB"] == [False, True]
    assert [element.description for element in settings.elements("push button")
            if element.name == "Remove"] == ["A", "B"]
    close(settings)

    about = program.open_about()
    assert_opens(about, (380, 460), ABOUT, ("Version ",))
    close(about)

    palette = program.open_window("Type to Jump…", "Quillbar")
    assert_opens(palette, (400, 244), PALETTE, ("A", "B", "Games"))
    assert palette.element("text", "Search pinned shortcuts").focused
    assert [item.selected for item in palette.elements("list item")] == [True, False]


def close(window):
    window.screen.press("Escape")
    window.wait_closed()


def test_every_control_of_the_settings_is_reached_by_tab(program):
    program.add_shortcut("Zed")
    program.pin("A")
    program.start()
    settings = program.open_settings()

    def focused():
        return next((element.name for element in settings.elements() if element.focused), None)

    wait_until(focused, "no control has the keyboard")
    reached = [focused()]
    while True:
        settings.screen.press("Tab")
        name = wait_until(lambda: focused() if focused() != reached[-1] else None,
                          lambda: f"Tab stays on {reached[-1]}")
        if name == reached[0]:
            break
        reached.append(name)
    assert sorted(reached) == sorted([
        "Start Quillbar at login", "Menu bar icon", "Quick open hotkey", "Hotkey for A",
        "Login for A", "Section for A", "Remove", "Zed", "Close", "Save"])
