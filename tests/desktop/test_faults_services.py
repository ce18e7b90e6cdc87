"""The notification service and the panel fail while the program runs: it answers throughout."""

import contextlib

from virtualdesktop import probe, wait_until

RESTARTS = 20


@contextlib.contextmanager
def absent(notifications):
    notifications.stop()
    yield
    notifications.start("body", "body-markup")


@contextlib.contextmanager
def hung(notifications):
    notifications.freeze()
    try:
        yield
    finally:
        notifications.thaw()


@contextlib.contextmanager
def replaced(notifications):
    notifications.stop()
    notifications.start("body")
    yield
    notifications.stop()
    notifications.start("body", "body-markup")


def told(program):
    return [notification["body"] for notification in program.desktop.notifications.shown()]


def test_notification_service_in_any_state_delays_nothing(program):
    program.pin("A & B")
    menu = program.start().menu
    probe.wait_for_hotkey(program)
    notifications = program.desktop.notifications
    for state, expected in ((absent, None), (hung, "A &amp; B"), (replaced, "A & B")):
        notifications.clear()
        with state(notifications):
            probe.everything_answers(program, menu, "A & B")
            if state is replaced:
                wait_until(lambda: told(program), "the new service is told nothing")
        if expected:
            # A service that was hung gets what was kept for it.
            wait_until(lambda: told(program) == [f"Launched “{expected}”"],
                       lambda: f"{state.__name__}: {told(program)}")


def test_icon_returns_with_every_panel_and_nothing_grows(program):
    panel = program.desktop.panel
    program.pin("A")
    menu = program.start().menu
    probe.wait_for_hotkey(program)
    wait_until(panel.shows_icon, "the icon never shows")
    before = probe.descriptors(program)
    for _ in range(RESTARTS):
        panel.kill()
        assert "A" in menu.titles()
        panel.start()
        assert "A" in program.tray().menu.titles()
    wait_until(panel.shows_icon, "the icon does not return")
    probe.everything_answers(program, menu, "A")
    wait_until(lambda: probe.descriptors(program) == before,
               lambda: f"open before {before}, after {probe.descriptors(program)}")
