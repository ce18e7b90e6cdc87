"""Starting, starting again, ending, and what the program writes."""

import configparser
import os
import signal

import pytest
from virtualdesktop import wait_until

DEFAULTS = ["QUILLBAR", "No shortcuts pinned"]


def login_entry(program):
    parser = configparser.ConfigParser(interpolation=None, strict=True)
    parser.optionxform = str
    parser.read(program.login_entry, encoding="utf-8")
    return parser["Desktop Entry"]


def test_login_entry_starts_this_very_program(program):
    program.pin()
    program.start()
    wait_until(lambda: os.path.exists(program.login_entry), "no login entry is written")
    entry = login_entry(program)
    assert entry["Type"] == "Application"
    assert entry["Name"]
    assert entry["Exec"] == f'"{os.path.realpath(f"/proc/{program.process.pid}/exe")}"'


def test_flagged_pins_run_in_order_without_a_word(program):
    program.pin("A", "B", "C", launchAtLogin=False,
                launchAtLoginShortcuts={"C": True, "B": True, "Gone": True, "A": False})
    tray = program.start()
    program.wait_for_runs("B", "C")
    # A run that is reported afterwards shows that the earlier ones were not.
    tray.menu.click("A")
    shown = wait_until(program.desktop.notifications.shown, "the clicked run is not reported")
    assert [notification["body"] for notification in shown] == ["Launched “A”"]


@pytest.mark.parametrize("config", [
    b"", b"{", b"[]", b'"text"', b"\xff\xfe\x00", b'{"pinned": ["A"]}',
    b'{"pinned": "A", "iconSymbol": "heart.fill"}', b'{"pinned": [null], "iconSymbol": "x"}',
    b'{"pinned": ["A\xff"], "iconSymbol": "x"}', b"[" * 10_000,
    b'{"pinned": ["A"], "iconSymbol": "x", "extra": ' + b"[" * 10_000 + b"]" * 9_999 + b"}",
    b'{"pinned": ["' + b"A" * 50_000_000,
], ids=["empty", "cut", "array", "string", "utf16", "no-icon", "text-for-list", "null-name",
        "no-utf8", "deep", "unbalanced", "huge"])
def test_broken_configuration_counts_as_the_defaults(program, config):
    program.write_config(config)
    assert program.start().menu.titles()[:2] == DEFAULTS
    with open(program.config_path, "rb") as file:
        untouched = file.read() == config
    kept = [name for name in os.listdir(os.path.dirname(program.config_path))
            if name != "config.json"]
    assert untouched or kept or not config, "the unreadable file is lost"


def test_second_start_leaves_the_first_alone(program):
    program.pin("A")
    tray = program.start()
    second = program.desktop.start([program.binary], program.environment, name="second")
    wait_until(lambda: second.poll() is not None, "the second start does not end")
    assert second.returncode == 0
    assert len(program.desktop.panel.items()) == 1
    tray.menu.click("A")
    program.wait_for_runs("A")


@pytest.mark.parametrize("how", [signal.SIGTERM, signal.SIGINT, signal.SIGHUP])
def test_signals_end_the_program_cleanly(program, how):
    before = set(program.desktop.processes.marked())
    program.pin("A")
    menu = program.start().menu
    menu.click("A")
    wait_until(program.desktop.notifications.shown, "the run is not reported")
    assert program.stop(how) == 0
    wait_until(lambda: not program.desktop.panel.items(), "the icon stays")
    wait_until(lambda: set(program.desktop.processes.marked()) <= before, "a process stays")
    assert not program.desktop.runtime_files()


def test_settings_are_private_to_the_person(program):
    program.pin()
    program.start()
    wait_until(lambda: os.path.exists(program.login_entry), "the start does not end")
    assert os.stat(os.path.dirname(program.config_path)).st_mode & 0o077 == 0
