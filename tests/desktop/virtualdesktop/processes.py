"""Processes that never outlive the desktop they were started for."""

import contextlib
import os
import signal
import subprocess
import uuid

from .waiting import PATIENCE, wait_until

_MARKER = "QUILLBAR_VIRTUAL_DESKTOP"


class Processes:
    """Starts processes and ends them, together with whatever they started themselves."""

    def __init__(self, log_folder):
        self._log_folder = log_folder
        self._identity = uuid.uuid4().hex
        self._started = []

    def start(self, arguments, environment, name=None, **options):
        """Starts a process in a session of its own; its output goes to NAME.log."""
        name = name or os.path.basename(arguments[0])
        with open(os.path.join(self._log_folder, f"{name}.log"), "ab") as log:
            process = subprocess.Popen(
                ["setpriv", "--pdeathsig", "KILL", *map(str, arguments)],
                env={**environment, _MARKER: self._identity}, start_new_session=True,
                **{"stdin": subprocess.DEVNULL, "stdout": log, "stderr": log, **options})
        self._started.append(process)
        return process

    def start_that_tells(self, command, environment, name=None):
        """Starts the command that takes the number of a descriptor, and returns the process and the
        line that it writes there once it is ready."""
        reading, writing = os.pipe()
        process = self.start(command(str(writing)), environment, name, pass_fds=[writing])
        os.close(writing)
        with os.fdopen(reading, encoding="utf-8") as answer:
            line = answer.readline().strip()
        if not line:
            raise RuntimeError(f"{process.args} did not start")
        return process, line

    def end(self, process, how=signal.SIGTERM):
        """Ends one process; returns its exit status."""
        if process.poll() is None:
            process.send_signal(how)
            try:
                process.wait(PATIENCE)
            except subprocess.TimeoutExpired:
                process.kill()
                process.wait()
        if process in self._started:
            self._started.remove(process)
        return process.returncode

    def end_all(self):
        """Ends everything that carries this desktop's mark, last started first."""
        for process in reversed(list(self._started)):
            self.end(process)
        for process_id in self.marked():
            with contextlib.suppress(ProcessLookupError):
                os.kill(process_id, signal.SIGKILL)
        wait_until(lambda: not self.marked(), lambda: f"processes stay: {self.marked()}")

    def marked(self):
        """Process ids that inherited this desktop's mark and still run."""
        mark, found = f"{_MARKER}={self._identity}".encode(), []
        for entry in filter(str.isdigit, os.listdir("/proc")):
            with contextlib.suppress(OSError), open(f"/proc/{entry}/environ", "rb") as file:
                if mark in file.read().split(b"\0"):
                    found.append(int(entry))
        return found


@contextlib.contextmanager
def stopped(process):
    """It does nothing for the block."""
    process.send_signal(signal.SIGSTOP)
    try:
        yield
    finally:
        process.send_signal(signal.SIGCONT)
