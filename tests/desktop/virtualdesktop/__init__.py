"""A private desktop for one test run: display, window manager, session bus, panel, notifications.

Everything is started by the module itself and ended by process id; nothing of the person's own
session is touched.
"""

from .desktop import VirtualDesktop
from .panel import EmbeddingTray
from .processes import stopped
from .program import Program
from .waiting import wait_until
from .window import Window

__all__ = ["EmbeddingTray", "Program", "VirtualDesktop", "Window", "stopped", "wait_until"]
