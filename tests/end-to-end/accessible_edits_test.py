"""What assistive technology puts into the fields keeps to the rules of what is typed."""

import unittest

from scenario import Scenario, network_text

REFUSED = ("host", " ", "1 2", "abc1.2", "1.2x", "1.2\n", "-1")


class AccessibleEdits(Scenario):
    def test_letters_blanks_and_mixed_texts_are_put_back_and_not_saved(self):
        window = self.open_window()
        window.choose_monitoring()
        for text in REFUSED:
            with self.subTest(text=text):
                window.address.set_text(text)
                self.assertEqual(window.address.text, "")

        window.address.set_text("192.0.2.17")
        for text in REFUSED:
            with self.subTest(text=text):
                window.address.set_text(text)
                self.assertEqual(window.address.text, "192.0.2.17")
                window.address.insert_text(3, text)
                self.assertEqual(window.address.text, "192.0.2.17")

        window.address.insert_text(0, "1.")
        window.address.delete_text(5, 7)
        window.save()
        self.assert_ended(window)
        self.assertEqual(self.stored(), network_text(monitoring="true", address="1.192.2.17"))

    def test_stored_name_shows_and_stays_when_a_part_of_it_is_edited(self):
        self.store(network_text(monitoring="true", address="gate.example"))
        window = self.open_window()

        window.address.insert_text(4, "1")
        window.address.delete_text(0, 4)
        window.address.set_text("other.example")

        self.assertEqual(window.address.text, "gate.example")
        window.save()
        self.assert_ended(window)
        self.assertEqual(self.stored(), network_text(monitoring="true", address="gate.example"))

    def test_stored_name_is_replaced_whole(self):
        self.store(network_text(monitoring="true", address="gate.example"))
        window = self.open_window()

        window.address.set_text("10.0.0.1")

        window.save()
        self.assert_ended(window)
        self.assertEqual(self.stored(), network_text(monitoring="true", address="10.0.0.1"))

    def test_stored_name_is_cleared_whole(self):
        self.store(network_text(address="gate.example"))
        window = self.open_window()

        window.address.delete_text(0, 12)

        self.assertEqual(window.address.text, "")
        window.save()
        self.assert_ended(window)
        self.assertEqual(self.stored(), network_text())

    def test_line_breaks_are_saved_as_blanks(self):
        window = self.open_window()

        window.start_command.set_text("/opt/vpn\nup")
        window.stop_command.set_text("/opt/vpn")
        window.stop_command.insert_text(8, "\r\ndown")

        window.save()
        self.assert_ended(window)
        self.assertEqual(self.stored(), network_text(start="/opt/vpn up", stop="/opt/vpn  down"))


if __name__ == "__main__":
    unittest.main(verbosity=2, warnings="ignore")
