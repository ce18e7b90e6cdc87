"""What the program holds: memory, descriptors, threads, X resources, match rules."""

import os
import statistics

import Xlib.ext.res

_STATS = ("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus.Debug.Stats")

# How much more the last third of a run may hold than the second, by median: a window that is kept
# for the next time, with all that belongs to it.
ALLOWANCE = {"own memory": 1024, "descriptors": 1, "threads": 1, "rules": 0, "x resources": 14,
             "spare grabs": 0}


def measure(desktop, process_id):
    """Kilobytes and counts by name."""
    types = _x_resources(desktop.screen.display, process_id)
    grabs = types.pop("PASSIVE GRAB", 0)
    return {
        "own memory": _own_memory(process_id),
        "descriptors": len(os.listdir(f"/proc/{process_id}/fd")),
        "threads": len(os.listdir(f"/proc/{process_id}/task")),
        "rules": _match_rules(desktop.bus, process_id),
        "x resources": sum(types.values()),
        "grabs": grabs,
    }


def growth(samples):
    """What grew: the first third of a run warms up, the others compare."""
    third = max(len(samples) // 3, 1)

    def grown(name):
        before, after = (statistics.median(sample[name] for sample in part)
                         for part in (samples[third:2 * third] or samples, samples[-third:]))
        return after > before + ALLOWANCE[name]

    return list(filter(grown, ALLOWANCE))


def _own_memory(process_id):
    """What no other process shares, and so none changes."""
    with open(f"/proc/{process_id}/smaps_rollup", encoding="ascii") as file:
        return next(int(line.split()[1]) for line in file if line.startswith("Anonymous:"))


def _match_rules(bus, process_id):
    rules = bus.call(*_STATS, "GetAllMatchRules")[0]
    return sum(len(found) for name, found in rules.items() if bus.process_of(name) == process_id)


def _x_resources(display, process_id):
    """How many resources of each type the process's connections to the display hold."""
    clients = display.res_query_client_ids(
        [{"client": 0, "mask": Xlib.ext.res.LocalClientPIDMask}]).ids
    counts = {}
    for client in clients:
        if client.value and client.value[0] == process_id:
            for kind in display.res_query_client_resources(client.spec.client).types:
                name = display.get_atom_name(kind.resource_type)
                counts[name] = counts.get(name, 0) + kind.count
    return counts
