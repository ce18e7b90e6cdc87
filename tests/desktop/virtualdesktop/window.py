"""One window of the program, used with the real mouse and keyboard."""

from .waiting import wait_until


class Window:
    """Waits until the program shows a window of that title and it has the keyboard."""

    def __init__(self, program, title):
        self._program, self.title = program, title
        self.screen = program.desktop.screen
        # One that closes may have the same title, such as a menu's, which is the program's name.
        self.id = wait_until(self._find, lambda: f"no window {title!r} with the keyboard: "
                                                 f"{self._titles()}")
        # The window manager's frame moves a window after it was shown; until the program knows,
        # what it tells of its elements' places is wrong.
        if program.desktop.accessibility:
            wait_until(self._knows_its_place, f"{title!r} never learns where it is")

    def _titles(self):
        return {window[0]: self.screen.title(window[0]) for window in self._program.windows()}

    def _find(self):
        focused = self.screen.focused_window()
        return focused if self._titles().get(focused) == self.title else None

    def _knows_its_place(self):
        windows = self._program.desktop.accessibility.windows(self._program.process.pid)
        return self.area() in [self._on_the_screen(window) for window in windows]

    def _on_the_screen(self, element):
        return tuple(self._program.pixels_a_point * number for number in element.extents())

    def area(self):
        """Where its inside is: (x, y, width, height)."""
        return self.screen.area(self.id)

    def is_open(self):
        return self.id in self._titles()

    def wait_closed(self):
        wait_until(lambda: not self.is_open(), f"{self.title!r} stays open")

    def dismiss(self):
        """Closes it by Escape."""
        self.screen.press("Escape")
        self.wait_closed()

    def elements(self, role=None):
        """What assistive programs are told, outermost first."""
        return self._program.desktop.accessibility.elements(self._program.process.pid, role)

    def element(self, role, name):
        return self._program.desktop.accessibility.wait_for(self._program.process.pid, role, name)

    def middle(self, role, name):
        x, y, width, height = self._on_the_screen(self.element(role, name))
        return x + width // 2, y + height // 2

    def click(self, role, name):
        self.screen.click(*self.middle(role, name))

    def choose(self, name, title):
        """Opens a pop-up with the mouse and clicks one of its entries."""
        self.click("combo box", name)
        self.click("list item", title)
        wait_until(lambda: title not in [item.name for item in self.elements("list item")],
                   f"{name} stays open")

    def wait_for(self, role, name, what, test):
        """Waits until the element is as the test wants it."""
        wait_until(lambda: test(self.element(role, name)), f"{role} {name!r} never {what}")
