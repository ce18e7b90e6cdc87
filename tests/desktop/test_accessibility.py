"""What assistive programs are told of the windows, and the order in which Tab goes through them."""

from virtualdesktop import wait_until

ACCESSIBILITY = True
CONTROLS = ("push button", "check box", "combo box", "text", "list", "list item")
PINNED = [("push button", "Hotkey for {}"), ("check box", "Login for {}"),
          ("combo box", "Section for {}"), ("push button", "Remove")]
SETTINGS = [
    ("check box", "Start Quillbar at login"), ("combo box", "Menu bar icon"),
    ("push button", "Quick open hotkey"),
    *[(role, name.format(pin)) for pin in "AB" for role, name in PINNED],
    ("check box", "Zed"), ("push button", "Close"), ("push button", "Save")]


def controls(window):
    return [(element.role, element.name) for element in window.elements()
            if element.role in CONTROLS]


def test_every_control_has_its_name_and_state_and_tab_reaches_it(program):
    program.add_shortcut("Zed")
    program.pin("A", "B", groupOf={"B": "Games"}, launchAtLoginShortcuts={"B": True},
                shortcutHotkeys={"B": {"keyCode": 0, "modifiers": 0x100}})
    program.start()
    settings = program.open_settings()
    assert sorted(controls(settings)) == sorted(
        [*SETTINGS, ("list", "Pinned shortcuts"), ("list item", "A"), ("list item", "B")])
    told = {(element.role, element.name): element for element in settings.elements()}
    assert told["push button", "Hotkey for B"].description == (
        "⌘A. This key cannot start a shortcut.")
    assert told["push button", "Hotkey for A"].description == "None"
    assert told["combo box", "Section for B"].description == "Games"
    assert [told["check box", f"Login for {name}"].checked for name in "AB"] == [False, True]
    assert [element.description for element in settings.elements("push button")
            if element.name == "Remove"] == ["A", "B"]

    def focused():
        return next(((element.role, element.name) for element in settings.elements()
                     if element.focused), None)

    reached = [wait_until(focused, "no control has the keyboard")]
    for _ in SETTINGS[1:]:
        settings.screen.press("Tab")
        reached.append(wait_until(lambda: focused() if focused() != reached[-1] else None,
                                  lambda: f"Tab stays on {reached[-1]}"))
    first = reached.index(SETTINGS[0])
    assert reached[first:] + reached[:first] == SETTINGS
