"""However the tool is called, it is the installed executable that is relaunched, from a folder
whose name holds blanks."""

import unittest

import elevation_scenario
import private_machine
from elevation_scenario import GRANT


class LaunchPaths(elevation_scenario.ElevationScenario):
    def test_absolute_path(self):
        self.assert_relaunched(self.machine.program)

    def test_relative_path(self):
        self.assert_relaunched("lib/../lib/tavconfiguration/TavConfiguration",
                               folder=self.machine.prefix)

    def test_symbolic_link(self):
        link = private_machine.FOLDER / "another name"
        link.symlink_to(self.machine.program)
        self.addCleanup(link.unlink)

        self.assert_relaunched(link)

    def test_relative_symbolic_link(self):
        self.assert_relaunched("./bin/TavConfiguration", folder=self.machine.prefix)

    def test_name_in_path(self):
        # First, for the package may be installed too.
        self.assert_relaunched(
            "TavConfiguration", variables={"PATH": f"{self.machine.prefix}/bin:/usr/bin:/bin"})

    def test_relative_folder_in_path(self):
        self.assert_relaunched(
            "TavConfiguration", variables={"PATH": "bin:/usr/bin"}, folder=self.machine.prefix)

    def assert_relaunched(self, start, **options):
        with self.machine.polkit(GRANT):
            status, errors = self.launch(start=start, **options).wait()
            elevated = self.elevated_tool()

            self.assertEqual((status, errors), (0, ""))
            self.assertEqual(elevated.executable, str(self.machine.program))
        self.assertIn(f"Execute process {start} --adminRights\n", self.trace())


if __name__ == "__main__":
    elevation_scenario.main("a prefix with blanks")
