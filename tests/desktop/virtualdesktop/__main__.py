"""Command line: `demo BINARY PNG` shows a Quillbar at work, `pictures BINARY FOLDER` draws it for
the documents, `run COMMAND...` runs any command on a virtual desktop and exits with its status."""

import signal
import sys

from . import VirtualDesktop
from .pictures import demonstrate, draw_pictures


def run_command(*command):
    with VirtualDesktop() as desktop:
        return desktop.start(command, stdout=None, stderr=None).wait()


COMMANDS = {"demo": demonstrate, "pictures": draw_pictures, "run": run_command}

if __name__ == "__main__":
    if len(sys.argv) < 3 or sys.argv[1] not in COMMANDS:
        sys.exit(__doc__)
    # A with block is left in order by an exception only.
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(128 + signal.SIGTERM))
    sys.exit(COMMANDS[sys.argv[1]](*sys.argv[2:]))
