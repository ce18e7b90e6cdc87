"""Processes that never outlive the desktop they were started for."""

import contextlib
import ctypes
import os
import signal
import subprocess
import uuid

from .waiting import PATIENCE, wait_until

_MARKER = "QUILLBAR_VIRTUAL_DESKTOP"
_PR_SET_PDEATHSIG = 1
_libc = ctypes.CDLL(None, use_errno=True)


class Processes:
    """Starts processes and ends them, together with whatever they started themselves."""

    def __init__(self, log_folder):
        self._log_folder = log_folder
        self._identity = uuid.uuid4().hex
        self._started = []

    def start(self, arguments, environment, name=None, **options):
        """Starts a process in a session of its own; its output goes to NAME.log."""
        parent = os.getpid()

        def prepare():
            _libc.prctl(_PR_SET_PDEATHSIG, signal.SIGKILL)
            # The parent may have died before the line above took effect.
            if os.getppid() != parent:
                os._exit(1)

        name = name or os.path.basename(arguments[0])
        with open(os.path.join(self._log_folder, f"{name}.log"), "ab") as log:
            process = subprocess.Popen(
                [str(argument) for argument in arguments],
                env={**environment, _MARKER: self._identity},
                stdin=options.pop("stdin", subprocess.DEVNULL),
                stdout=options.pop("stdout", log),
                stderr=options.pop("stderr", log),
                start_new_session=True,
                preexec_fn=prepare,
                **options,
            )
        self._started.append(process)
        return process

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
            _kill(process_id)
        wait_until(lambda: not self.marked(), lambda: f"processes stay: {self.marked()}")

    def marked(self):
        """Process ids that inherited this desktop's mark and still run."""
        mark = f"{_MARKER}={self._identity}".encode()
        return [int(entry) for entry in os.listdir("/proc")
                if entry.isdigit() and mark in _environment(entry)]


@contextlib.contextmanager
def stopped(process):
    """It does nothing for the block."""
    process.send_signal(signal.SIGSTOP)
    try:
        yield
    finally:
        process.send_signal(signal.SIGCONT)


def _environment(process_id):
    try:
        with open(f"/proc/{process_id}/environ", "rb") as file:
            return file.read().split(b"\0")
    except OSError:
        return []


def _kill(process_id):
    try:
        os.kill(process_id, signal.SIGKILL)
    except ProcessLookupError:
        pass
