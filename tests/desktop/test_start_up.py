"""Starting, starting again, ending, and what the program writes."""

import configparser
import os
import signal

from virtualdesktop import wait_until


def login_entry(program):
    parser = configparser.ConfigParser(interpolation=None, strict=True)
    parser.optionxform = str
    parser.read(program.login_entry, encoding="utf-8")
    return parser["Desktop Entry"]


def test_from_the_start_to_the_end(program):
    before = set(program.desktop.processes.marked())
    program.pin("A", "B", "C",
                launchAtLoginShortcuts={"C": True, "B": True, "Gone": True, "A": False})
    tray = program.start()
    program.wait_for_runs("B", "C")
    wait_until(lambda: os.path.exists(program.login_entry), "no login entry is written")
    assert login_entry(program)["Exec"] \
        == f'"{os.path.realpath(f"/proc/{program.process.pid}/exe")}"'

    second = program.desktop.start([program.binary], program.environment, name="second")
    assert second.wait() == 0
    assert len(program.desktop.panel.items()) == 1

    # A run that is reported afterwards shows that the earlier ones were not.
    tray.menu.click("A")
    shown = wait_until(program.desktop.notifications.shown, "the clicked run is not reported")
    assert [notification["body"] for notification in shown] == ["Launched “A”"]

    assert program.stop(signal.SIGHUP) == 0
    wait_until(lambda: not program.desktop.panel.items(), "the icon stays")
    wait_until(lambda: set(program.desktop.processes.marked()) <= before, "a process stays")
    assert not program.desktop.runtime_files()


def test_broken_configuration_counts_as_the_defaults(program):
    # What is wrong in another way is tried where settings are read.
    config = b'{"pinned": ["A\xff'
    program.write_config(config)
    assert program.start().menu.titles()[:2] == ["QUILLBAR", "No shortcuts pinned"]
    with open(program.config_path, "rb") as file:
        untouched = file.read() == config
    kept = [name for name in os.listdir(os.path.dirname(program.config_path))
            if name != "config.json"]
    assert untouched or kept, "the unreadable file is lost"
