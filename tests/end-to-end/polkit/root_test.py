"""Root: nobody is asked, and neither bus nor polkit runs here; and what the log and the trace hold
when the window has ended."""

import os
import signal
import subprocess
import unittest

import elevation_scenario
import private_machine
from configuration_window import TITLE
from desktop import PATIENCE
from elevation_scenario import CONSOLE_LOG, TRACE


class RootScenario(elevation_scenario.WindowScenario):
    def start(self, *arguments, output=subprocess.DEVNULL, **variables):
        """Starts the tool as root; its standard error is in `self.errors`."""
        self.errors = private_machine.FOLDER / "root-errors"
        environment = {
            "HOME": str(self.machine.home("root")), "PATH": os.environ["PATH"], "LANGUAGE": "en",
            "DISPLAY": self.desktop.display, "XAUTHORITY": str(self.desktop.cookies), **variables}
        with open(self.errors, "w", encoding="utf-8") as errors:
            return subprocess.Popen([self.machine.program, *arguments], env=environment,
                                    stdout=output, stderr=errors, text=True)


class Root(RootScenario):
    def test_first_launch_relaunches_the_tool_itself(self):
        launcher = self.start()
        self.assertEqual(launcher.wait(PATIENCE), 0)
        elevated = self.elevated_tool()
        self.fill_and_save(self.open_window(elevated))
        elevated.wait()

        self.assertEqual(self.errors.read_text(), "")
        self.assert_saved()
        self.assertNotIn("CALLSTACK", self.trace("root"))

    def test_console_lines_appear_where_somebody_reads(self):
        self.machine.write_beside_program("logger.cfg", CONSOLE_LOG)
        process = self.start("--adminRights", output=subprocess.PIPE)
        self.open_window(self.elevated_tool()).cancel()
        output, _ = process.communicate()

        self.assertIn("Process has kAuthorizationRightExecute right\n", output)
        self.assertEqual(process.returncode, 0)

    def test_missing_display_is_told_in_plain_words(self):
        process = self.start("--adminRights", DISPLAY="")

        self.assertEqual(process.wait(PATIENCE), 1)
        self.assertEqual(
            self.errors.read_text().splitlines()[-1],
            "TavConfiguration: cannot show the window: no display can be used")
        self.assertNotIn("CALLSTACK", self.trace("root"))
        self.assertIn("Process has kAuthorizationRightExecute right\n", self.log("root"))


class Ends(RootScenario):
    """The lines that are pending when the tool ends reach the disk, the very last one too."""

    def test_save(self):
        self.assert_last_lines_are_written(lambda window, _: self.fill_and_save(window))
        self.assert_saved()

    def test_cancel(self):
        self.assert_last_lines_are_written(lambda window, _: window.cancel())
        self.assertFalse(self.settings().exists())

    def test_closing_the_window(self):
        self.assert_last_lines_are_written(lambda *_: subprocess.run(
            [self.machine.close_window, TITLE], check=True))
        self.assertFalse(self.settings().exists())

    def test_signal(self):
        self.assert_last_lines_are_written(
            lambda _, process: process.send_signal(signal.SIGTERM),
            last="---------------------------------------------\n")
        self.assertIn(">> [E] SIGNAL_SOTWARE_TERMINATION\n", self.trace("root"))

    def assert_last_lines_are_written(self, end, last="<- TavConfiguration::Main\n"):
        self.machine.write_beside_program(
            "tracer.cfg", TRACE + "TRACE_CALL_EXIT\nTRACE_THE_CALL SIGNAL_FILTER\n")
        process = self.start("--adminRights")
        window = self.open_window(self.elevated_tool())

        end(window, process)

        self.assertEqual(process.wait(PATIENCE), 0)
        self.assertEqual(self.trace("root")[-len(last):], last)
        self.assertTrue(
            self.log("root").endswith("Process has kAuthorizationRightExecute right\n"))


if __name__ == "__main__":
    elevation_scenario.main()
