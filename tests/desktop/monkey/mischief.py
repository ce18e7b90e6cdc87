"""What goes wrong around the program: panel, services, tool, folder, layout, window manager."""

import functools
import os
import signal
import subprocess

from .world import NAMES

MISCHIEF_STEPS = []

# The tool's moods; "missing" and "not executable" are none of its own.
_MOODS = {
    "fails": "#!/bin/sh\nexit 1\n",
    "hangs": "#!/bin/sh\nsleep 1.5\n",
    "floods": "#!/bin/sh\nhead -c 1000000 /dev/zero | tr '\\0' 'x'\n",
    "lists others": "#!/bin/sh\nprintf 'Other\\nAlpha\\n'\n",
    "lists nothing": "#!/bin/sh\n",
    "lists many": "#!/bin/sh\nseq 1 3000\n",
    "lists bytes": "#!/bin/sh\nprintf 'A\\377\\n\\0\\n\\342\\202\\nAlpha\\n'\n",
    "dies": "#!/bin/sh\nkill -9 $$\n",
    "leaves a pipe open": "#!/bin/sh\necho Alpha\nsleep 2 &\n",
    "not a program": "\x7fELF nonsense",
}


def mischief(weight, unless=None):
    """Adds a step, which does nothing while that trouble lasts."""
    def add(step):
        @functools.wraps(step)
        def step_unless(world):
            if not world.has_trouble(unless):
                step(world)

        MISCHIEF_STEPS.append((weight, step_unless))

    return add


@mischief(1, unless="no panel")
def take_panel_away(world):
    world.desktop.panel.kill()
    world.trouble("no panel", world.desktop.panel.start)


@mischief(1, unless="no panel")
def restart_panel(world):
    world.desktop.panel.kill()
    world.desktop.panel.start()


@mischief(1, unless="notifications")
def stop_notifications(world):
    world.desktop.notifications.stop()
    capabilities = world.pick([["body"], ["body", "body-markup"]])
    world.trouble("notifications", lambda: world.desktop.notifications.start(*capabilities))


@mischief(1, unless="notifications")
def freeze_notifications(world):
    world.desktop.notifications.freeze()
    world.trouble("notifications", world.desktop.notifications.thaw)


@mischief(2, unless="no portal")
def change_colours(world):
    world.portal.change(world.pick(["dark", "light"]))


@mischief(0.5, unless="no portal")
def take_portal_away(world):
    world.portal.__exit__()
    world.trouble("no portal", world.portal.__enter__)


@mischief(5, unless="tool")
def break_tool(world):
    mood = world.pick(["missing", "not executable", *_MOODS])
    os.remove(world.tool)
    if mood != "missing":
        with open(world.tool, "w", encoding="utf-8") as file:
            file.write(_MOODS.get(mood, ""))
        os.chmod(world.tool, 0o600 if mood == "not executable" else 0o700)
    world.trouble("tool", world.mend_tool)


@mischief(3)
def change_shortcuts(world):
    name = world.pick(NAMES)
    path = os.path.join(world.program.shortcuts_folder, name)
    if not os.path.exists(path):
        world.add_shortcut(name)
    elif world.chance(0.7):
        os.remove(path)
        world.trouble(f"no {name[:9]}", lambda: world.add_shortcut(name))


@mischief(1)
def pause_program(world):
    """As a suspended computer does; what was typed meanwhile arrives at once."""
    process = world.program.process
    process.send_signal(signal.SIGSTOP)
    for key in ("A", "Down", "Tab"):
        world.screen.press(key)
    world.click_icon()
    process.send_signal(signal.SIGCONT)


@mischief(1)
def pause_children(world):
    # Before a child is another program, it has the parent's memory and the parent waits for it.
    own = _executable(world.program.process.pid)
    children = [child for child in world.program.children()
                if _executable(child) not in (own, None)]
    for child in children:
        _signal(child, signal.SIGSTOP)
    world.trouble("paused children",
                  lambda: [_signal(child, signal.SIGCONT) for child in children])


@mischief(1, unless="folder")
def block_folder(world):
    """Nothing can be stored: in the folder's place is a file, which stops even root."""
    folder = os.path.dirname(world.program.config_path)
    os.rename(folder, f"{folder}.away")
    with open(folder, "w", encoding="ascii"):
        pass

    def unblock():
        os.remove(folder)
        os.rename(f"{folder}.away", folder)

    world.trouble("folder", unblock)


@mischief(2)
def change_layout(world):
    subprocess.run(["setxkbmap", world.pick(["fr", "ru", "de", "us"])],
                   env=world.desktop.environment, check=True)


@mischief(0.5)
def restart_window_manager(world):
    world.restart_window_manager()


def _executable(process_id):
    try:
        return os.readlink(f"/proc/{process_id}/exe")
    except OSError:
        return None


def _signal(process_id, number):
    try:
        os.kill(process_id, number)
    except ProcessLookupError:
        pass
