"""The session of the window. Whoever reads the tool's standard error is told what keeps the window
from appearing; the window itself neither keeps him waiting nor misses him when he is gone. A
runtime folder that the tool had to make ends with it."""

import os
import signal
import socket
import stat
import unittest
from pathlib import Path

from configuration_window import ConfigurationWindow
from desktop import wait_for
from scenario import TOOL, Scenario, network_text

TALKATIVE = "*.debug=true"  # the toolkit tells of almost everything that it does


def pipe():
    read_end, write_end = os.pipe()
    return os.fdopen(read_end, "rb"), os.fdopen(write_end, "wb")


def sockets():
    read_end, write_end = socket.socketpair()
    return read_end.makefile("rb"), write_end.makefile("wb")


def is_at_end(read_end):
    """False while somebody can still write, and nobody has."""
    try:
        return os.read(read_end.fileno(), 1) == b""
    except BlockingIOError:
        return False


class Session(Scenario):
    def setUp(self):
        super().setUp()
        self.temporary = self.data / "temporary"
        self.temporary.mkdir()

    def test_window_survives_that_nobody_reads_what_the_toolkit_tells(self):
        for channel in (pipe, sockets):
            with self.subTest(channel=channel):
                read_end, write_end = channel()
                read_end.close()
                with write_end:
                    window = self.open_window(stderr=write_end, QT_LOGGING_RULES=TALKATIVE)
                window.choose_monitoring()
                window.address.set_text("192.0.2.17")

                window.save()

                self.assert_ended(window)
                self.assertEqual(
                    self.stored(), network_text(monitoring="true", address="192.0.2.17"))
                self.file.unlink()

    def test_reader_is_not_kept_waiting_while_the_window_lives(self):
        for channel in (pipe, sockets):
            with self.subTest(channel=channel):
                read_end, write_end = channel()
                with write_end:
                    window = self.open_window(stderr=write_end)
                os.set_blocking(read_end.fileno(), False)

                with read_end:
                    wait_for(lambda: is_at_end(read_end), "end of what is told")

                self.assertIsNone(window.application.process.poll())
                window.cancel()
                self.assert_ended(window)

    def test_toolkit_tells_a_file_what_it_has_to_tell(self):
        window = self.open_window(QT_LOGGING_RULES=TALKATIVE)
        before = len(window.application.errors)
        window.cancel()
        status, _, errors = window.application.wait()

        self.assertEqual(status, 0)
        self.assertGreater(before, 0)
        self.assertGreater(len(errors), before)

    def test_files_of_the_toolkit_are_not_open_to_everybody(self):
        former = os.umask(0)
        self.addCleanup(os.umask, former)
        window = self.open_window()

        status = Path("/proc", str(window.application.process.pid), "status").read_text()

        self.assertIn("\nUmask:\t0022\n", status)
        window.cancel()
        self.assert_ended(window)

    def test_window_survives_the_end_of_a_child_that_the_caller_left_to_it(self):
        told = self.data / "child"
        application = self.desktop.launch(
            ["sh", "-c", f'sleep 1000 & echo $! > "{told}"; exec "$0" --adminRights', str(TOOL)],
            TAV_COMMON_DATA_DIR=self.data, XDG_DATA_HOME=self.data / "user", LANGUAGE="en")
        self.addCleanup(self._end, application.process)
        window = ConfigurationWindow(application, TOOL)
        child = told.read_text().strip()

        os.kill(int(child), signal.SIGTERM)
        wait_for(lambda: not Path("/proc", child).exists(), "end of the child")
        window.choose_monitoring()
        window.address.set_text("192.0.2.17")
        window.save()

        self.assert_ended(window)
        self.assertEqual(self.stored(), network_text(monitoring="true", address="192.0.2.17"))

    def test_reader_is_told_that_no_display_can_be_used(self):
        read_end, write_end = pipe()
        with write_end:
            application = self.launch(stderr=write_end, DISPLAY=":4711")
        status, _, _ = application.wait()

        with read_end:
            self.assertEqual(
                (status, read_end.read()),
                (1, b"TavConfiguration: cannot show the window: no display can be used\n"))

    def test_runtime_folder_is_private_and_goes_with_the_window(self):
        window = self.open_window(XDG_RUNTIME_DIR=None, TMPDIR=self.temporary)
        folder, = self.temporary.iterdir()
        mode = stat.S_IMODE(folder.stat().st_mode)
        window.cancel()

        self.assert_ended(window)
        self.assertEqual(mode, 0o700)
        self.assertEqual(list(self.temporary.iterdir()), [])

    def test_runtime_folder_is_made_where_the_variable_is_empty(self):
        window = self.open_window(XDG_RUNTIME_DIR="", TMPDIR=self.temporary)

        self.assertEqual(len(list(self.temporary.iterdir())), 1)
        window.cancel()
        self.assert_ended(window)

    def test_runtime_folder_goes_with_a_tool_that_a_signal_ends(self):
        window = self.open_window(XDG_RUNTIME_DIR=None, TMPDIR=self.temporary)
        window.application.process.send_signal(signal.SIGTERM)

        self.assert_ended(window)
        self.assertEqual(list(self.temporary.iterdir()), [])

    def test_runtime_folder_goes_with_a_tool_that_has_no_display(self):
        status, _, _ = self.launch(
            XDG_RUNTIME_DIR=None, TMPDIR=self.temporary, DISPLAY=":4711").wait()

        self.assertEqual(status, 1)
        self.assertEqual(list(self.temporary.iterdir()), [])


if __name__ == "__main__":
    unittest.main(verbosity=2, warnings="ignore")
