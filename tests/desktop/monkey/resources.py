"""What the program holds: memory, descriptors, threads, X resources, match rules."""

import os
import statistics

import Xlib.ext.res

_STATS = ("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus.Debug.Stats")

# How much more the last third of a run may hold than the second, by median: a window that is kept
# for the next time, with all that belongs to it.
ALLOWANCE = {"own memory": 1024, "descriptors": 1, "threads": 1, "zombies": 0, "rules": 0,
             "windows": 1, "pixmaps": 1, "contexts": 1, "cursors": 1, "x resources": 10,
             "spare grabs": 0}
_TYPES = {"windows": "WINDOW", "pixmaps": "PIXMAP", "contexts": "GC", "cursors": "CURSOR",
          "grabs": "PASSIVE GRAB"}


def measure(desktop, process_id):
    """Kilobytes and counts by name."""
    types = _x_resources(desktop.screen.display, process_id)
    return {
        **_memory(process_id),
        "descriptors": len(os.listdir(f"/proc/{process_id}/fd")),
        "threads": len(os.listdir(f"/proc/{process_id}/task")),
        "zombies": _zombies(process_id),
        "rules": _match_rules(desktop.bus, process_id),
        **{name: types.get(kind, 0) for name, kind in _TYPES.items()},
        "x resources": sum(types.values()) - types.get("PASSIVE GRAB", 0),
    }


def growth(samples):
    """What grew, as one text a resource: the first third of a run warms up, the others compare.
    Where the monkey happened to quit, the longest life counts."""
    lives = [[sample for sample in samples if sample["life"] == life]
             for life in {sample["life"] for sample in samples}]
    samples = max(lives, key=len)
    third = len(samples) // 3
    if third == 0:
        return []
    found = []
    for name, allowed in ALLOWANCE.items():
        before = statistics.median(sample[name] for sample in samples[third:2 * third])
        after = statistics.median(sample[name] for sample in samples[-third:])
        if after > before + allowed:
            found.append(f"{name}: {before} became {after}")
    return found


def _memory(process_id):
    """Its share of all memory, and what is its own alone: no other process changes that."""
    with open(f"/proc/{process_id}/smaps_rollup", encoding="ascii") as file:
        values = {key: int(rest.split()[0]) for key, _, rest in
                  (line.partition(":") for line in file) if rest.strip().endswith("kB")}
    return {"pss": values["Pss"], "own memory": values["Anonymous"]}


def _zombies(process_id):
    count = 0
    for entry in os.listdir("/proc"):
        try:
            with open(f"/proc/{entry}/stat", encoding="utf-8", errors="replace") as file:
                state, parent = file.read().rpartition(")")[2].split()[:2]
                count += state == "Z" and int(parent) == process_id
        except OSError:
            continue
    return count


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
