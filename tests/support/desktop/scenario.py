"""What every scenario with the real window shares: a desktop, a private data folder, the tool."""

import pathlib
import shutil
import sys
import tempfile
import unittest

import texts
from configuration_window import ConfigurationWindow
from desktop import Desktop
from network_text import network_text  # noqa: F401, for the scenarios

TOOL = pathlib.Path(sys.argv.pop(1))
SCOPE = texts.load(TOOL.parent / "ID.txt")["UPGRADE_CODE"]


class Scenario(unittest.TestCase):
    """Each test gets an empty data folder, and the window through `open_window`."""

    maxDiff = None

    @classmethod
    def setUpClass(cls):
        cls.desktop = cls.enterClassContext(Desktop())

    def setUp(self):
        self.data = pathlib.Path(tempfile.mkdtemp(prefix="tav-data-"))
        self.addCleanup(shutil.rmtree, self.data, ignore_errors=True)
        self.folder = self.data / "Pelora" / SCOPE
        self.file = self.folder / "CompanyNetworkConfiguration.cfg"

    def store(self, content):
        """Puts a configuration file in the tool's place for it."""
        self.folder.mkdir(parents=True, exist_ok=True)
        self.file.write_bytes(content.encode() if isinstance(content, str) else content)

    def stored(self):
        return self.file.read_text(encoding="utf-8")

    def open_window(self, language="en", **options):
        return ConfigurationWindow(self.launch(language, **options), TOOL, language)

    def launch(self, language="en", tool=TOOL, **options):
        """Starts the elevated instance; the options are those of the desktop's `launch`."""
        application = self.desktop.launch(
            [str(tool), "--adminRights"], TAV_COMMON_DATA_DIR=self.data,
            XDG_DATA_HOME=self.data / "user", LANGUAGE=language, **options)
        self.addCleanup(self._end, application.process)
        return application

    def last_log_line(self):
        """Without the time of day."""
        log = self.data / "user" / "Pelora" / SCOPE / "Logs" / "TavConfiguration_log_0.txt"
        return log.read_text(encoding="utf-8").splitlines(keepends=True)[-1].partition("]")[2]

    def assert_ended(self, window):
        status, _, errors = window.application.wait()
        self.assertEqual((status, errors), (0, ""))

    @staticmethod
    def _end(process):
        process.kill()
        process.communicate()
