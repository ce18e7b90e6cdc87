"""How well texts and outlines stand out from their grounds: ratios of luminance as the accessibility
guidelines define them, measured on pictures of every window, in light and in dark colours.

Of a text its strongest pixel counts, against the least favourable ground it stands on.
"""

import os
import pathlib
import sys

sys.path.insert(0, str(pathlib.Path(__file__).parents[1] / "tests" / "desktop"))

from virtualdesktop import Program, VirtualDesktop, wait_until  # noqa: E402
from virtualdesktop.services import Portal  # noqa: E402

TEXT, OUTLINE = 4.5, 3.0
PINS = ("Alpha", "Beta", "Gamma")
# How far to either side of a check box's edge its outline is looked for.
REACH = 3
# The width of the menu's column of icons.
MENU_ICONS = 30
SEPARATOR = 1


def luminance(color):
    linear = [value / 12.92 if value <= 0.04045 else ((value + 0.055) / 1.055) ** 2.4
              for value in (component / 255 for component in color)]
    return 0.2126 * linear[0] + 0.7152 * linear[1] + 0.0722 * linear[2]


def ratio(one, other):
    low, high = sorted((luminance(one), luminance(other)))
    return (high + 0.05) / (low + 0.05)


def contrast(picture):
    """Of what is drawn on the picture's ground, which may differ from row to row."""
    rows = [[picture.getpixel((x, y)) for x in range(picture.width)]
            for y in range(picture.height)]
    grounds = [max(set(row), key=row.count) for row in rows]
    inks = [max(row, key=lambda pixel, ground=ground: ratio(pixel, ground))
            for row, ground in zip(rows, grounds)]
    strongest = max(ratio(ink, ground) for ink, ground in zip(inks, grounds))
    # Rows that the text only touches show blends of its colour and the ground.
    return min(max(ratio(ink, ground) for ink in inks) for own, ground in zip(inks, grounds)
               if ratio(own, ground) > strongest / 2)


