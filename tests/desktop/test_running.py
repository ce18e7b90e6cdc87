"""Running shortcuts and what the person is told."""

import signal

from virtualdesktop import wait_until


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
    assert shown["hints"]["desktop-entry"] == "com.quillbar.Quillbar"

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
    assert program.stop(signal.SIGINT) == 0
