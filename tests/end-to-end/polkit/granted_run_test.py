"""docs/GRANTED-RUN.md is true: a run as it describes one writes what stands there, line by line, but
for the times and the ids of threads."""

import pathlib
import re
import unittest

import elevation_scenario
import private_machine
from agents import SessionAgent

ROOT = pathlib.Path(__file__).parents[3]
DOCUMENT = ROOT / "docs/GRANTED-RUN.md"
DELIVERED_LOG = ROOT / "Application/TAVConfiguration/resources/logger.cfg"
INSTALLED = "/usr/lib/tavconfiguration/TavConfiguration"  # in the document


def without_run(text):
    """The text without what each run has of its own."""
    text = re.sub(r"^\[\d\d:\d\d:\d\d-\d{3}\]", "[time]", text, flags=re.MULTILINE)
    return re.sub(r"\[th_\d+ *\]", "[thread]", text)


class GrantedRun(elevation_scenario.WindowScenario):
    def test_document_shows_what_a_run_writes(self):
        trace, user_log, user_trace, question, root_log, root_trace, settings = re.findall(
            r"^```\n(.*?)^```$", DOCUMENT.read_text(encoding="utf-8"), re.MULTILINE | re.DOTALL)
        self.machine.write_beside_program("tracer.cfg", trace)
        self.machine.write_beside_program("logger.cfg", DELIVERED_LOG.read_text())

        asked = self.run_as_described()

        self.assertEqual(asked, question)
        self.assert_written(private_machine.USER, user_log, user_trace)
        self.assert_written("root", root_log, root_trace)
        self.assertEqual(self.settings().read_text(), settings.removesuffix("\n"))

    def run_as_described(self):
        """What the user was asked, as the terminal shows it."""
        with self.machine.polkit():
            tool = self.launch(agent=SessionAgent)
            self.assertEqual(tool.wait(), (0, ""))
            elevated = self.elevated_tool()
            window = self.open_window(elevated)
            window.choose_vpn()
            window.choose_monitoring()
            for field, text in (
                    (window.start_command, "/usr/sbin/vpn"), (window.start_arguments, "up office"),
                    (window.stop_command, "/usr/sbin/vpn"), (window.stop_arguments, "down office"),
                    (window.address, "192.0.2.17")):
                field.set_text(text)
            window.save()
            elevated.wait()
        shown = re.sub(r"\x1b\[[0-9;]*m", "", tool.agent.text.decode())
        return shown.replace("\r\n", "\n")

    def assert_written(self, user, log, trace):
        folder = self.machine.log_folder(user)
        for name, expected in (("log", log), ("trace", trace)):
            with self.subTest(user=user, file=name):
                written = (folder / f"TavConfiguration_{name}_0.txt").read_text()
                self.assertEqual(
                    without_run(written).replace(str(self.machine.program), INSTALLED),
                    without_run(expected))


if __name__ == "__main__":
    elevation_scenario.main()
