"""Random use of the program by a seeded monkey: keys, clicks, settings, and services that fail."""