class Report:
    def __init__(self, scheme):
        self._scheme = scheme

    def tell(self, what, measured, least):
        mark = "" if measured >= least else "   TOO LOW"
        print(f"  {self._scheme:5} {what:45} {measured:5.2f} of {least}{mark}", flush=True)

    def add(self, window, what, element, least=TEXT, part=None):
        """The element as it is seen, or the (x, y, width, height) of it that counts."""
        x, y, width, height = element.extents()
        dx, dy, *size = part or (0, 0, width, height)
        window.screen.point(0, 0)
        picture = window.screen.settled_picture().crop((x + dx, y + dy, x + dx + size[0],
                                                        y + dy + size[1]))
        self.tell(what, contrast(picture), least)

    def add_box(self, window, what, element):
        _, _, _, height = element.extents()
        self.add(window, what, element, OUTLINE, (-REACH, height // 2 - 1, 2 * REACH, 3))

    def add_bevel_text(self, window, what, element, margin=10):
        """Without the bevel's own outline."""
        _, _, width, height = element.extents()
        self.add(window, what, element, TEXT, (margin, 7, width - 2 * margin, height - 14))


def measure_palette(report, program):
    palette = program.open_window("Type to Jump…", "Quillbar")
    for what, role, name in (("palette: selected row, name", "label", "Alpha"),
                             ("palette: selected row, group", "label", "Work"),
                             ("palette: other row, name", "label", "Beta"),
                             ("palette: other row, group", "label", "Home"),
                             ("palette: hint", "label", "↑↓ move · ⏎ run · esc close")):
        report.add(palette, what, palette.element(role, name))
    x, y, width, height = palette.elements("text")[0].extents()
    report.add(palette, "palette: placeholder", palette.elements("text")[0], TEXT,
               # Not the cursor.
               (20, 0, width - 20, height))
    palette.screen.type("zzz")
    message = palette.element("label", "No shortcuts match")
    report.add(palette, "palette: message", message)
    palette.dismiss()


def measure_settings(report, program):
    settings = program.open_settings()
    for what, name in (("heading", "PINNED SHORTCUTS"), ("label", "Menu bar icon:"),
                       ("hint", "Drag to reorder · Set a hotkey or login"),
                       ("hint on a list", "Turn on the ones you want to pin"), ("name", "Alpha")):
        report.add(settings, f"settings: {what}", settings.element("label", name))
    report.add(settings, "settings: version",
               next(label for label in settings.elements("label") if "Quillbar " in label.name))
    report.add_box(settings, "settings: check box on the window",
                   settings.element("check box", "Start Quillbar at login"))
    report.add_box(settings, "settings: check box in a list", settings.element("check box", "Zed"))
    report.add_box(settings, "settings: check box that is on",
                   settings.element("check box", "Login for Beta"))
    report.add(settings, "settings: remove button",
               next(button for button in settings.elements("push button")
                    if button.name == "Remove"), OUTLINE)
    for name in ("Quick open hotkey", "Hotkey for Beta", "Hotkey for Alpha", "Close", "Save"):
        report.add_bevel_text(settings, f"settings: {name}", settings.element("push button", name))
    report.add_bevel_text(settings, "settings: section",
                          settings.element("combo box", "Section for Beta"), 5)
    settings.click("push button", "Hotkey for Alpha")
    settings.wait_for("push button", "Hotkey for Alpha", "records",
                      lambda element: element.description == "Press keys…")
    report.add_bevel_text(settings, "settings: recording",
                          settings.element("push button", "Hotkey for Alpha"))
    settings.screen.press("B")
    settings.wait_for("push button", "Hotkey for Alpha", "has recorded",
                      lambda element: element.description != "Press keys…")
    settings.dismiss()


def measure_focus(report, program):
    """The rings' colours against the ground beside them."""
    settings = program.open_settings()
    for role, name in (("push button", "Close"), ("push button", "Save"),
                       ("combo box", "Section for Alpha"), ("check box", "Zed"),
                       ("push button", "Hotkey for Alpha")):
        element = settings.element(role, name)
        before = settings.screen.settled_picture()
        element.act("SetFocus")
        settings.screen.press("Tab")
        settings.screen.press("Shift", "Tab")
        wait_until(lambda: settings.element(role, name).focused, f"{name} gets no focus")
        x, y, width, height = element.extents()
        area = (x, y, x + width, y + height)
        after = settings.screen.settled_picture().crop(area)
        pairs = zip(before.crop(area).getdata(), after.getdata())
        report.tell(f"settings: focus on {name}", max(ratio(*pair) for pair in pairs), OUTLINE)
    settings.dismiss()


def measure_about(report, program):
    about = program.open_about()
    for button in about.elements("push button"):
        report.add(about, f"about: {button.name}", button)
    for label in about.elements("label"):
        report.add(about, f"about: {label.name[:30]}", label)
    about.dismiss()


def measure_menu(report, program):
    """The own menu tells assistive programs nothing, so that its rows are found in its picture."""
    _, x, y, width, height = program.open_own_menu()
    picture = program.desktop.screen.settled_picture().crop(
        (x + MENU_ICONS, y + 2, x + width - 2, y + height - 2))
    lines = [len(set(picture.crop((0, line, picture.width, line + 1)).getdata())) > 1
             for line in range(picture.height)]
    starts = [line for line in range(1, len(lines)) if lines[line] and not lines[line - 1]]
    ends = [line for line in range(1, len(lines)) if lines[line - 1] and not lines[line]]
    rows = [(start, end) for start, end in zip(starts, ends) if end - start > SEPARATOR]
    for title, (start, end) in zip(program.tray().menu.titles(), rows, strict=True):
        report.tell(f"menu: {title[:38]}",
                    contrast(picture.crop((0, start, picture.width, end))), TEXT)
    program.desktop.screen.press("Escape")
    wait_until(lambda: not program.windows(), "the menu stays open")


def measure(binary, scheme):
    with VirtualDesktop(accessibility=True) as desktop, Portal(desktop, scheme):
        report = Report(scheme)
        program = Program(desktop, binary, os.path.join(desktop.folder, "person"))
        program.pin()
        program.start()
        measure_menu(report, program)
        palette = program.open_window("Type to Jump…", "Quillbar")
        report.add(palette, "palette: nothing pinned",
                   palette.element("label", "No shortcuts pinned"))
        program.stop()
        program.add_shortcut("Zed")
        program.pin(*PINS, groupOf={"Alpha": "Work", "Beta": "Home"},
                    launchAtLoginShortcuts={"Beta": True},
                    shortcutHotkeys={"Beta": {"keyCode": 49, "modifiers": 0x1800}})
        program.start()
        for part in (measure_palette, measure_settings, measure_focus, measure_about, measure_menu):
            part(report, program)
        program.stop()


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit("contrast.py BINARY")
    for colours in ("light", "dark"):
        measure(sys.argv[1], colours)
