"""The life of the packages in a root folder of their own: installed, used, upgraded, removed, and
purged.

The root folder is a bare Debian; the desktop around it is the tests' own, so that nothing but what
the packages depend on is installed there. Argument: the root folder, with the packages in
/packages and their next version in /packages/new.
"""

import configparser
import os
import signal
import subprocess
import sys

from gi.repository import GLib
from virtualdesktop import Program, VirtualDesktop, Window, wait_until

NAME = "com.quillbar.Quillbar"
PATH = "/com/quillbar/Quillbar"
PACKAGES = ["quillbar", "quillbar-shortcuts"]
# What the packages recommend or what desktops bring: only needed to ask from outside.
DESKTOP_TOOLS = ["libglib2.0-bin", "libgtk-3-bin", "xdg-utils", "desktop-file-utils"]


class Root:
    """The root folder as a system."""

    def __init__(self, folder):
        self.folder = folder

    def command(self, *arguments):
        return ["/usr/sbin/chroot", self.folder, *arguments]

    def run(self, *arguments, environment=None):
        """Runs a command to its end; returns what it printed."""
        done = subprocess.run(
            self.command(*arguments), env=environment or _BARE, text=True, check=False,
            stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
        if done.returncode != 0:
            command = " ".join(arguments)
            raise AssertionError(f"{command} ended with {done.returncode}: {done.stdout}")
        return done.stdout

    def apt(self, *arguments):
        return self.run("apt-get", "-q", "-y", "--no-install-recommends", *arguments)

    def packages(self, folder):
        return [f"{folder}/{name}" for name in os.listdir(self.path(folder))
                if name.endswith(".deb")]

    def install_ours(self, folder):
        self.apt("install", *self.packages(folder))

    def version(self, package):
        return self.run("dpkg-query", "-W", "-f", "${Version}", package)

    def path(self, path):
        return self.folder + path

    def files_of_ours(self):
        """Whatever outside people's homes carries one of the names of ours."""
        elsewhere = ["(", "-path", "/tmp", "-o", "-path", "/packages", ")", "-prune", "-o"]
        found = self.run("find", "/", "-xdev", *elsewhere, "(", "-iname", "*quillbar*", "-o",
                         "-iname", "*shortcuts*", ")", "-print")
        return [path for path in found.splitlines() if not self._belongs_to_another(path)]

    def _belongs_to_another(self, path):
        owner = subprocess.run(self.command("dpkg", "-S", path), env=_BARE, text=True, check=False,
                               capture_output=True).stdout.partition(":")[0]
        return owner != "" and owner not in PACKAGES


_BARE = {"PATH": "/usr/sbin:/usr/bin:/sbin:/bin", "LANG": "C.UTF-8",
         "DEBIAN_FRONTEND": "noninteractive"}


class ActivatedProcess:
    """A process that the session bus started."""

    def __init__(self, pid):
        self.pid, self.returncode = pid, None

    def poll(self):
        return None if os.path.exists(f"/proc/{self.pid}") else 0


class InstalledProgram(Program):
    """The installed program, in the root folder."""

    def __init__(self, desktop, root):
        super().__init__(desktop, "/usr/bin/quillbar", os.path.join(desktop.folder, "person"))
        self._root = root
        desktop.bus.call("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                         "UpdateActivationEnvironment", "(a{ss})", self._whole_environment())

    def launch(self, **environment):
        self.process = self.desktop.start(
            self._root.command(self.binary), {**self.environment, **environment}, name="quillbar")
        return self.process

    def run(self, *arguments):
        """Runs a command of the system as the person does."""
        return self._root.run(*arguments, environment=self._whole_environment())

    def is_running(self):
        return self.desktop.bus.owner(NAME) is not None

    def adopt(self):
        """Takes the program that the bus started for this one."""
        wait_until(self.is_running, "the bus starts nothing")
        self.process = ActivatedProcess(self.desktop.bus.process_of(NAME))
        return self.tray()

    def choose_quit(self):
        self.tray().menu.click("Quit Quillbar")
        wait_until(lambda: not self.is_running(), "Quit ends nothing")
        wait_until(lambda: self.process.poll() is not None, "the process stays")

    def say_hello(self, count):
        """Runs a shortcut from the menu and waits for what it did and for its report."""
        self.tray().menu.click("Say hello")
        self.wait_for_runs(*["Say hello"] * count)
        wait_until(lambda: any("Say hello" in note["body"]
                               for note in self.desktop.notifications.shown()), "no report comes")
        self.desktop.notifications.clear()

    def login_entry_command(self):
        parser = configparser.ConfigParser(interpolation=None)
        parser.optionxform = str
        parser.read(self.login_entry, encoding="utf-8")
        return parser["Desktop Entry"]["Exec"]

    def _whole_environment(self):
        return {**self.desktop.environment, **self.environment}


def install(root):
    root.apt("update")
    root.install_ours("/packages")


def use(program):
    program.pin("Say hello")
    program.start()
    program.say_hello(1)
    menu = program.open_own_menu()
    program.desktop.screen.press("1")
    program.wait_for_runs("Say hello", "Say hello")
    wait_until(lambda: menu not in program.windows(), "the menu stays open")
    wait_until(lambda: os.path.exists(program.login_entry), "no login entry is written")
    assert program.login_entry_command() == '"/usr/bin/quillbar"'


def upgrade(program, root):
    process, settings = program.process.pid, program.read_config()
    version = root.version("quillbar")
    os.remove(program.login_entry)
    root.install_ours("/packages/new")
    assert root.version("quillbar") == f"{version}+next", "the upgrade did not take place"
    assert program.process.poll() is None, "the upgrade ended the program"
    program.say_hello(3)
    assert program.read_config() == settings, "the upgrade changed the settings"
    assert os.readlink(f"/proc/{process}/exe").endswith("(deleted)"), "the old program is gone"
    program.choose_quit()
    program.start()
    program.say_hello(4)
    assert program.read_config() == settings, "the next version reads other settings"
    wait_until(lambda: os.path.exists(program.login_entry), "no login entry is written")
    assert program.login_entry_command() == '"/usr/bin/quillbar"'


def be_asked_by_the_desktop(program, root):
    root.apt("install", *DESKTOP_TOOLS)
    handler = program.run("xdg-mime", "query", "default", "x-scheme-handler/shortcuts").strip()
    assert handler == "com.quillbar.Shortcuts.desktop", f"shortcuts:// leads to {handler!r}"
    ask_for_windows(program)
    program.choose_quit()
    # Not running, it is started by the bus.
    assert not program.is_running()
    program.run("gtk-launch", NAME)
    program.adopt()
    program.say_hello(5)
    assert not program.windows(), "a launch opens a window"


def ask_for_windows(program):
    for arguments, title in (
            (["gapplication", "action", NAME, "palette"], "Quillbar"),
            (["gapplication", "action", NAME, "settings"], "Quillbar Settings"),
            (["gtk-launch", NAME], "Quillbar Settings"),
            (["/usr/bin/quillbar"], "Quillbar Settings")):
        program.run(*arguments)
        close(Window(program, title))


def close(window):
    window.screen.press("Escape")
    window.wait_closed()


def remove(program, root):
    settings = program.read_config()
    root.apt("remove", *PACKAGES)
    assert not os.path.exists(root.path("/usr/bin/quillbar")), "the program stays installed"
    assert program.is_running(), "the removal ends a program at work"
    program.tray().menu.click("Say hello")
    wait_until(lambda: any("couldn’t run" in note["body"]
                           for note in program.desktop.notifications.shown()),
               "a run without the tool is not reported")
    program.choose_quit()
    wait_until(lambda: NAME not in activatable(program), "the bus still offers to start it")
    assert root.files_of_ours() == [], f"files stay: {root.files_of_ours()}"
    root.install_ours("/packages")
    root.apt("purge", *PACKAGES)
    assert program.run("xdg-mime", "query", "default", "x-scheme-handler/shortcuts").strip() == ""
    assert program.read_config() == settings, "the person's settings do not stay"
    assert root.files_of_ours() == [], f"files stay: {root.files_of_ours()}"


def activatable(program):
    return program.desktop.bus.call("org.freedesktop.DBus", "/org/freedesktop/DBus",
                                    "org.freedesktop.DBus", "ListActivatableNames")[0]


def main():
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(128 + signal.SIGTERM))
    root = Root(os.path.abspath(sys.argv[1]))
    try:
        tell("install", lambda: install(root))
        with VirtualDesktop(root=root.folder) as desktop:
            program = InstalledProgram(desktop, root)
            tell("use", lambda: use(program))
            tell("upgrade while it runs", lambda: upgrade(program, root))
            tell("be asked by the desktop", lambda: be_asked_by_the_desktop(program, root))
            tell("remove while it runs, and purge", lambda: remove(program, root))
            assert desktop.log("quillbar") == "", f"the program says: {desktop.log('quillbar')}"
    except (AssertionError, GLib.Error) as failure:
        print(f"trial: {failure}", file=sys.stderr)
        return 1
    return 0


def tell(what, step):
    print(f"==> {what}", flush=True)
    step()


if __name__ == "__main__":
    sys.exit(main())
