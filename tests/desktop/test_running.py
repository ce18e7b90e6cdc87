"""Running shortcuts and what the person is told."""

import os

from virtualdesktop import wait_until

# 32 and 33, which no program can set: they stay as whoever started the tests left them.
C_LIBRARY_SIGNALS = 0x180000000


def wait_for_notification(program, count=1):
    return wait_until(
        lambda: len(program.desktop.notifications.shown()) >= count
        and program.desktop.notifications.shown(), "no notification comes")


def record_icons(tray):
    """Notes each icon that the item announces."""
    icons = [tray.icon_name]
    tray.on_new_icon(lambda: icons.append(tray.icon_name))
    return icons


def test_success_is_told_quietly(program):
    program.pin("Say hello")
    program.start().menu.click("Say hello")
    (shown,) = wait_for_notification(program)
    assert (shown["summary"], shown["body"]) == ("Quillbar", "Launched “Say hello”")
    assert shown["hints"]["suppress-sound"] is True
    assert "sound-name" not in shown["hints"]
    assert shown["hints"]["desktop-entry"] == "com.quillbar.Quillbar"


def test_failure_is_told_with_a_sound(program):
    program.add_shortcut("Broken", "exit 3")
    program.pin("Broken")
    menu = program.start().menu
    for count in (1, 2):
        menu.click("Broken")
        shown = wait_for_notification(program, count)[-1]
        assert (shown["summary"], shown["body"]) == (
            "Quillbar", "“Broken” couldn’t run. Check that it still exists in Shortcuts.")
        assert shown["hints"]["sound-name"] == "dialog-error"
        assert not shown["hints"].get("suppress-sound")


def test_icon_dims_for_a_moment(program):
    program.pin("A")
    tray = program.start()
    icons = record_icons(tray)

    # A pulse may be over before this process looks, so that one run may not be enough.
    def dimmed_and_back():
        if icons[-1] == icons[0]:
            if len(set(icons)) > 1:
                return True
            tray.menu.click("A")
        return False

    wait_until(dimmed_and_back, lambda: f"the icon does not dim and return: {set(icons)}")
    assert all(icon.endswith("-symbolic") for icon in icons)


def test_failure_turns_the_icon_red_for_a_moment(program):
    program.add_shortcut("Broken", "exit 1")
    program.pin("Broken")
    tray = program.start()
    icons = record_icons(tray)

    def reddened_and_back():
        if icons[-1] == icons[0]:
            # Panels recolour symbolic icons, so a colour of its own needs another name.
            if any(not icon.endswith("-symbolic") for icon in icons):
                return True
            tray.menu.click("Broken")
        return False

    wait_until(reddened_and_back, lambda: f"the icon does not turn red and back: {set(icons)}")


def test_run_all_starts_every_pin_in_order(program):
    names = ["One", "Two", "Three"]
    program.pin(*names)
    program.start().menu.click("Run All")
    program.wait_for_runs(*names)


def test_child_starts_clean(program):
    """Three descriptors, no blocked or ignored signal, nothing of ours in the environment."""
    report = os.path.join(program.home, "report")
    program.add_shortcut("Look", f"""
        ls /proc/$$/fd >"{report}.fds"
        env >"{report}.environment"
        # In the shell's own place: around a child of its own it blocks signals for a moment.
        exec grep -E '^Sig(Blk|Ign)' /proc/self/status >"{report}.signals"
    """)
    program.pin("Look")
    program.start(DESKTOP_STARTUP_ID="x", XDG_ACTIVATION_TOKEN="y").menu.click("Look")
    wait_for_notification(program)
    with open(f"{report}.fds", encoding="ascii") as file:
        # The shell itself keeps its script open on a high number.
        assert [fd for fd in file.read().split() if int(fd) < 10] == ["0", "1", "2"]
    with open(f"{report}.signals", encoding="ascii") as file:
        assert [int(line.split()[1], 16) & ~C_LIBRARY_SIGNALS for line in file] == [0, 0]
    with open(f"{report}.environment", encoding="utf-8") as file:
        keys = {line.partition("=")[0] for line in file}
    assert not keys & {"DESKTOP_STARTUP_ID", "XDG_ACTIVATION_TOKEN"}


def test_quitting_leaves_a_running_shortcut_alone(program):
    program.add_shortcut("Long", f'cat "{program.home}/pipe"; echo done >"{program.home}/done"')
    os.mkfifo(os.path.join(program.home, "pipe"))
    program.pin("Long")
    program.start().menu.click("Long")
    program.wait_for_runs("Long")
    assert program.stop() == 0
    with open(os.path.join(program.home, "pipe"), "w", encoding="ascii"):
        pass
    wait_until(lambda: os.path.exists(os.path.join(program.home, "done")),
               "the shortcut died with the program")
