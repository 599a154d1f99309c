"""Refusals: whatever keeps the right from the user, nothing is relaunched, and he is told why."""

import functools
import shutil
import signal
import subprocess
import unittest

import elevation_scenario
import private_machine
from agents import DismissingAgent, SessionAgent
from elevation_scenario import GRANT

CANNOT = "TavConfiguration: cannot get administrator rights: "


class Refused(elevation_scenario.ElevationScenario):
    def test_a_refusing_rule_is_explained(self):
        with self.machine.polkit("return polkit.Result.NO;"):
            status, errors = self.launch().wait()

        self.assertEqual((status, errors), (0, CANNOT + "the request was refused\n"))
        self.assertIn("AuthorizationCopyRights failed with code -60005\n", self.trace())
        self.assert_nothing_is_relaunched()

    def test_a_wrong_password_is_explained(self):
        with self.machine.polkit():
            tool = self.launch(agent=functools.partial(SessionAgent, password="wrong"))
            status, errors = tool.wait()

        self.assertEqual((status, errors), (0, CANNOT + "the request was refused\n"))
        self.assertEqual(tool.agent.questions, 1)
        self.assertIn("AuthorizationCopyRights failed with code -60005\n", self.trace())
        self.assert_nothing_is_relaunched()

    def test_a_dismissed_dialog_stays_silent(self):
        with self.machine.polkit():
            status, errors = self.launch(agent=DismissingAgent).wait()

        self.assertEqual((status, errors), (0, ""))
        self.assertIn("AuthorizationCopyRights failed with code -60006\n", self.trace())
        self.assert_nothing_is_relaunched()

    def test_a_session_without_an_agent_is_explained(self):
        with self.machine.polkit():
            status, errors = self.launch().wait()

        self.assertEqual((status, errors), (
            0, CANNOT + "a password is needed, but no authentication agent runs in this session\n"))
        self.assertIn("AuthorizationCopyRights failed with code -60007\n", self.trace())
        self.assert_nothing_is_relaunched()

    def test_a_missing_daemon_is_explained(self):
        with self.machine.system_bus():
            self.assert_polkit_is_missed("org.freedesktop.PolicyKit1")

    def test_a_missing_system_bus_is_explained(self):
        self.assert_polkit_is_missed("No such file or directory")

    def test_a_missing_action_is_explained(self):
        policy = self.machine.actions / "com.pelora.tavconfiguration.policy"
        shutil.move(policy, private_machine.FOLDER)
        self.addCleanup(shutil.move, private_machine.FOLDER / policy.name, policy.parent)
        with self.machine.polkit():
            self.assert_polkit_is_missed(f"Action {private_machine.ACTION} is not registered")

    def test_a_pkexec_that_cannot_elevate_is_explained(self):
        self.replace_pkexec("/usr/bin/pkexec", 0o755)
        with self.machine.polkit(GRANT):
            status, errors = self.launch().wait()

        self.assertEqual((status, errors), (
            0, "pkexec must be setuid root\n"
               "TavConfiguration: cannot start with administrator rights: pkexec refused\n"))
        self.assertIsNone(self.machine.elevated_process())
        self.assertNotIn("CALLSTACK", self.trace(), "no crash report")

    def test_the_right_to_relaunch_does_not_run_the_tool_with_other_arguments(self):
        for arguments in ([], ["--other"], ["--other", "--adminRights"]):
            with self.subTest(arguments=arguments), self.machine.polkit(GRANT):
                status, errors = self.launch(
                    "--disable-internal-agent", str(self.machine.program), *arguments,
                    start="/usr/bin/pkexec").wait()

                self.assertEqual((status, errors), (
                    127, "Error executing command as another user: "
                         "No authentication agent found.\n"))
                self.assertIsNone(self.machine.elevated_process())

    def test_a_refusal_is_explained_too_where_the_system_hides_others_processes(self):
        self.replace_pkexec(self.machine.fake_elevator, 0o4755)
        with self.machine.hidden_processes(), self.machine.polkit(GRANT):
            status, errors = self.launch(
                variables={"FAKE_ELEVATOR": "refuse soon", "FAKE_ELEVATOR_RECORD": "/dev/null"}
            ).wait()

        self.assertEqual((status, errors), (
            0, "TavConfiguration: cannot start with administrator rights: pkexec refused\n"))

    def test_pkexec_is_not_started_with_broken_pipes_ignored(self):
        script = private_machine.FOLDER / "telling"
        script.write_text("#!/bin/sh\ngrep SigIgn /proc/self/status >&2\nexit 127\n")
        self.replace_pkexec(script, 0o755)
        with self.machine.polkit(GRANT):
            _, errors = self.launch().wait()

        ignored = int(errors.split()[1], 16)
        self.assertEqual(ignored & 1 << (signal.SIGPIPE - 1), 0, errors)

    def replace_pkexec(self, program, mode):
        """Root's process is what the replacement becomes where the mode says so."""
        replacement = private_machine.FOLDER / "pkexec"
        shutil.copyfile(program, replacement)
        replacement.chmod(mode)
        subprocess.run(["mount", "--bind", replacement, "/usr/bin/pkexec"], check=True)
        self.addCleanup(subprocess.run, ["umount", "/usr/bin/pkexec"], check=True)

    def assert_polkit_is_missed(self, reason):
        status, errors = self.launch().wait()

        self.assertEqual(status, 0)
        self.assertTrue(errors.startswith(
            CANNOT + "the authorization service (polkit) cannot be used: "), errors)
        self.assertIn(reason, errors)
        self.assertEqual(errors.count("\n"), 1)
        self.assertIn("AuthorizationCopyRights failed with code -60008\n", self.trace())
        self.assert_nothing_is_relaunched()


