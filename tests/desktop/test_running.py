"""Running shortcuts and what the person is told."""

import os

from virtualdesktop import wait_until

# 32 and 33, which no program can set: they stay as whoever started the tests left them.
C_LIBRARY_SIGNALS = 0x180000000


def wait_for_notification(program):
    return wait_until(program.desktop.notifications.shown, "no notification comes")[-1]


def test_success_is_told_quietly_and_failure_with_a_sound_and_a_red_icon(program):
    program.add_shortcut("Broken", "exit 3")
    program.pin("Say hello", "Broken")
    tray = program.start()
    icons = [tray.icon_name]
    tray.on_new_icon(lambda: icons.append(tray.icon_name))
    tray.menu.click("Say hello")
    shown = wait_for_notification(program)
    assert (shown["summary"], shown["body"]) == ("Quillbar", "Launched “Say hello”")
    assert shown["hints"]["suppress-sound"] is True
    assert "sound-name" not in shown["hints"]

    runs = 1

    def reddened_and_back():
        nonlocal runs
        # Pulses that overlap may leave the icon red, so each run waits for the end of the last.
        if len(program.desktop.notifications.shown()) < runs or tray.icon_name != icons[0]:
            return False
        # Panels recolour symbolic icons, so a colour of its own needs another name.
        if any(not icon.endswith("-symbolic") for icon in icons):
            return True
        # A pulse may be over before this process looks, so that one run may not be enough.
        tray.menu.click("Broken")
        runs += 1
        return False

    wait_until(reddened_and_back, lambda: f"the icon does not turn red and back: {set(icons)}")
    shown = wait_for_notification(program)
    assert (shown["summary"], shown["body"]) == (
        "Quillbar", "“Broken” couldn’t run. Check that it still exists in Shortcuts.")
    assert shown["hints"]["sound-name"] == "dialog-error"
    assert not shown["hints"].get("suppress-sound")


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
