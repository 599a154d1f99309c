"""The Debian package as it is built: its files, its scripts, and what the system has to know of the
tool, each checked by the system's own validator."""

import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

CPACK, BUILD = sys.argv.pop(1), sys.argv.pop(1)
DTD = "/usr/share/polkit-1/policyconfig-1.dtd"
ACTIONS = "usr/share/polkit-1/actions/com.pelora.tavconfiguration.policy"
METAINFO = "usr/share/metainfo/com.pelora.tavconfiguration.metainfo.xml"
TOOL = "usr/lib/tavconfiguration/TavConfiguration"
LANGUAGES = ("EN", "en", "fr", "de", "es")


class Package(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = pathlib.Path(tempfile.mkdtemp(prefix="tav-package-"))
        cls.addClassCleanup(shutil.rmtree, cls.folder)
        # The staging folder is this run's own, so that nothing is left in the build.
        run(CPACK, "--config", f"{BUILD}/CPackConfig.cmake", "-B", cls.folder)
        cls.package = next(cls.folder.glob("tavconfiguration_*.deb"))
        cls.root = cls.folder / "root"
        cls.control = cls.folder / "control"
        run("dpkg-deb", "--extract", cls.package, cls.root)
        run("dpkg-deb", "--control", cls.package, cls.control)

    def test_tool_has_its_files_beside_it(self):
        beside = {path.name for path in (self.root / TOOL).parent.iterdir()}

        self.assertLessEqual(
            {"TavConfiguration", "ID.txt", "logger.cfg", "tracer.cfg",
             *(f"Localizer_TavConfiguration_{language}.cfg" for language in LANGUAGES)}, beside)
        self.assertTrue(os.access(self.root / TOOL, os.X_OK))

    def test_path_leads_to_the_tool(self):
        link = self.root / "usr/bin/TavConfiguration"

        self.assertTrue(link.is_symlink())
        self.assertEqual(link.resolve(), (self.root / TOOL).resolve())

    def test_trial_is_not_installed(self):
        self.assertEqual([path for path in self.root.rglob("*") if "Trial" in path.name], [])

    def test_only_root_writes_what_is_installed(self):
        listed = run("dpkg-deb", "--contents", self.package)

        for line in listed.splitlines():
            mode, owner = line.split()[:2]
            self.assertEqual(owner, "root/root", line)
            self.assertTrue(mode.startswith("l") or (mode[5], mode[8]) == ("-", "-"), line)
            self.assertNotIn("s", mode, line)

    def test_policy_is_valid_and_bound_to_the_installed_tool(self):
        policy = (self.root / ACTIONS).read_text()

        run("xmllint", "--nonet", "--noout", "--dtdvalid", DTD, self.root / ACTIONS)
        self.assertIn(f'key="org.freedesktop.policykit.exec.path">/{TOOL}<', policy)
        self.assertIn('key="org.freedesktop.policykit.exec.argv1">--adminRights<', policy)
        self.assertIn('key="org.freedesktop.policykit.exec.allow_gui">true<', policy)
        for who in ("any", "inactive", "active"):
            self.assertIn(f"<allow_{who}>auth_admin_keep</allow_{who}>", policy)

    def test_desktop_entry_is_valid(self):
        run("desktop-file-validate", self.root / "usr/share/applications/TavConfiguration.desktop")

    def test_description_for_software_centres_is_valid(self):
        run("appstreamcli", "validate", "--no-net", "--pedantic", self.root / METAINFO)

    def test_icon_is_the_one_that_the_entries_name(self):
        icons = self.root / "usr/share/icons/hicolor"

        self.assertEqual([path.name for path in icons.rglob("*.*")], ["TavConfiguration.svg"])

    def test_manual_page_is_clean(self):
        page = next((self.root / "usr/share/man/man8").iterdir())

        said = subprocess.run(
            ["man", "--warnings", "--local-file", page],
            env={**os.environ, "LC_ALL": "C.UTF-8", "MANWIDTH": "100", "MANOPT": ""},
            capture_output=True, text=True)

        self.assertEqual((said.returncode, said.stderr), (0, ""))
        self.assertIn("TavConfiguration - edit the company network settings", said.stdout)

    def test_package_asks_for_what_the_elevation_needs(self):
        needed = run("dpkg-deb", "--field", self.package, "Depends")

        for package in ("pkexec", "polkitd", "libpolkit-gobject-1-0", "libqt6widgets6", "libxcb1"):
            self.assertRegex(needed, rf"(^|[ ,]){package}\b")

    def test_administrators_edits_of_the_diagnostics_files_survive_an_upgrade(self):
        self.assertEqual(
            (self.control / "conffiles").read_text().splitlines(),
            ["/usr/lib/tavconfiguration/logger.cfg", "/usr/lib/tavconfiguration/tracer.cfg"])

    def test_installing_makes_the_settings_folder(self):
        scope = next(line.partition("=")[2]
                     for line in (self.root / TOOL).with_name("ID.txt").read_text().splitlines()
                     if line.startswith("UPGRADE_CODE="))
        folder = self.folder / f"data/Pelora/{scope}"

        self.run_script("postinst", "configure")

        self.assertEqual(folder.stat().st_mode & 0o7777, 0o755)
        self.assertEqual(folder.parent.stat().st_mode & 0o7777, 0o755)

        (folder / "CompanyNetworkConfiguration.cfg").write_text("settings")
        self.run_script("postrm", "remove")
        self.assertTrue(folder.exists(), "a removed package keeps the settings")
        self.run_script("postrm", "purge")
        self.assertFalse(folder.parent.exists())

    def run_script(self, name, action):
        """Runs a script of the package on a folder of the test's own in the place of /var/lib."""
        script = (self.control / name).read_text().replace("/var/lib", str(self.folder / "data"))
        (self.folder / "data").mkdir(exist_ok=True)
        run("sh", "-c", script, name, action)


def run(*command):
    result = subprocess.run([str(word) for word in command], capture_output=True, text=True)
    if result.returncode != 0:
        raise AssertionError(f"{command} failed:\n{result.stdout}{result.stderr}")
    return result.stdout


if __name__ == "__main__":
    unittest.main()
