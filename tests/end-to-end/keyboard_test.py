"""The keyboard alone does the whole job, through the display and not through accessibility."""

import unittest

from desktop import wait_for
from scenario import Scenario, network_text


class Keyboard(Scenario):
    def open_window(self, language="en"):
        window = super().open_window(language)
        wait_for(lambda: any(node.focused for node in window.node.descendants()), "focus")
        return window

    def test_letters_and_blanks_are_refused_in_the_address_field(self):
        window = self.open_window()
        window.choose_monitoring()
        wait_for(lambda: window.address.enabled, "enabled address field")
        window.address.focus()
        wait_for(lambda: window.address.focused, "focused address field")

        self.desktop.type("1a.2 2.3.4.5x")

        wait_for(lambda: window.address.text == "1.22.3.4.5", "address without letters and blanks")
        window.cancel()
        self.assert_ended(window)

    def test_return_saves(self):
        self.store(network_text("Head office"))
        window = self.open_window()
        window.choose_monitoring()
        wait_for(lambda: window.address.enabled, "enabled address field")
        window.address.focus()
        wait_for(lambda: window.address.focused, "focused address field")
        self.desktop.type("10.1.2.3")
        wait_for(lambda: window.address.text == "10.1.2.3", "typed address")

        self.desktop.key("Return")

        self.assert_ended(window)
        self.assertEqual(
            self.stored(), network_text("Head office", monitoring="true", address="10.1.2.3"))

    def test_escape_cancels(self):
        self.store(network_text("Head office"))
        window = self.open_window()
        window.choose_monitoring()

        self.desktop.key("Escape")

        self.assert_ended(window)
        self.assertEqual(self.stored(), network_text("Head office"))

    def test_tab_reaches_every_control_and_comes_back(self):
        self.store(network_text(vpn="true", start="/a", stop="/b", monitoring="true", address="1"))
        window = self.open_window()
        focused = lambda: next((n.name for n in window.node.descendants() if n.focused), None)

        visited = []
        while focused() not in visited:
            visited.append(focused())
            self.desktop.key("Tab")
            wait_for(lambda: focused() not in (None, visited[-1]), "move of the focus")

        expected = [field.name for field in window.fields()]
        expected += [window.browse_start.name, window.browse_stop.name]
        expected += [window.texts[key] for key in (
            "WITH_VPN_RADIOBUTTON", "MONITORING_ENABLE_RADIO_BUTTON", "SAVE_BUTTON",
            "CANCEL_BUTTON")]
        self.assertEqual(sorted(visited), sorted(expected))
        window.cancel()
        self.assert_ended(window)


if __name__ == "__main__":
    unittest.main(verbosity=2, warnings="ignore")
