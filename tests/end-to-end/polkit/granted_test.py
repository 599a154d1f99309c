"""Grants: the ordinary user's first launch ends, and root's window does the job."""

import stat
import subprocess
import unittest

import elevation_scenario
import private_machine
from agents import ProcessAgent, SessionAgent
from desktop import wait_for
from elevation_scenario import CONSOLE_LOG, GRANT

CONSOLE_TRACE = ("TRACE_ON\nTRACE_THE_THREAD *\nTRACE_THE_CALL *\nTRACE_CALL_EXIT\n"
                 "TRACE_SET_FILE_NAME console\n")
DEFAULTS, INTERACTION_ALLOWED = "0", "1"  # how the administrator right is asked for
# What pkexec sets itself, and what it hands on.
PKEXEC_SETS = {"PATH", "HOME", "USER", "LOGNAME", "PKEXEC_UID", "SHELL"}
PKEXEC_HANDS_ON = {"DISPLAY", "XAUTHORITY", "LANG", "LANGUAGE", "TERM"}


class Granted(elevation_scenario.WindowScenario):
    def test_first_launch_ends_and_roots_window_saves(self):
        with self.machine.polkit(GRANT):
            status, errors = self.launch().wait()
            elevated = self.elevated_tool()
            window = self.open_window(elevated)
            self.fill_and_save(window)
            elevated.wait()

        self.assertEqual((status, errors), (0, ""))
        self.assert_saved()
        written = self.settings().stat()
        self.assertEqual((written.st_uid, written.st_gid), (0, 0))
        self.assertEqual(stat.S_IMODE(written.st_mode), 0o644)

    def test_launcher_is_gone_while_the_window_lives(self):
        with self.machine.polkit(GRANT):
            tool = self.launch()
            tool.wait()
            elevated = self.elevated_tool()
            self.open_window(elevated)

            self.assertEqual(elevated.user, 0)
            self.assertEqual(elevated.children, [], "nothing was started for the window's sake")
            self.assertEqual(self.processes_of_user_named("TavConfigurati"), [])

    def test_shell_that_collects_what_is_told_gets_on_while_the_window_lives(self):
        collecting = 'told=$("$0" 2>&1) && echo "told \'$told\'" >&2'
        with self.machine.polkit(GRANT):
            status, errors = self.launch(
                "-c", collecting, str(self.machine.program), start="/bin/bash").wait()
            elevated = self.elevated_tool()
            self.open_window(elevated)

            self.assertEqual((status, errors), (0, "told ''\n"))
            self.assertIsNone(elevated.poll())

    def test_launcher_ends_too_where_the_system_hides_others_processes(self):
        with self.machine.hidden_processes(), self.machine.polkit(GRANT):
            status, errors = self.launch().wait()
            elevated = self.elevated_tool()
            self.open_window(elevated)

            self.assertEqual((status, errors), (0, ""))
            self.assertIsNone(elevated.poll())

    def test_both_roles_log_and_neither_reports_a_crash(self):
        with self.machine.polkit(GRANT):
            self.launch().wait()
            elevated = self.elevated_tool()
            self.open_window(elevated).cancel()
            elevated.wait()

        self.assertIn("Process was launched without --adminRights argument, launch it with admin "
                      "privileges...\n", self.log())
        self.assertIn(f"Execute process {self.machine.program} --adminRights\n", self.trace())
        self.assertIn("Process has kAuthorizationRightExecute right\n", self.log("root"))
        for user in (private_machine.USER, "root"):
            self.assertIn("Starting TavConfiguration TavConfiguration with ID card : \n",
                          self.log(user))
            self.assertEqual(stat.S_IMODE(self.machine.log_folder(user).stat().st_mode), 0o700)
            self.assertNotIn("CALLSTACK", self.trace(user))
            self.assertNotIn("SIGNAL_", self.trace(user))

    def test_cancel_writes_nothing(self):
        with self.machine.polkit(GRANT):
            self.launch().wait()
            elevated = self.elevated_tool()
            self.open_window(elevated).cancel()
            elevated.wait()

        self.assertFalse(self.settings().exists())

    def test_environment_holds_what_the_service_passes_on(self):
        secrets = {"SECRET": "x", "TAV_COMMON_DATA_DIR": "/tmp", "XDG_DATA_HOME": "/tmp",
                   "QT_PLUGIN_PATH": "/tmp", "QT_QPA_PLATFORM": "offscreen", "TERM": "dumb",
                   "LD_LIBRARY_PATH": "/tmp", "SHELL": "/not/in/etc/shells"}
        with self.machine.polkit(GRANT):
            status, errors = self.launch(variables=secrets).wait()
            environment = self.elevated_tool().environment

        self.assertEqual((status, errors), (0, ""))
        self.assertEqual(environment.keys() - PKEXEC_SETS - PKEXEC_HANDS_ON, set())
        self.assertEqual(environment["HOME"], str(self.machine.home("root")))
        self.assertEqual(environment["PATH"],
                         f"/usr/sbin:/usr/bin:/sbin:/bin:{environment['HOME']}/bin")
        self.assertEqual(environment["DISPLAY"], self.desktop.display)
        self.assertNotIn(secrets["SHELL"], environment.values())

    def test_no_descriptor_but_the_standard_streams_is_handed_on(self):
        listed = private_machine.FOLDER / "descriptors"
        real = self.machine.program.with_suffix(".real")
        self.machine.program.rename(real)
        self.addCleanup(real.rename, self.machine.program)
        self.machine.program.write_text(
            '#!/bin/bash\n[ $UID = 0 ] || exec -a "$0" "$0.real"\n'
            f"ls /proc/self/fd > {listed}.new && mv {listed}.new {listed}\n")
        self.machine.program.chmod(0o755)
        with self.machine.polkit(GRANT):
            status, errors = self.launch().wait()
            wait_for(listed.exists, "list of root's process")

        self.assertEqual((status, errors), (0, ""))
        self.assertEqual(listed.read_text(), "0\n1\n2\n3\n", "3 is the folder that is listed")

    def test_cookies_in_the_users_home_serve_where_no_variable_names_them(self):
        with self.machine.polkit(GRANT):
            status, errors = self.launch(variables={"XAUTHORITY": None}).wait()
            elevated = self.elevated_tool()
            window = self.open_window(elevated)
            self.fill_and_save(window)
            elevated.wait()

        self.assertEqual((status, errors), (0, ""))
        self.assert_saved()

    def test_console_lines_that_nobody_reads_do_not_end_the_window(self):
        self.machine.write_beside_program("logger.cfg", CONSOLE_LOG)
        self.machine.write_beside_program("tracer.cfg", CONSOLE_TRACE)
        with self.machine.polkit(GRANT):
            self.launch().wait()
            elevated = self.elevated_tool()
            window = self.open_window(elevated)
            self.fill_and_save(window)
            elevated.wait()

        self.assert_saved()

    def test_marker_given_by_the_user_opens_no_window(self):
        with self.machine.polkit(GRANT):
            status, errors = self.launch("--adminRights").wait()

        self.assertEqual((status, errors), (0, ""))
        self.assertTrue(self.log().endswith(
            "Process DOES NOT have kAuthorizationRightExecute right, exiting...\n"))
        self.assertIsNone(self.machine.elevated_process())

    def test_other_command_lines_are_first_launches(self):
        for arguments in (["--adminRights", "x"], ["--ADMINRIGHTS"], ["--adminRights "]):
            with self.subTest(arguments=arguments), self.machine.polkit(GRANT):
                self.forget_launches()
                status, errors = self.launch(*arguments).wait()
                elevated = self.elevated_tool()
                elevated.kill()

                self.assertEqual((status, errors), (0, ""))
                self.assertIn("Process was launched without --adminRights argument", self.log())

    @staticmethod
    def processes_of_user_named(name):
        listed = subprocess.run(["ps", "-u", private_machine.USER, "-o", "comm="],
                                capture_output=True, text=True)
        return [line for line in listed.stdout.splitlines() if line.startswith(name)]


