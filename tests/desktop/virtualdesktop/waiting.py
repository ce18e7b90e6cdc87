"""Waiting for what must come, without ever deciding by time."""

import time

from gi.repository import GLib

# Generous: only a broken program reaches it.
PATIENCE = 60.0


class NeverHappened(AssertionError):
    pass


def deliver_signals():
    """Hands the bus signals that have arrived to their callbacks."""
    context = GLib.MainContext.default()
    while context.pending():
        context.iteration(False)


def settled(look):
    """What two looks in a row agree on."""
    last = look()

    def agrees():
        nonlocal last
        before, last = last, look()
        return before == last

    wait_until(agrees, "what is looked at never comes to rest")
    return last


def wait_until(predicate, what=None, patience=PATIENCE):
    """Returns the predicate's first true result; asks again until then."""
    end = time.monotonic() + patience
    while True:
        deliver_signals()
        result = predicate()
        if result:
            return result
        if time.monotonic() > end:
            raise NeverHappened(what() if callable(what) else what or "the expected did not happen")
        time.sleep(0.02)