class Displays(elevation_scenario.ElevationScenario):
    """A session in which the window could not appear is told so, and nobody is asked."""

    def test_a_session_without_a_display_is_told(self):
        self.assert_told({"DISPLAY": ""}, "the window needs a display, and DISPLAY is not set")

    def test_a_session_with_wayland_alone_is_told(self):
        self.assert_told({"DISPLAY": "", "WAYLAND_DISPLAY": "wayland-0"},
                         "the window needs an X display, and this Wayland session has none")

    def test_a_display_that_does_not_answer_is_told(self):
        self.assert_told({"DISPLAY": ":4711"},
                         "the window needs a display, and :4711 cannot be opened")

    def test_a_display_that_refuses_the_user_is_told(self):
        self.assert_told({"XAUTHORITY": "/missing"},
                         f"the window needs a display, and {self.desktop.display} cannot be opened",
                         "Authorization required, but no authorization protocol specified\n\n")

    def test_a_display_that_does_not_admit_root_is_told(self):
        display, cookies = ":1", self.machine.home(private_machine.USER) / "another"
        self.desktop.start_server(display, cookies)
        subprocess.run([self.machine.admit_user, private_machine.USER], check=True,
                       env={"DISPLAY": display, "XAUTHORITY": str(cookies)})

        self.assert_told({"DISPLAY": display},
                         f"the window needs a display, and {display} does not admit root")

    def assert_told(self, variables, reason, of_the_display=""):
        """`of_the_display` is what the library that talks to displays tells before the tool."""
        with self.machine.polkit():
            tool = self.launch(variables=variables, agent=SessionAgent)
            status, errors = tool.wait()

        self.assertEqual((status, errors), (0, of_the_display + CANNOT + reason + "\n"))
        self.assertEqual(tool.agent.questions, 0)
        self.assertIn("AuthorizationCopyRights failed with code -60007\n", self.trace())
        self.assert_nothing_is_relaunched()


if __name__ == "__main__":
    elevation_scenario.main()
