"""The Save road: what is entered in the real window is what stands in the real file."""

import unittest

from configuration_window import NO_MONITORING, NO_VPN, WITH_MONITORING, WITH_VPN
from desktop import wait_for
from scenario import Scenario, network_text

VALUES = {"start": "/usr/sbin/vpn", "start_arguments": "up office", "stop": "/usr/sbin/vpn",
          "stop_arguments": "down office", "address": "192.0.2.17"}
FILLED = network_text(vpn="true", monitoring="true", **VALUES)

SECOND_NETWORK = """\t<key>Company2</key>
\t<dict>
\t\t<key>DedicatedAPN</key>
\t\t<dict>
\t\t\t<key>APN</key>
\t\t\t<string>office.example</string>
\t\t\t<key>Proxy</key>
\t\t\t<dict>
\t\t\t\t<key>Address</key>
\t\t\t\t<string>proxy.example</string>
\t\t\t\t<key>Port</key>
\t\t\t\t<string>3128</string>
\t\t\t</dict>
\t\t</dict>
\t\t<key>Name</key>
\t\t<string>Branch</string>
\t</dict>
"""


class SaveRoad(Scenario):
    def test_first_save_writes_a_network_intranet_with_all_that_was_entered(self):
        window = self.open_window()
        window.choose_vpn()
        window.start_command.set_text("/usr/sbin/vpn")
        window.start_arguments.set_text("up office")
        window.stop_command.set_text("/usr/sbin/vpn")
        window.stop_arguments.set_text("down office")
        window.choose_monitoring()
        window.address.set_text("192.0.2.17")

        window.save()

        self.assert_ended(window)
        self.assertEqual(self.stored(), FILLED)
        self.assertEqual(self.last_log_line(), "[WARNING] No company netword defined.\n")

    def test_stored_values_show_and_an_untouched_save_keeps_every_byte(self):
        stored = network_text(
            "Head office", vpn="true", start="/opt/a b/start", start_arguments="<x> & \"y\" é",
            stop="/opt/stop", monitoring="true", address="1.2.3.4", more=SECOND_NETWORK)
        self.store(stored)
        window = self.open_window()

        shown = [field.text for field in window.fields()]
        window.save()

        self.assertEqual(
            shown, ["/opt/a b/start", "<x> & \"y\" é", "/opt/stop", "", "1.2.3.4"])
        self.assert_ended(window)
        self.assertEqual(self.stored(), stored)

    def test_only_the_first_network_changes(self):
        self.store(network_text("Head office", more=SECOND_NETWORK))
        window = self.open_window()
        window.choose_monitoring()
        window.address.set_text("10.0.0.1")

        window.save()

        self.assert_ended(window)
        self.assertEqual(self.stored(), network_text(
            "Head office", monitoring="true", address="10.0.0.1", more=SECOND_NETWORK))

    def test_replaced_version_stays_beside_the_file(self):
        self.store(network_text("Head office"))
        window = self.open_window()
        window.choose_monitoring()
        window.address.set_text("10.0.0.1")

        window.save()

        self.assert_ended(window)
        backup = self.folder / "CompanyNetworkConfiguration.cfg.bak"
        self.assertEqual(backup.read_text(), network_text("Head office"))

    def test_switched_off_groups_are_disabled_and_keep_and_save_their_values(self):
        self.store(FILLED)
        window = self.open_window()
        self.assertTrue(all(field.enabled for field in window.fields()))

        window.choose_no_vpn()
        window.choose_no_monitoring()

        controls = window.fields() + [window.browse_start, window.browse_stop]
        wait_for(lambda: not any(control.enabled for control in controls), "disabled group")
        self.assertEqual(window.start_command.text, "/usr/sbin/vpn")
        self.assertEqual(window.address.text, "192.0.2.17")
        window.save()
        self.assert_ended(window)
        self.assertEqual(
            self.stored(), network_text(vpn="false", monitoring="false", **VALUES))

    def test_vpn_without_monitoring_shows_and_either_choice_switches_alone(self):
        stored = network_text(vpn="true", monitoring="false", **VALUES)
        opened = [WITH_VPN, NO_MONITORING]
        self._assert_switch(stored, opened, NO_VPN, [NO_VPN, NO_MONITORING],
                            network_text(vpn="false", monitoring="false", **VALUES))
        self._assert_switch(stored, opened, WITH_MONITORING, [WITH_VPN, WITH_MONITORING],
                            network_text(vpn="true", monitoring="true", **VALUES))

    def test_monitoring_without_vpn_shows_and_either_choice_switches_alone(self):
        stored = network_text(vpn="false", monitoring="true", **VALUES)
        opened = [NO_VPN, WITH_MONITORING]
        self._assert_switch(stored, opened, WITH_VPN, [WITH_VPN, WITH_MONITORING],
                            network_text(vpn="true", monitoring="true", **VALUES))
        self._assert_switch(stored, opened, NO_MONITORING, [NO_VPN, NO_MONITORING],
                            network_text(vpn="false", monitoring="false", **VALUES))

    def test_cancel_leaves_the_file_untouched(self):
        self.store(FILLED)
        before = self.file.stat()
        window = self.open_window()
        window.start_command.set_text("/changed")

        window.cancel()

        self.assert_ended(window)
        self.assertEqual(self.stored(), FILLED)
        self.assertEqual(self.file.stat().st_mtime_ns, before.st_mtime_ns)
        self.assertEqual([entry.name for entry in self.folder.iterdir()], [self.file.name])
        self.assertEqual(
            self.last_log_line(), "[LEVEL_0] Process has kAuthorizationRightExecute right\n")

    def test_vpn_without_a_command_line_is_refused_with_an_alert(self):
        self.store(network_text())
        window = self.open_window()
        window.choose_vpn()
        window.start_command.set_text("/usr/sbin/vpn")
        window.choose_monitoring()

        window.save()

        self.assertEqual(window.alert(), window.texts["MSGOK_DLG_FILL_BOTH_COMMAND_LINE"])
        window.dismiss_alert()
        self.assertEqual(window.start_command.text, "/usr/sbin/vpn")
        self._assert_open_and_unsaved(window)

    def test_monitoring_without_an_address_is_refused_with_an_alert(self):
        self.store(network_text())
        window = self.open_window()
        window.choose_monitoring()

        window.save()

        self.assertEqual(window.alert(), window.texts["MSGOK_DLG_FILL_CORRECT_IP_ADDRESS"])
        window.dismiss_alert()
        self._assert_open_and_unsaved(window)

    def test_window_speaks_the_users_language(self):
        for language in ("fr", "de", "es"):
            with self.subTest(language=language):
                window = self.open_window(language)

                explanation = window.texts["EXPLANATION_TEXT"]

                self.assertTrue(any(node.name == explanation for node in window.node.descendants()))
                window.cancel()
                self.assert_ended(window)

    def test_texts_with_markup_and_unicode_are_saved_to_the_letter(self):
        window = self.open_window()
        window.choose_vpn()
        window.start_command.set_text("/opt/<b>&amp; \"x\" 'y'")
        window.stop_command.set_text("/opt/日本語/😀")

        window.save()

        self.assert_ended(window)
        self.assertEqual(self.stored(), network_text(
            vpn="true", start="/opt/<b>&amp; \"x\" 'y'", stop="/opt/日本語/😀"))

    def _assert_switch(self, stored, opened, choice, chosen, saved):
        with self.subTest(choice=choice):
            self.store(stored)
            window = self.open_window()
            self.assertEqual(window.chosen(), opened)

            window.radio(choice).press()

            wait_for(lambda: window.radio(choice).checked, "switched radio button")
            self.assertEqual(window.chosen(), chosen)
            window.save()
            self.assert_ended(window)
            self.assertEqual(self.stored(), saved)

    def _assert_open_and_unsaved(self, window):
        wait_for(lambda: window.application.window_titles() == [window.node.name], "closed alert")
        self.assertEqual(self.stored(), network_text())
        window.cancel()
        self.assert_ended(window)


if __name__ == "__main__":
    unittest.main(verbosity=2, warnings="ignore")
