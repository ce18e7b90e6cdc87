"""Waiting for what must come, without ever deciding by time."""

import time

# Generous: only a broken program reaches it.
PATIENCE = 60.0


class NeverHappened(AssertionError):
    pass


def settled(look):
    """What two looks in a row agree on."""
    looks = [look()]

    def agrees():
        looks.append(look())
        return looks[-1] == looks[-2]

    wait_until(agrees, "what is looked at never comes to rest")
    return looks[-1]


def wait_until(predicate, what=None, patience=PATIENCE):
    """Returns the predicate's first true result; asks again until then."""
    end = time.monotonic() + patience
    while True:
        result = predicate()
        if result:
            return result
        if time.monotonic() > end:
            raise NeverHappened(what() if callable(what) else what or "the expected did not happen")
        time.sleep(0.02)
