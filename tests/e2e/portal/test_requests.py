"""What programs ask of the print backend and what they hear, from the request to the printer's filter."""

import os
import pathlib
import signal
import subprocess
import unittest

import patience
from dialog_case import until
from gi.repository import GLib
from portal_client import CANCELLED, DONE, FAILED, Client, PortalCase, Shown, texts
from terminal_case import CHANGED, DEFAULTS, SAMPLE, digest, of_panel

RANGES = "Specify one or more page ranges"
A4 = {
    "PPDName": GLib.Variant("s", "A4"),
    "DisplayName": GLib.Variant("s", "A4"),
    "Width": GLib.Variant("d", 210.0),
    "Height": GLib.Variant("d", 297.0),
    "MarginTop": GLib.Variant("d", 6.35),
    "Orientation": GLib.Variant("s", "portrait"),
}
# By which a program does nothing that the printer does.
NEUTRAL = {"n-copies": "1", "collate": "false", "reverse": "false", "page-set": "all", "number-up": "1"}


class RequestsTest(PortalCase):
    def set_up(self, dialog):
        """Chooses something of every kind: pages, copies, scale, orientation, the panel's values."""
        dialog.spin("Copies", "3")
        dialog.check("Pages:")
        dialog.type(RANGES, "1-2")
        dialog.page("Page Setup")
        dialog.choose_by_keys("Orientation", "Down")
        dialog.choose_by_keys("Pages per side", "Down")
        dialog.page("Tandem Trim")
        dialog.check("Use Tandem Trim")
        dialog.choose("Image Direction", 1)
        dialog.choose("Print Position", 0)
        for side, text in (("Top", "12"), ("Bottom", "30"), ("Left", "0"), ("Right", "7")):
            dialog.type(f"{side} Margin", text)

    def test_the_program_lays_out_and_the_job_carries_the_rest_exactly(self):
        self.start()
        call = self.client.prepare(page_setup=A4)
        dialog = self.shown()
        self.set_up(dialog)
        dialog.press("Print")
        settings, page_setup, token = self.results_of(call)
        layout = {"print-pages": "ranges", "page-ranges": "0-1", "scale": "100", "orientation": "landscape"}
        self.assertEqual(settings, NEUTRAL | layout | {"output-file-format": "pdf", "printer": "Morva"})
        self.assertEqual((page_setup["Width"], page_setup["Height"], page_setup["Orientation"]), (210.0, 297.0, "landscape"))
        until(dialog.is_gone, "the dialog to go")
        self.assertEqual(self.client.print(token=token).answer(), (DONE, {}))
        record = self.job()
        self.assertEqual((record.copies, record.sha256), (3, digest(SAMPLE)))
        self.assertEqual(of_panel(record.options), CHANGED)
        others = {keyword: value for keyword, value in record.options.items() if keyword not in CHANGED and not keyword.startswith("job-")}
        self.assertEqual(others.pop("Collate"), "true")
        self.assertEqual(others.pop("number-up"), "2")
        for keyword in ("page-ranges", "orientation-requested", "copies"):
            self.assertNotIn(keyword, others)

    def test_without_a_token_the_dialog_comes_first_and_the_job_carries_the_layout_too(self):
        self.start()
        call = self.client.print()
        dialog = self.shown()
        self.set_up(dialog)
        self.assertFalse(call.is_answered())
        dialog.press("Print")
        self.assertEqual(call.answer(), (DONE, {}))
        record = self.job()
        self.assertEqual((record.copies, record.sha256), (3, digest(SAMPLE)))
        self.assertEqual(of_panel(record.options), CHANGED)
        for keyword, value in {"page-ranges": "1-2", "orientation-requested": "4", "number-up": "2"}.items():
            self.assertEqual(record.options[keyword], value)

    def test_what_the_program_suggests_is_set_and_nothing_else_of_it(self):
        self.start()
        settings = texts(n_copies="2", reverse="true", print_pages="ranges", page_ranges="1,3-4", scale="75", cups_MVTopMargin="12")
        call = self.client.prepare(settings | {"collate": GLib.Variant("i", 1)}, A4 | {"Orientation": GLib.Variant("s", "landscape")})
        dialog = self.shown()
        self.assertEqual(dialog.text(RANGES), "2,4-5")
        dialog.press("Print")
        settings, page_setup, token = self.results_of(call)
        self.assertEqual((settings["page-ranges"], settings["scale"], page_setup["Orientation"]), ("1,3-4", "75", "landscape"))
        self.client.print(token=token).answer()
        record = self.job()
        self.assertEqual((record.copies, record.options["OutputOrder"]), (2, "Reverse"))
        self.assertEqual(of_panel(record.options), DEFAULTS)

    def test_cancel_is_told_and_nothing_is_sent(self):
        self.start()
        for ask in (self.client.prepare, self.client.print):
            call = ask()
            dialog = self.shown()
            dialog.press("Cancel")
            self.assertEqual(call.answer(), (CANCELLED, {}))
            until(dialog.is_gone, "the dialog to go")
        self.assert_nothing_was_sent()

    def test_a_program_that_takes_its_request_back_or_dies_leaves_no_dialog(self):
        self.start()
        for ask in (Client.prepare, Client.print):
            for end in ("close", "leave"):
                with self.subTest(ask.__name__, end=end):
                    client = Client()
                    call = ask(client)
                    dialog = self.shown()
                    if end == "close":
                        call.close()
                        self.assertEqual(call.answer(), (FAILED, {}))
                    else:
                        client.leave()
                    until(dialog.is_gone, "the dialog to go")
        self.assert_nothing_was_sent()

    def test_a_token_counts_once_and_for_its_program_alone(self):
        self.start()
        _, _, token = self.chosen()
        strange = Client("org.example.Other").print(token=token)
        self.shown().press("Cancel")
        self.assertEqual(strange.answer(), (CANCELLED, {}))
        self.assertEqual(self.client.print(token=token).answer(), (DONE, {}))
        self.cups.wait_for_jobs()
        again = self.client.print(token=token)
        self.shown().press("Cancel")
        self.assertEqual(again.answer(), (CANCELLED, {}))
        self.assertEqual(len(self.cups.records()), 1)

    def test_a_token_of_nobody_opens_the_dialog(self):
        self.start()
        for token in (0, 1):
            call = self.client.print(token=token)
            self.shown().press("Cancel")
            self.assertEqual(call.answer(), (CANCELLED, {}))

    def test_a_document_comes_through_a_pipe_too(self):
        self.start()
        _, _, token = self.chosen()
        reading, writing = os.pipe()
        call = self.client.print(reading, token)
        os.close(reading)
        with os.fdopen(writing, "wb") as pipe:
            pipe.write(SAMPLE.read_bytes())
        self.assertEqual(call.answer(), (DONE, {}))
        self.assertEqual(self.job().sha256, digest(SAMPLE))

    def test_a_pipe_without_an_end_holds_nothing_up_and_can_be_taken_back(self):
        self.start()
        _, _, token = self.chosen()
        reading, writing = os.pipe()
        self.addCleanup(os.close, writing)
        call = self.client.print(reading, token)
        os.close(reading)
        os.write(writing, b"%PDF-1.4\n")
        other = self.client.prepare(title="Another")
        self.shown("Another").press("Cancel")
        self.assertEqual(other.answer(), (CANCELLED, {}))
        self.assertFalse(call.is_answered())
        call.close()
        self.assertEqual(call.answer(), (FAILED, {}))
        self.assert_nothing_was_sent()

    def test_what_is_no_document_is_refused_in_words(self):
        self.start()
        empty = self.temporary_folder() / "empty"
        empty.touch()
        for place, words in (("/", "neither a file nor a pipe"), ("/dev/zero", "neither a file nor a pipe"), (empty, "is empty")):
            with self.subTest(place):
                _, _, token = self.chosen()
                call = self.client.print(place, token)
                dialog = Shown(self.process, "Print")
                dialog.says(words)
                dialog.press("Close")
                self.assertEqual(call.answer(), (FAILED, {}))
                until(dialog.is_gone, "the dialog to go")
        self.assert_nothing_was_sent()


if __name__ == "__main__":
    unittest.main()
