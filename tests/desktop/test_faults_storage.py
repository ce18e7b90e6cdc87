"""Settings that cannot be saved: the file stays whole, and a later save has what was set."""

import contextlib
import os
import shutil
import subprocess

import pytest
from virtualdesktop import Window, probe

ACCESSIBILITY = True

# Root obeys the permissions of files only without these.
AS_ANYBODY = ["setpriv", "--bounding-set", "-dac_override,-dac_read_search"] \
    if os.geteuid() == 0 else []
IN_A_NAMESPACE = ["unshare", "--map-current-user", "--mount", "--keep-caps"]


def start(program):
    for name in ("Yak", "Zebra"):
        program.add_shortcut(name)
    tray = program.start()
    probe.wait_for_hotkey(program)
    return tray


def open_settings(program, tray):
    tray.menu.click("Settings…")
    return Window(program, "Quillbar Settings")


def pin(settings, name):
    """Ticks the box of a shortcut, which saves at once, and waits until that is over."""
    settings.click("check box", name)
    settings.element("check box", f"Login for {name}")


def stored(program):
    with open(program.config_path, "rb") as file:
        return file.read()


@contextlib.contextmanager
def read_only(program):
    """Neither the folder nor the file can be written to."""
    folder = os.path.dirname(program.config_path)
    os.chmod(program.config_path, 0o400)
    os.chmod(folder, 0o500)
    try:
        yield
    finally:
        os.chmod(folder, 0o700)
        os.chmod(program.config_path, 0o600)


@contextlib.contextmanager
def full_disk(program):
    """The small disk that the settings lie on."""
    filler = os.path.join(os.path.dirname(program.config_path), "filler")
    with contextlib.suppress(OSError), open(filler, "wb", buffering=0) as file:
        while file.write(b"x"):
            pass
    yield
    os.remove(filler)


def pin_in_vain(program, tray):
    """Pins Yak where that cannot be saved: the program goes by it, the file stays as it was."""
    before = stored(program)
    settings = open_settings(program, tray)
    pin(settings, "Yak")
    settings.screen.press("Escape")
    settings.wait_closed()
    probe.everything_answers(program, tray.menu, "Alpha")
    assert "Yak" in tray.menu.titles()
    assert stored(program) == before


def test_what_could_not_be_saved_is_saved_at_the_end(program):
    program.wrapper = AS_ANYBODY
    program.pin("Alpha")
    tray = start(program)
    with read_only(program):
        pin_in_vain(program, tray)
    assert program.stop() == 0
    assert program.read_config()["pinned"] == ["Alpha", "Yak"]


def test_what_found_a_full_disk_is_saved_with_the_next_change(program):
    if subprocess.run([*IN_A_NAMESPACE, "true"], capture_output=True, check=False).returncode:
        pytest.skip("this system gives nobody a mount namespace of its own")
    settings = os.path.join(program.home, "settings.json")
    program.pin("Alpha")
    shutil.move(program.config_path, settings)
    program.wrapper = [
        *IN_A_NAMESPACE, "sh", "-ce", 'mount -t tmpfs -o size=64k,mode=0700 none "$0"; '
        'mv "$1" "$0/config.json"; shift; exec "$@"',
        os.path.dirname(program.config_path), settings]
    tray = start(program)
    program.config_path = f"/proc/{program.process.pid}/root{program.config_path}"
    with full_disk(program):
        pin_in_vain(program, tray)
    settings = open_settings(program, tray)
    pin(settings, "Zebra")
    assert program.read_config()["pinned"] == ["Alpha", "Yak", "Zebra"]


def test_settings_come_back_after_their_folder_was_removed(program):
    program.pin("Alpha", groupOf={"Alpha": "Work"})
    tray = start(program)
    settings = open_settings(program, tray)
    shutil.rmtree(os.path.dirname(program.config_path))
    pin(settings, "Yak")
    assert program.read_config()["pinned"] == ["Alpha", "Yak"]
    assert program.read_config()["groupOf"] == {"Alpha": "Work"}
    assert os.stat(os.path.dirname(program.config_path)).st_mode & 0o777 == 0o700


def test_a_home_that_cannot_be_written_to_is_no_hindrance(program):
    program.wrapper = AS_ANYBODY
    os.chmod(program.data, 0o500)
    program.launch()
    probe.wait_for_hotkey(program)
    Window(program, "Welcome to Quillbar")
    os.chmod(program.data, 0o700)
