"""Light and dark windows, as the desktop prefers."""

import os
import signal

from virtualdesktop import Window, wait_until
from virtualdesktop.portal import Portal


def ground(window):
    """How light the empty corner of the window is, 0 to 255."""
    x, y, _, _ = window.area()
    return sum(window.screen.picture((x + 4, y + 4, 1, 1)).getpixel((0, 0))) // 3


def open_about(program, **environment):
    program.pin("Alpha")
    program.start(**environment)
    return program.open_about()


def wait_dark(window):
    wait_until(lambda: ground(window) < 80, lambda: f"the window is not dark: {ground(window)}")


def wait_light(window):
    wait_until(lambda: ground(window) > 200, lambda: f"the window is not light: {ground(window)}")


def test_windows_follow_the_desktops_colours(program):
    with Portal(program.desktop, "dark") as portal:
        about = open_about(program)
        wait_dark(about)
        portal.change("light")
        wait_light(about)
        portal.change("dark")
        wait_dark(about)


def test_an_alert_at_the_start_has_the_desktops_colours(program):
    with Portal(program.desktop, "dark"):
        program.pin("Alpha", "Beta")
        os.remove(os.path.join(program.shortcuts_folder, "Beta"))
        # The menu comes only after the alert is answered.
        program.launch()
        alert = Window(program, "Quillbar")
        wait_dark(alert)
        alert.screen.press("Escape")


def test_without_a_portal_the_name_of_the_gtk_theme_tells(program):
    about = open_about(program)
    wait_light(about)
    configuration = os.path.join(program.home, "xsettingsd.conf")

    def name_theme(name):
        with open(configuration, "w", encoding="utf-8") as file:
            file.write(f'Xft/DPI 98304\nNet/ThemeName "{name}"\n')

    name_theme("Adwaita-dark")
    manager = program.desktop.start(["xsettingsd", "--config", configuration])
    wait_dark(about)
    name_theme("Arc-Darker")
    manager.send_signal(signal.SIGHUP)
    wait_light(about)
    program.desktop.processes.end(manager)


def test_under_kde_windows_have_the_persons_colours(program):
    with open(os.path.join(program.config_home, "kdeglobals"), "w", encoding="utf-8") as file:
        file.write("[Colors:Window]\nBackgroundNormal=120,60,90\n"
                   "[Colors:Button]\nBackgroundNormal=120,60,90\n")
    about = open_about(program, XDG_CURRENT_DESKTOP="KDE", KDE_SESSION_VERSION="5")
    wait_until(lambda: ground(about) == 90, lambda: f"the window has {ground(about)}")
