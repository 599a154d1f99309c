"""Whatever stands in the configuration file's place, the window opens and loses nothing else."""

import os
import unittest

from scenario import Scenario, network_text


class OddFiles(Scenario):
    def test_fifo_in_the_files_place_counts_as_no_file_and_does_not_hang(self):
        self.folder.mkdir(parents=True)
        os.mkfifo(self.file)
        window = self.open_window()

        shown = [field.text for field in window.fields()]
        window.save()

        self.assertEqual(shown, [""] * 5)
        self.assert_ended(window)
        self.assertTrue(self.file.is_fifo())

    def test_folder_in_the_files_place_counts_as_no_file_and_stays(self):
        self.file.mkdir(parents=True)
        window = self.open_window()

        window.save()

        self.assert_ended(window)
        self.assertTrue(self.file.is_dir())
        self.assertEqual(
            self.last_log_line(), f"[ERROR  ] Saving the dictionary to {self.file} failed: opening "
                                  "the file: Not a regular file\n")

    def test_symbolic_link_in_the_files_place_is_not_followed(self):
        self.folder.mkdir(parents=True)
        target = self.data / "elsewhere"
        target.write_text(network_text("Elsewhere"))
        self.file.symlink_to(target)
        window = self.open_window()

        window.save()

        self.assert_ended(window)
        self.assertEqual(target.read_text(), network_text("Elsewhere"))

    def test_wrong_headers_count_as_no_network(self):
        for content in ("", "<plist version=\"1.0\">\n<dict>\n</dict>\n</plist>",
                        "<?xml version=\"1.0\"?>\n<plist version=\"2.0\">\n<dict>\n</dict>\n"):
            with self.subTest(content=content):
                self.store(content)
                window = self.open_window()

                window.save()

                self.assert_ended(window)
                self.assertEqual(self.stored(), network_text())

    def test_entries_before_a_fault_are_kept(self):
        self.store(network_text("Head office", start="/opt/start").replace(
            "\t\t\t<key>StopArguments</key>", "\n\t\t\t<key>StopArguments</key>"))
        window = self.open_window()

        self.assertEqual(window.start_command.text, "/opt/start")
        window.save()

        self.assert_ended(window)
        self.assertEqual(self.stored(), network_text("Head office", start="/opt/start"))


if __name__ == "__main__":
    unittest.main(verbosity=2, warnings="ignore")
