"""One start with its runs and reports, a second start, and the end."""

import os
import signal

from virtualdesktop import wait_until


def wait_for_report(program):
    return wait_until(program.desktop.notifications.shown, "no notification comes")[-1]


def test_from_the_start_to_the_end(program):
    before = set(program.desktop.processes.marked())
    program.pin("A", "B", "C",
                launchAtLoginShortcuts={"C": True, "B": True, "Gone": True, "A": False})
    tray = program.start()
    program.wait_for_runs("B", "C")
    wait_until(lambda: os.path.exists(program.login_entry), "no login entry is written")
    with open(program.login_entry, encoding="utf-8") as file:
        binary = os.path.realpath(f"/proc/{program.process.pid}/exe")
        assert f'Exec="{binary}"\n' in file.read()

    second = program.desktop.start([program.binary], program.environment, name="second")
    assert second.wait() == 0
    assert len(program.desktop.panel.items()) == 1

    # A run that is reported afterwards shows that the earlier ones were not.
    tray.menu.click("A")
    wait_for_report(program)
    assert [note["body"] for note in program.desktop.notifications.shown()] == ["Launched “A”"]

    assert program.stop(signal.SIGHUP) == 0
    wait_until(lambda: not program.desktop.panel.items(), "the icon stays")
    wait_until(lambda: set(program.desktop.processes.marked()) <= before, "a process stays")
    assert not program.desktop.runtime_files()


def test_success_is_told_quietly_and_failure_with_a_sound(program):
    program.add_shortcut("Broken", "exit 3")
    program.pin("Say hello", "Broken")
    tray = program.start()
    tray.menu.click("Say hello")
    shown = wait_for_report(program)
    assert (shown["summary"], shown["body"]) == ("Quillbar", "Launched “Say hello”")
    assert shown["hints"]["suppress-sound"] is True
    assert "sound-name" not in shown["hints"]
    assert shown["hints"]["desktop-entry"] == "com.quillbar.Quillbar"

    program.desktop.notifications.clear()
    tray.menu.click("Broken")
    shown = wait_for_report(program)
    assert "“Broken” couldn’t run." in shown["body"]
    assert shown["hints"]["sound-name"] == "dialog-error"
    assert not shown["hints"].get("suppress-sound")
    assert program.stop(signal.SIGINT) == 0
