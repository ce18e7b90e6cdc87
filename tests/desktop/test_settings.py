"""The settings window, used with real keys and the real mouse."""

from virtualdesktop import Window, wait_until
from virtualdesktop.client import Client
from virtualdesktop.screen import KEY
from Xlib import X

ACCESSIBILITY = True
RECORDED = {"keyCode": 11, "modifiers": 0x1800}
HOTKEY, PALETTE_HOTKEY = "⌥⌃·11, Alt+Control+B", "⌘⌥·17, Super+Alt+T"
TAKEN = "Another program already uses this combination."
SUPER_HELD = (
    "Another program holds the Super key and may keep this combination. Bind this command in "
    "your desktop's settings instead: gapplication action com.quillbar.Quillbar palette")


def start(program, *names, **settings):
    program.pin(*names, **settings)
    program.start()
    return program.open_settings()


def wait_config(program, key, value):
    wait_until(lambda: program.read_config().get(key) == value,
               lambda: f"{key} should be {value!r}: {program.read_config()}")


def order(settings):
    return [row.name for row in settings.elements("list item")]


def wait_order(settings, *names):
    wait_until(lambda: order(settings) == list(names), lambda: f"the rows are {order(settings)}")


def shows(settings, role, name, text):
    settings.wait_for(role, name, f"shows {text}",
                      lambda element: element.description.split(", ")[0] == text)


def answer(program, text):
    """Replaces the text of the open prompt and accepts it."""
    prompt = Window(program, "Quillbar")
    wait_until(lambda: prompt.elements("text")[-1].focused, "the prompt's field has no keyboard")
    prompt.screen.press("Control", "A")
    prompt.screen.type(text)
    wait_until(lambda: prompt.elements("text")[-1].text() == text, f"{text} is not typed")
    prompt.click("push button", "OK")
    prompt.wait_closed()


def test_rows_are_moved_by_mouse_and_keyboard_and_by_assistive_programs(program):
    settings = start(program, "A", "B", "C")
    screen = settings.screen

    x, y, _, height = settings.element("list item", "A").extents()
    screen.drag((x + 15, y + height // 2), (x + 60, y + 2 * height - 4))
    wait_order(settings, "B", "A", "C")
    # A click would give the box the focus and tick it too.
    settings.element("check box", "Login for A").act("SetFocus")
    settings.wait_for("check box", "Login for A", "gets the keyboard", lambda box: box.focused)
    screen.press("Alt", "Down")
    wait_order(settings, "B", "C", "A")
    settings.wait_for("check box", "Login for A", "keeps the keyboard", lambda box: box.focused)
    settings.element("list item", "B").act("Move down")
    wait_order(settings, "C", "B", "A")
    assert program.read_config()["pinned"] == ["A", "B", "C"]
    screen.press("Return")
    wait_config(program, "pinned", ["C", "B", "A"])
    # What was not saved is gone.
    settings.element("list item", "C").act("Move down")
    wait_order(settings, "B", "C", "A")
    settings.click("push button", "Close")
    settings.wait_closed()
    wait_order(program.open_settings(), "C", "B", "A")


def test_recorders_take_every_key_and_what_is_saved_works(program):
    settings = start(program, "Alpha")
    for name, keys, label in (
            ("Quick open hotkey", ["Escape"], "Esc"),
            ("Quick open hotkey", ["Alt", "Tab"], "⌥Tab"),
            ("Quick open hotkey", ["Super", "Shift", "Space"], "⌘⇧Space"),
            ("Hotkey for Alpha", ["Control", "Alt", "B"], "⌥⌃·11")):
        settings.click("push button", name)
        shows(settings, "push button", name, "Press keys…")
        settings.screen.press(*keys)
        shows(settings, "push button", name, label)
    settings.screen.press("Return")
    wait_config(program, "menuHotkey", {"keyCode": 49, "modifiers": 0x300})
    wait_config(program, "shortcutHotkeys", {"Alpha": RECORDED})
    wait_until(lambda: settings.screen.is_grabbed("B", X.Mod1Mask | X.ControlMask))
    for count in (1, 2):
        settings.screen.press("Control", "Alt", "B")
        program.wait_for_runs(*["Alpha"] * count)


def test_popups_choose_and_ask_for_names_and_ignore_the_wheel(program):
    settings = start(program, "Alpha", "Beta", groupOf={"Alpha": "Work"})
    for button in (4, 5, 5):
        settings.screen.click(*settings.middle("combo box", "Section for Alpha"), button)
    # What is clicked afterwards is handled after the wheel.
    settings.click("check box", "Login for Alpha")
    settings.wait_for("check box", "Login for Alpha", "is switched", lambda box: box.checked)
    assert settings.element("combo box", "Section for Alpha").description == "Work"
    settings.choose("Section for Beta", "Work")
    settings.choose("Section for Alpha", "Custom…")
    answer(program, "  Evening ")
    shows(settings, "combo box", "Section for Alpha", "Evening")
    settings.choose("Menu bar icon", "Star")
    settings.screen.press("Return")
    wait_config(program, "groupOf", {"Alpha": "Evening", "Beta": "Work"})
    wait_until(lambda: "star" in program.tray().icon_name, program.tray().icon_name)


def says(settings, name, text):
    settings.wait_for("push button", name, f"says {text!r}",
                      lambda recorder: recorder.description == text)


def is_red(settings, name):
    """Whether the recorder has more clearly red pixels than its text would."""
    picture = settings.screen.picture(settings.element("push button", name).extents())
    return sum(r > 200 and g < 150 and b < 150 for r, g, b in picture.getdata()) > 20


def test_marks_come_and_go_with_what_causes_them(program):
    with Client(program.desktop) as other:
        other.grab(KEY["B"], X.ControlMask | X.Mod1Mask)
        settings = start(program, "A", shortcutHotkeys={"A": RECORDED})
        says(settings, "Quick open hotkey", PALETTE_HOTKEY)
        says(settings, "Hotkey for A", f"{HOTKEY}. {TAKEN}")
        wait_until(lambda: is_red(settings, "Hotkey for A"), "the hotkey is not red")
        assert not is_red(settings, "Quick open hotkey")
        settings.screen.point(*settings.middle("push button", "Hotkey for A"))
        settings.element("tool tip", f"Alt+Control+B\n{TAKEN}")
    # Free again, it is claimed when the panel opens the menu.
    program.tray().menu.send(0, "opened")
    says(settings, "Hotkey for A", HOTKEY)
    settings.screen.press("Control", "Alt", "B")
    program.wait_for_runs("A")
    with Client(program.desktop) as other:
        other.grab(KEY["Super"], 0)
        # The settings look again when they get the keyboard back.
        program.open_about().dismiss()
        says(settings, "Quick open hotkey", f"{PALETTE_HOTKEY}. {SUPER_HELD}")
        says(settings, "Hotkey for A", HOTKEY)
    program.open_about().dismiss()
    says(settings, "Quick open hotkey", PALETTE_HOTKEY)
