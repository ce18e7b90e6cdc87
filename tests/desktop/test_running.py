"""One start with its runs and reports, a second start, and the end."""

import contextlib
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


def handle_addresses(program):
    """What opens shortcuts:// notes the address and the token that it came with."""
    program.add_shortcut("note", 'echo "$1 $XDG_ACTIVATION_TOKEN" >"$HOME/opened"')
    folder = os.path.join(program.data, "applications")
    os.makedirs(folder)
    with open(os.path.join(folder, "note.desktop"), "w", encoding="utf-8") as file:
        file.write("[Desktop Entry]\nType=Application\nName=Note\n"
                   f"Exec={program.shortcuts_folder}/note %u\n"
                   "MimeType=x-scheme-handler/shortcuts;\n")
    with open(os.path.join(folder, "mimeinfo.cache"), "w", encoding="utf-8") as file:
        file.write("[MIME Cache]\nx-scheme-handler/shortcuts=note.desktop;\n")


def opened(program):
    with contextlib.suppress(FileNotFoundError):
        with open(os.path.join(program.home, "opened"), encoding="utf-8") as file:
            return file.read()


def test_success_is_told_quietly_and_failure_with_a_sound(program):
    handle_addresses(program)
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
    program.desktop.notifications.click(number=1, token="of-the-click")
    wait_until(lambda: opened(program) == "shortcuts://open-shortcut?name=Broken of-the-click\n",
               lambda: f"a click opens {opened(program)}")
    assert program.stop(signal.SIGINT) == 0
