"""The menu as panels read it over the bus."""

from virtualdesktop import wait_until

COMMANDS = ["---", "Edit in Shortcuts…", "Type to Jump…", "Settings…", "---",
            "Check for Updates…", "About Quillbar", "Quit Quillbar",
            "⌘⌥·17 · type to jump · 1–9 to run"]


def start(program):
    """The menu of a program that has just started: empty until the tool has told what there is."""
    menu = program.start().menu
    wait_until(lambda: menu.rows(images=False), "the menu never comes")
    return menu


def test_groups_hotkeys_and_run_all_stand_in_order(program):
    program.pin("A", "B", "C", groupOf={"A": "Work", "C": "Work"},
                shortcutHotkeys={"B": {"keyCode": 11, "modifiers": 0x900},
                                 "C": {"keyCode": 0, "modifiers": 0x900}})
    menu = start(program)
    assert menu.titles() == ["QUILLBAR", "WORK", "A", "B  (⌘⌥·11)", "C", "---", "Run All",
                             *COMMANDS]


def test_rows_have_their_state_shortcut_and_image(program):
    program.pin("A", "B")
    menu = start(program)
    disabled = [row.title for row in menu.rows() if not row.enabled and not row.separator]
    assert disabled == ["QUILLBAR", COMMANDS[-1]]
    assert {row.title: row.shortcut for row in menu.rows() if row.shortcut} == {
        "A": [["1"]], "B": [["2"]], "Run All": [["Super", "0"]],
        "Type to Jump…": [["Alt", "Super", "t"]], "Settings…": [["Super", "comma"]],
        "Check for Updates…": [["Super", "u"]], "Quit Quillbar": [["Super", "q"]]}
    without_image = [row.title for row in menu.rows() if not row.icon and not row.separator]
    assert without_image == ["Quit Quillbar", COMMANDS[-1]]


def test_names_are_shown_and_run_as_they_are(program):
    names = ["this & that", "under_score __init__", "<b>bold <i>", "heart 💜 café", "-n dash",
             " blanks around ", 'quotes "\'`$HOME`']
    program.pin(*names)
    menu = start(program)
    assert menu.titles()[1:-len(COMMANDS) - 2] == names
    for count, name in enumerate(names, start=1):
        menu.click(name)
        program.wait_for_runs(*names[:count])


def test_unchanged_menu_is_not_announced_again(program):
    program.pin("A", "B")
    menu = start(program)
    ids, revision = [row.id for row in menu.rows()], menu.revision()
    updates = []
    stop = menu.on_update(updates.append)
    menu.click("A")
    wait_until(program.desktop.notifications.shown, "the run is not reported")
    assert [row.id for row in menu.rows()] == ids
    assert menu.revision() == revision
    assert not updates
    stop()


def test_five_thousand_pins_work(program):
    names = [f"Shortcut {number:04}" for number in range(5000)]
    program.pin(*names)
    menu = start(program)
    rows = menu.rows(images=False)
    assert [row.title for row in rows][1:5001] == names
    menu.send(rows[5000].id)
    program.wait_for_runs(names[-1])


def test_quit_ends_the_program(program):
    menu = start(program)
    menu.click("Quit Quillbar")
    wait_until(lambda: program.process.poll() is not None, "Quit does not end the program")
    assert program.process.returncode == 0
