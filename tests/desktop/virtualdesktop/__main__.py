"""Command line: `demo` shows a Quillbar at work, `pictures` draws it for the documents, `run` runs any
command on a virtual desktop."""

import argparse
import signal
import sys

from . import VirtualDesktop
from .demo import demonstrate
from .pictures import draw_pictures


def main():
    parser = argparse.ArgumentParser(prog="virtualdesktop", description=__doc__)
    commands = parser.add_subparsers(required=True)

    demo = commands.add_parser("demo", help="run a shortcut from the tray menu")
    demo.add_argument("binary", help="the quillbar to start")
    demo.add_argument("screenshot", help="the PNG file to write the open menu to")
    demo.set_defaults(act=lambda options: demonstrate(options.binary, options.screenshot))

    pictures = commands.add_parser("pictures", help="draw the pictures of the documents")
    pictures.add_argument("binary", help="the quillbar to start")
    pictures.add_argument("folder", help="where the PNG files go")
    pictures.set_defaults(act=lambda options: draw_pictures(options.binary, options.folder))

    run = commands.add_parser("run", help="run a command and exit with its status")
    run.add_argument("command", nargs=argparse.REMAINDER)
    run.set_defaults(act=lambda options: run_command(options.command))

    # A with block is left in order by an exception only.
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(128 + signal.SIGTERM))
    options = parser.parse_args()
    return options.act(options)


def run_command(command):
    with VirtualDesktop() as desktop:
        return desktop.start(command, stdout=None, stderr=None).wait()


if __name__ == "__main__":
    sys.exit(main())
