"""Fixtures of the desktop tests: one desktop per file, one program with a fresh home per test."""

import os
import sys

import pytest

sys.path.insert(0, os.path.dirname(__file__))

from virtualdesktop import Program, VirtualDesktop  # noqa: E402


@pytest.fixture(scope="module")
def desktop(request):
    with VirtualDesktop(accessibility=getattr(request.module, "ACCESSIBILITY", False)) as running:
        yield running


@pytest.fixture
def program(desktop, tmp_path):
    """A program that has not started yet; it must end cleanly after the test."""
    desktop.notifications.clear()
    quillbar = Program(desktop, os.environ["QUILLBAR"], tmp_path)
    yield quillbar
    if quillbar.process is None:
        return
    running = quillbar.process.poll() is None
    status = quillbar.stop()
    output = quillbar.take_output() + desktop.take_reports()
    assert not running or status == 0, f"the program ended with {status}: {output}"
    assert output == "", "the program writes to its standard output or error"
