"""A localization file that lacks texts: each is told in a message box, its key shows instead."""

import pathlib
import shutil
import tempfile
import unittest

from configuration_window import TITLE, ConfigurationWindow
from desktop import wait_for
from scenario import TOOL, Scenario

BOX = "Localized string not found"


class MissingTexts(Scenario):
    def setUp(self):
        super().setUp()
        self.tool_folder = pathlib.Path(tempfile.mkdtemp(prefix="tav-tool-"))
        self.addCleanup(shutil.rmtree, self.tool_folder, ignore_errors=True)
        shutil.copytree(TOOL.parent, self.tool_folder, dirs_exist_ok=True)
        self.tool = self.tool_folder / TOOL.name
        self.texts = self.tool_folder / "Localizer_TavConfiguration_en.cfg"

    def test_text_of_the_window_is_told_before_the_window_shows(self):
        self.leave_out("SAVE_BUTTON")
        application = self.launch(tool=self.tool)

        self.assertEqual(self.dismiss_box(application), self.absent("SAVE_BUTTON"))
        application.window(TITLE).find("push button", "SAVE_BUTTON").press()

        status, _, errors = application.wait()
        self.assertEqual((status, errors), (0, ""))
        self.assertTrue(self.file.exists())

    def test_text_that_two_controls_show_is_told_twice(self):
        self.leave_out("BROWSE_BUTTON")
        application = self.launch(tool=self.tool)

        told = [self.dismiss_box(application) for _ in range(2)]
        buttons = [node.name for node in application.window(TITLE).descendants()
                   if node.name.endswith(": BROWSE_BUTTON")]

        self.assertEqual(told, [self.absent("BROWSE_BUTTON")] * 2)
        self.assertEqual(len(buttons), 2)

    def test_text_of_an_alert_is_told_before_the_alert_shows(self):
        self.leave_out("MSGOK_DLG_FILL_CORRECT_IP_ADDRESS")
        application = self.launch(tool=self.tool)
        window = ConfigurationWindow(application, self.tool)
        window.choose_monitoring()

        window.save()

        key = "MSGOK_DLG_FILL_CORRECT_IP_ADDRESS"
        self.assertEqual(self.dismiss_box(application), self.absent(key))
        self.assertEqual(window.alert(), key)
        self.assertFalse(self.file.exists())

    def leave_out(self, key):
        lines = self.texts.read_text(encoding="utf-8").splitlines(keepends=True)
        kept = [line for line in lines if not line.startswith(key + "=")]
        self.assertEqual(len(kept), len(lines) - 1)
        self.texts.write_text("".join(kept), encoding="utf-8")

    def absent(self, key):
        return f"The key '{key}' is absent from the '{self.texts}' localization file."

    @staticmethod
    def dismiss_box(application):
        """The text of the message box, once it shows; closes it by its only button."""
        box = application.window(BOX)
        nodes = list(box.descendants())
        text = next(node.name for node in nodes if node.role == "label")
        [button] = [node for node in nodes if node.role == "push button"]
        button.press()
        wait_for(lambda: box.gone, "end of the message box")
        return text


if __name__ == "__main__":
    unittest.main(verbosity=2, warnings="ignore")
