"""The trial of the tool, as scripts/run starts it: without rights, on private data."""

import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

import texts
from configuration_window import ConfigurationWindow
from desktop import Application, Desktop
from relaunched_tool import RelaunchedTool

TOOL = pathlib.Path(sys.argv.pop(1))
TRIAL = pathlib.Path(__file__).parents[2] / "scripts" / "lib" / "trial"
CARD = texts.load(TOOL.parent / "ID.txt")

IDENTITY = (
    "[LEVEL_0] Starting TavConfiguration TavConfigurationTrial with ID card : \n"
    f"[LEVEL_0]  * Commercial version : {CARD['COMMERCIAL_VERSION']} \n"
    f"[LEVEL_0]  * Product Name : {CARD['PRODUCT_NAME']} \n"
    f"[LEVEL_0]  * BU Name : {CARD['BU_NAME']}\n"
    f"[LEVEL_0]  * Build Target : {CARD['BUILD_TARGET']} \n"
    f"[LEVEL_0]  * Reference version : {CARD['REFERENCE_VERSION']} \n"
    f"[LEVEL_0]  * Product version : {CARD['PRODUCT_VERSION']} \n"
    f"[LEVEL_0]  * Upgrade Code : {CARD['UPGRADE_CODE']} \n")


BOTH_INSTANCES = (
    IDENTITY +
    "[LEVEL_0] Process was launched without --adminRights argument, launch it with admin "
    "privileges...\n" +
    IDENTITY +
    "[LEVEL_0] Process arguments:\n[LEVEL_0] --adminRights\n"
    "[LEVEL_0] Process was launched with --adminRights argument\n"
    "[LEVEL_0] Process has kAuthorizationRightExecute right\n")


class Trial(unittest.TestCase):
    maxDiff = None

    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="tav-trial-test-"))
        self.addCleanup(shutil.rmtree, self.folder)

    def test_without_a_display_the_window_is_driven(self):
        # The script finds its own modules, too.
        without = {name: value for name, value in os.environ.items()
                   if name not in ("DISPLAY", "WAYLAND_DISPLAY", "PYTHONPATH")}
        output = subprocess.run(
            [TRIAL, TOOL], check=True, stdout=subprocess.PIPE, text=True,
            env=without | {"TMPDIR": str(self.folder)}).stdout

        self.assert_both_instances_logged(output)
        self.assertIn("<key>Address</key>\n\t\t\t<string>192.0.2.17</string>\n", self.settings())
        self.assertIn("\n+\t\t\t<string>192.0.2.17</string>\n", output)

    def test_with_a_display_the_log_is_shown_once_the_window_has_ended(self):
        with Desktop() as desktop:
            trial = desktop.launch([TRIAL, TOOL], LANGUAGE="en", TMPDIR=self.folder)
            window = ConfigurationWindow(Application(RelaunchedTool(TOOL)), TOOL)
            window.choose_monitoring()
            window.address.set_text("192.0.2.18")
            self.assertIsNone(trial.process.poll(), "the trial lasts as long as the window")
            window.save()
            status, output, errors = trial.wait()

        self.assertEqual((status, errors), (0, ""))
        self.assert_both_instances_logged(output)
        self.assertIn("<key>Address</key>\n\t\t\t<string>192.0.2.18</string>\n", self.settings())

    def assert_both_instances_logged(self, output):
        shown = output.rpartition("--- What the start-up logged, in ")[2].partition("\n")[2]
        self.assertEqual(self.without_clock(shown), BOTH_INSTANCES)

    def settings(self):
        return next(self.folder.rglob("CompanyNetworkConfiguration.cfg")).read_text()

    @staticmethod
    def without_clock(log):
        return re.sub(r"^\[\d\d:\d\d:\d\d-\d{3}\]", "", log, flags=re.MULTILINE)


if __name__ == "__main__":
    unittest.main(verbosity=2, warnings="ignore")
