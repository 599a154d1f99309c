"""Root: nobody is asked, and neither bus nor polkit runs here; and what the log and the trace hold
when the window has ended."""

import os
import shutil
import signal
import subprocess
import unittest

import elevation_scenario
import private_machine
from configuration_window import TITLE
from desktop import PATIENCE, wait_for
from elevation_scenario import CONSOLE_LOG, LOG, TRACE

NO_DISPLAY = "TavConfiguration: cannot show the window: no display can be used\n"
END_OF_REPORT = "---------------------------------------------\n"


class RootScenario(elevation_scenario.WindowScenario):
    def start(self, *arguments, name=None, folder="/", output=subprocess.DEVNULL, **variables):
        """Starts the tool as root, `name` being its first argument where it is not the program's
        path; its standard error is in `self.errors`."""
        self.errors = private_machine.FOLDER / "root-errors"
        environment = {
            "HOME": str(self.machine.home("root")), "PATH": os.environ["PATH"], "LANGUAGE": "en",
            "DISPLAY": self.desktop.display, "XAUTHORITY": str(self.desktop.cookies), **variables}
        with open(self.errors, "w", encoding="utf-8") as errors:
            return subprocess.Popen(
                [self.machine.program if name is None else name, *arguments],
                executable=self.machine.program, env=environment, cwd=folder, stdout=output,
                stderr=errors, text=True)


class Root(RootScenario):
    def test_nothing_outside_the_machine_can_be_changed(self):
        for place in ("/", "/etc", "/usr", "/var", __file__):
            self.assertTrue(os.statvfs(place).f_flag & os.ST_RDONLY, place)

    def test_first_launch_relaunches_the_tool_itself(self):
        launcher = self.start()
        self.assertEqual(launcher.wait(PATIENCE), 0)
        elevated = self.elevated_tool()
        self.fill_and_save(self.open_window(elevated))
        elevated.wait()

        self.assertEqual(self.errors.read_text(), "")
        self.assert_saved()
        self.assertNotIn("CALLSTACK", self.trace("root"))

    def test_the_executable_is_relaunched_whatever_it_was_called(self):
        folder = private_machine.FOLDER / "decoys"
        folder.mkdir()
        self.addCleanup(shutil.rmtree, folder)
        decoy = folder / "other"
        decoy.write_text(f"#!/bin/sh\n: > '{folder}/decoy was started'\n")
        decoy.chmod(0o755)
        for name in ("other", "./other", str(decoy), "absent", ""):
            with self.subTest(name=name):
                launcher = self.start(name=name, folder=folder, PATH=".:/usr/bin:/bin")
                status = launcher.wait(PATIENCE)
                elevated = self.elevated_tool()
                executable = elevated.executable
                elevated.kill()

                self.assertEqual((status, self.errors.read_text()), (0, ""))
                self.assertEqual(executable, str(self.machine.program))
                self.assertEqual([path.name for path in folder.iterdir()], ["other"])

    def test_console_lines_appear_where_somebody_reads(self):
        self.machine.write_beside_program("logger.cfg", CONSOLE_LOG)
        self.machine.write_beside_program("tracer.cfg", TRACE.replace(
            "TRACE_SET_FILE_NAME trace", "TRACE_CALL_EXIT\nTRACE_SET_FILE_NAME console"))
        process = self.start("--adminRights", output=subprocess.PIPE)
        self.open_window(self.elevated_tool()).cancel()
        output, _ = process.communicate()

        self.assertIn("Process has kAuthorizationRightExecute right\n", output)
        self.assertRegex(output, r"\n\[[^]]*\]\[[^]]*\]TavConfiguration::Main\n")
        self.assertTrue(output.endswith("<- TavConfiguration::Main\n\n"), output)
        self.assertEqual(process.returncode, 0)

    def test_first_launch_without_a_display_ends_well_and_the_second_instance_tells(self):
        launcher = self.start(DISPLAY="")

        self.assertEqual(launcher.wait(PATIENCE), 0)
        wait_for(lambda: self.errors.read_text().endswith(NO_DISPLAY), "message of no display")
        wait_for(lambda: self.machine.elevated_process() is None, "end of the second instance")
        self.assertNotIn("CALLSTACK", self.trace("root"))

    def test_missing_display_is_told_in_plain_words(self):
        self.machine.write_beside_program(
            "tracer.cfg", TRACE + "TRACE_THE_CALL endWithoutDisplay\n")
        process = self.start("--adminRights", DISPLAY="")

        self.assertEqual(process.wait(PATIENCE), 1)
        self.assertTrue(self.errors.read_text().endswith(NO_DISPLAY), self.errors.read_text())
        self.assertRegex(self.trace("root"), r"\]  endWithoutDisplay\n$")
        self.assertIn("Process has kAuthorizationRightExecute right\n", self.log("root"))


class Ends(RootScenario):
    """The lines that are pending when the tool ends reach the disk, the very last one too."""

    def test_save(self):
        self.assert_last_lines_are_written(lambda window, _: self.fill_and_save(window))
        self.assert_saved()

    def test_save_that_fails(self):
        self.settings().mkdir(parents=True)
        self.assert_last_lines_are_written(
            lambda window, _: self.fill_and_save(window),
            logged=f"[ERROR  ] Saving the dictionary to {self.settings()} failed: opening the "
                   "file: Not a regular file\n")

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
            last=END_OF_REPORT)
        self.assertIn(">> [E] SIGNAL_SOTWARE_TERMINATION\n", self.trace("root"))

    def test_signal_of_a_contract_violation(self):
        self.assert_last_lines_are_written(
            lambda _, process: process.send_signal(signal.SIGUSR1), last=END_OF_REPORT)
        self.assertIn(
            ">> [E]  :  - In File :  - At Line : \n", self.trace("root"), "none is recorded")

    def assert_last_lines_are_written(
            self, end, last="<- TavConfiguration::Main\n",
            logged="[LEVEL_0] Process has kAuthorizationRightExecute right\n"):
        self.machine.write_beside_program(
            "logger.cfg", LOG.replace("LOG_LEVEL_0", "LOG_LEVEL_0 LOG_ERROR"))
        self.machine.write_beside_program(
            "tracer.cfg", TRACE + "TRACE_CALL_EXIT\nTRACE_THE_CALL SIGNAL_FILTER\n")
        process = self.start("--adminRights")
        window = self.open_window(self.elevated_tool())

        end(window, process)

        self.assertEqual(process.wait(PATIENCE), 0)
        self.assertEqual(self.trace("root")[-len(last):], last)
        self.assertEqual(self.log("root")[-len(logged):], logged)


if __name__ == "__main__":
    elevation_scenario.main()