class Password(elevation_scenario.WindowScenario):
    def test_user_is_asked_once_and_the_grant_is_revoked(self):
        with self.machine.polkit(), self.machine.calls_of_polkit() as calls:
            tool = self.launch(agent=SessionAgent)
            status, errors = tool.wait()
            elevated = self.elevated_tool()
            window = self.open_window(elevated)
            self.fill_and_save(window)
            elevated.wait()

        self.assertEqual((status, errors), (0, ""))
        self.assertEqual(tool.agent.questions, 1)
        self.assertIn(f"AUTHENTICATING FOR {private_machine.ACTION} ".encode(), tool.agent.text)
        self.assertIn(b"Authenticating as: tavadmin", tool.agent.text)
        self.assertEqual(
            calls.read_text().count("member=RevokeTemporaryAuthorizationById"), 1)
        self.assert_saved()

    def test_each_launch_asks_once_by_the_agent_of_a_terminal(self):
        with self.machine.polkit():
            for launch in ("first", "second"):
                with self.subTest(launch=launch):
                    tool = self.launch(agent=ProcessAgent)
                    status, errors = tool.wait()
                    self.elevated_tool().kill()

                    self.assertEqual((status, errors), (0, ""))
                    self.assertEqual(tool.agent.questions, 1)

    def test_grant_is_kept_for_the_relaunch_and_no_longer(self):
        with self.machine.polkit():
            probe = self.launch(
                private_machine.ACTION, INTERACTION_ALLOWED,
                start=self.machine.grant_probe, agent=SessionAgent)
            status, told = probe.wait()

        self.assertEqual((status, told), (0, "asked 0, kept 1, freed 0, left 0\n"))
        self.assertEqual(probe.agent.questions, 1)

    def test_an_administrator_is_asked_for_in_the_background_and_from_afar_too(self):
        self.addCleanup(self.machine.describe_session)
        for session in ({"state": "online"}, {"seat": ""}):
            self.machine.describe_session(**session)
            with self.subTest(session=session), self.machine.polkit():
                probe = self.launch(
                    private_machine.ACTION, INTERACTION_ALLOWED,
                    start=self.machine.grant_probe, agent=SessionAgent)
                status, told = probe.wait()

                self.assertEqual((status, told), (0, "asked 0, kept 1, freed 0, left 0\n"))
                self.assertEqual(probe.agent.questions, 1)
                self.assertIn(b"Authenticating as: tavadmin", probe.agent.text)

    def test_nobody_is_asked_where_interaction_is_not_allowed(self):
        with self.machine.polkit():
            probe = self.launch(
                private_machine.ACTION, DEFAULTS, start=self.machine.grant_probe,
                agent=SessionAgent)
            status, told = probe.wait()

        self.assertEqual(status, 0)
        self.assertTrue(told.endswith("asked -60007, kept 0, freed 0, left 0\n"), told)
        self.assertEqual(probe.agent.questions, 0)


if __name__ == "__main__":
    elevation_scenario.main()
