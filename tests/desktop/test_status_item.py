"""The icon in the panel, and its menu as panels read it over the bus."""

from virtualdesktop import wait_until

FOOTER = "⌘⌥·17 · type to jump · 1–9 to run"
COMMANDS = ["---", "Edit in Shortcuts…", "Type to Jump…", "Settings…", "---",
            "Check for Updates…", "About Quillbar", "Quit Quillbar", FOOTER]


def picture_of_icon(program):
    """The panel's picture once it shows the icon and rests."""
    wait_until(program.desktop.panel.shows_icon, "the icon never shows")
    program.desktop.screen.settled_picture()
    return program.desktop.panel.picture().tobytes()


def test_icon_is_the_configured_one_and_comes_with_a_late_panel(program):
    panel = program.desktop.panel
    panel.kill()
    program.pin(iconSymbol="heart.fill")
    program.launch()
    wait_until(lambda: program.desktop.bus.owner("com.quillbar.Quillbar"),
               "the program does not start without a panel")
    panel.start()
    heart = picture_of_icon(program)
    assert program.stop() == 0
    wait_until(lambda: not panel.items(), "the icon stays after the program's end")

    program.pin(iconSymbol="bolt.fill")
    program.start()
    assert picture_of_icon(program) != heart


def test_menu_has_its_order_states_shortcuts_and_images(program):
    program.pin("A", "B", "C", groupOf={"A": "Work", "C": "Work"},
                shortcutHotkeys={"B": {"keyCode": 11, "modifiers": 0x900},
                                 "C": {"keyCode": 0, "modifiers": 0x900}})
    rows = program.start().menu.rows()
    assert ["---" if row.separator else row.title for row in rows] == [
        "QUILLBAR", "WORK", "A", "B  (⌘⌥·11)", "C", "---", "Run All", *COMMANDS]
    rows = [row for row in rows if not row.separator]
    assert [row.title for row in rows if not row.enabled] == ["QUILLBAR", "WORK", FOOTER]
    assert {row.title: row.shortcut for row in rows if row.shortcut} == {
        "A": [["1"]], "B  (⌘⌥·11)": [["2"]], "C": [["3"]], "Run All": [["Super", "0"]],
        "Type to Jump…": [["Alt", "Super", "t"]], "Settings…": [["Super", "comma"]],
        "Check for Updates…": [["Super", "u"]], "Quit Quillbar": [["Super", "q"]]}
    assert [row.title for row in rows if not row.icon] == ["Quit Quillbar", FOOTER]
