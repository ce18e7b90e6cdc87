"""What people do: keys, clicks, menus and second launches, at random."""

import string

from gi.repository import GLib
from virtualdesktop.screen import KEY

from .world import combination

HAND_STEPS = []

_QUIT = "Quit Quillbar"
_MODIFIERS = [[], [], [], ["Shift"], ["Control"], ["Alt"], ["Super"], ["Control", "Alt"]]
_KEYS = ["Escape", "Return", "Tab", "Up", "Down", "Left", "Right", "Home", "End", "BackSpace",
         "Delete", "PageUp", "PageDown", "Space", "KeypadEnter", "F8", "1", "2", "9", "0",
         "A", "C", "V", "X", "W", "S", "Comma"]
_POPUP_KEYS = ["Escape", "Down", "Up", "1", "2", "3", "9", "0", "Home", "Tab", "Left", "Right"]
_CLICKED = ("push button", "check box", "combo box", "list item", "text", "menu item", "link",
            "label", "graphic")
_RECORDED = [["Control", "Alt"], ["Super", "Alt"], ["Super", "Shift"], ["Control", "Shift"]]
_EMOJI = [0x1F600, 0x1F468, 0x05E9, 0x0301, 0xE9, 0x200D]
_SPARE_KEY = 248
_APPLICATION = ("com.quillbar.Quillbar", "/com/quillbar/Quillbar", "org.freedesktop.Application")


def hand(weight):
    def add(step):
        HAND_STEPS.append((weight, step))
        return step

    return add


@hand(10)
def press_palette_hotkey(world):
    keys = combination(world.hotkeys()[None])
    if keys:
        world.screen.press(*keys[0])


@hand(5)
def press_shortcut_hotkey(world):
    keys = [combination(hotkey) for name, hotkey in world.hotkeys().items() if name]
    chosen = world.pick([key[0] for key in keys if key])
    if chosen:
        world.screen.press(*chosen)


@hand(12)
def type_text(world):
    letters = string.digits if world.has_popup() else string.ascii_letters + string.digits + " ,."
    text = "".join(world.random.choices(letters, k=world.random.randint(1, 6)))
    world.note(f"  {text!r}")
    world.screen.type(text)


@hand(2)
def type_other_scripts(world):
    """By giving a spare key another character, as typing aids do."""
    keysym = 0x01000000 | world.random.choice(_EMOJI)
    world.screen.display.change_keyboard_mapping(_SPARE_KEY, [[keysym] * 2])
    world.screen.tap(_SPARE_KEY)


@hand(14)
def press_keys(world):
    if world.has_popup():
        world.screen.press(world.pick(_POPUP_KEYS))
    else:
        world.screen.press(*world.pick(_MODIFIERS), world.pick(_KEYS))


@hand(2)
def hold_key(world):
    """Long enough to repeat, in the server's own time."""
    name = world.pick(["Down", "Tab", "BackSpace", "1"])
    world.screen.tap(KEY[name], 700)


@hand(22)
def click_element(world):
    element = world.pick_element(world.elements(*_CLICKED))
    if not element:
        return
    x, y, width, height = element.extents()
    if element.role == "menu item" and element.name.startswith(_QUIT):
        return
    world.click(x + width // 2, y + height // 2)
    if element.role == "push button" and "otkey" in element.name and world.chance(0.8):
        world.screen.press(*world.pick(_RECORDED), world.pick(list("BFGHJKLNUVWY")))


@hand(5)
def press_element(world):
    """As assistive programs do."""
    element = world.pick_element(world.elements("push button", "check box", "list item"))
    if element:
        element.press()


@hand(6)
def click_anywhere(world):
    window = world.pick(world.windows())
    if not window:
        return
    _, x, y, width, height = window
    world.click(x + world.random.randrange(width), y + world.random.randrange(height),
                world.random.choice([1, 1, 1, 2, 3, 4, 5]))


@hand(4)
def drag(world):
    rows = world.elements("list item", "graphic")
    element = world.pick_element(rows)
    if element and not world.has_popup():
        x, y, _, height = element.extents()
        end = x + world.random.randint(-100, 300), y + world.random.randint(-200, 200)
        world.screen.drag((x + 8, y + height // 2), end)


@hand(10)
def click_icon(world):
    world.click_icon(world.pick([1, 1, 1, 1, 2, 3, 4, 5]))


@hand(6)
def use_own_menu(world):
    if world.has_popup():
        world.screen.press(*world.pick([["1"], ["2"], ["5"], ["9"], ["Super", "0"], ["Down"],
                                        ["Super", "Comma"], ["Escape"], ["Super", "T"]]))


@hand(12)
def click_exported_row(world):
    menu = world.tray.menu
    row = world.pick_row([row for row in menu.rows(images=False) if row.title != _QUIT])
    if row:
        menu.send(row.id)


@hand(5)
def confuse_exported_menu(world):
    menu = world.tray.menu

    def call(method, signature, *arguments):
        world.desktop.bus.call(*menu.address, "com.canonical.dbusmenu", method, signature, *arguments)

    ids = [-2**31, -1, 0, 1, 2, 5, 999, 2**31 - 1]
    row_id = world.random.choice(ids)
    what = world.pick(["event", "group", "show", "layout", "properties", "junk"])
    if what == "event":
        menu.send(row_id, world.random.choice(["hovered", "opened", "closed", "", "\U0001F4A5"]))
    elif what == "group":
        call("EventGroup", "(a(isvu))",
             [(value, "opened", GLib.Variant("(ias)", (1, ["x"])), 7) for value in ids])
    elif what == "show":
        call("AboutToShow", "(i)", row_id)
        call("AboutToShowGroup", "(ai)", ids)
    elif what == "layout":
        call("GetLayout", "(iias)", row_id, world.random.randint(-5, 5), ["label", "\u00fc"])
    elif what == "properties":
        call("GetGroupProperties", "(aias)", ids, [])
    else:
        call("Event", "(as)", ["nonsense"])


@hand(5)
def call_status_item(world):
    tray = world.tray
    x, y = world.random.randint(-100, 2000), world.random.randint(-100, 2000)
    method = world.pick(["Activate", "ContextMenu", "SecondaryActivate", "Scroll", "Explode"])
    if method == "Scroll":
        tray.call(method, "(is)", x, "vertical")
    else:
        tray.call(method, "(ii)", x, y)


@hand(2)
def launch_again(world):
    world.launches.append(world.desktop.start(
        [world.program.binary], world.program.environment, name="second"))


@hand(5)
def act_on_application(world):
    action = world.pick(["palette", "settings", "settings", "activate", "open", "no such", ""])
    if action == "activate":
        world.desktop.bus.call(*_APPLICATION, "Activate", "(a{sv})", {})
    elif action == "open":
        world.desktop.bus.call(*_APPLICATION, "Open", "(asa{sv})", ["file:///etc/passwd"], {})
    else:
        world.desktop.bus.call(*_APPLICATION, "ActivateAction", "(sava{sv})", action, [], {
            "desktop-startup-id": GLib.Variant("s", f"x_TIME{world.random.randint(0, 2**33)}")})


@hand(6)
def close_window(world):
    window = world.pick(world.windows())
    if window:
        world.ask_to_close(window[0])


@hand(2)
def move_window(world):
    window = world.pick(world.windows())
    if window:
        world.screen.display.create_resource_object("window", window[0]).configure(
            x=world.random.randint(-300, 1200), y=world.random.randint(-300, 700))
