"""Random use of the program by a seeded monkey: keys, clicks, settings, and a desktop that fails.

Every step is drawn from one seeded source and written to a log. Every so often everything is put
right again, and then the program must work, and must hold no more than before.
"""

from .monkey import Monkey

__all__ = ["Monkey"]
