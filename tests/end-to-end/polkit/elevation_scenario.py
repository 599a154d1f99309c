"""What the scenarios of elevation share: one machine a script, the tool in it, and its traces."""

import shutil
import sys
import unittest

import private_machine
from configuration_window import ConfigurationWindow
from desktop import Application
from launched_tool import LaunchedTool
from network_text import network_text
from relaunched_tool import RelaunchedTool
from user_desktop import UserDesktop

GRANT = "return polkit.Result.YES;"

LOG = "LOG_ON\nLOG_SET_MSG_FILTER LOG_LEVEL_0\nLOG_SET_FILE_NAME log\n"
CONSOLE_LOG = "LOG_ON\nLOG_SET_MSG_FILTER LOG_LEVEL_0\nLOG_SET_FILE_NAME console\n"
TRACE = ("TRACE_ON\nTRACE_THE_THREAD *\nTRACE_THE_CALL TavConfiguration::Main\n"
         "TRACE_SET_MSG_FILTER TRACE_DEBUG TRACE_ERROR\nTRACE_SET_FILE_NAME trace\n")


class ElevationScenario(unittest.TestCase):
    """Each test starts with the settings, logs and traces of no test before it."""

    maxDiff = None
    machine = None
    desktop = None

    def setUp(self):
        self.machine.write_beside_program("logger.cfg", LOG)
        self.machine.write_beside_program("tracer.cfg", TRACE)
        self.forget_launches()
        self.addCleanup(self._end_elevated_process)

    def forget_launches(self):
        """Takes away what earlier launches have written."""
        for user in (private_machine.USER, "root"):
            shutil.rmtree(self.machine.home(user) / ".local", ignore_errors=True)
        shutil.rmtree("/var/lib/Pelora", ignore_errors=True)

    def launch(self, *arguments, start=None, variables=None, **options):
        """The ordinary user's launch, on the desktop unless `variables` say otherwise; one that is
        None is left out."""
        wanted = self.desktop.variables | (variables or {})
        given = {name: value for name, value in wanted.items() if value is not None}
        return LaunchedTool(
            self.machine, start or self.machine.program, *arguments, variables=given, **options)

    def elevated_tool(self):
        return RelaunchedTool(self.machine.program)

    def log(self, user=private_machine.USER):
        return (self.machine.log_folder(user) / "log_0.txt").read_text()

    def trace(self, user=private_machine.USER):
        return (self.machine.log_folder(user) / "trace_0.txt").read_text()

    def assert_nothing_is_relaunched(self):
        self.assertIsNone(self.machine.elevated_process())
        self.assertNotIn("Execute process", self.trace())
        self.assertNotIn("CALLSTACK", self.trace(), "no crash report")

    def _end_elevated_process(self):
        if self.machine.elevated_process():
            self.elevated_tool().kill()


class WindowScenario(ElevationScenario):
    """The window of the elevated instance, driven as a screen reader would."""

    def open_window(self, elevated):
        return ConfigurationWindow(Application(elevated), self.machine.program)

    def fill_and_save(self, window):
        window.choose_monitoring()
        window.address.set_text("192.0.2.17")
        window.save()

    def settings(self):
        return self.machine.settings_folder / "CompanyNetworkConfiguration.cfg"

    def assert_saved(self):
        self.assertEqual(
            self.settings().read_text(), network_text(monitoring="true", address="192.0.2.17"))


def main(prefix="prefix"):
    """The script's arguments are cmake and the folder of the build, then those of unittest."""
    private_machine.enter()
    cmake, build, *arguments = sys.argv[1:]
    ElevationScenario.machine = private_machine.Machine(cmake, build, prefix)
    ElevationScenario.desktop = UserDesktop(ElevationScenario.machine)
    unittest.main(argv=sys.argv[:1] + arguments)
