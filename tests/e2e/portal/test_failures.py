"""A document that could not be printed: the dialog keeps it, reappears with its settings and shows the failure, since programs do not."""

import pathlib
import unittest

from dialog_case import until
from portal_client import DONE, FAILED, PortalCase, Shown
from private_cups import PrivateCups
from relay import Altered
from terminal_case import CHANGED, MARGINS, PPD, SAMPLE, digest, of_panel

FILE = "Print to File"


def refuse(cups):
    cups.add_queue("Morva", PPD, accepting=False)


def add(cups):
    cups.add_queue("Morva", PPD)


def remove(cups):
    cups.remove("Morva")


def revive(cups):
    cups.revive()
    add(cups)


# What happens to the printer or its server while the program makes its pages; the dialog's message; how to undo it.
FAILURES = {
    "a refusal": (refuse, "does not accept jobs", add),
    "a printer that is gone": (remove, "does not have this printer", add),
    "a server that is gone": (PrivateCups.kill, "no print server answers", revive),
}


class FailuresTest(PortalCase):
    def failing(self, cause, words):
        """Sets the panel to CHANGED, prints with a failure, and closes its message. Returns the dialog and the pending call."""
        call = self.client.prepare()
        dialog = self.shown()
        dialog.change_panel()
        dialog.press("Print")
        _, _, token = self.results_of(call)
        until(dialog.is_gone, "the dialog to go")
        cause(self.cups)
        call = self.client.print(token=token)
        dialog = Shown(self.process, "Print")
        dialog.says(words)
        self.assertFalse(call.is_answered())
        dialog.press("Close")
        until(lambda: len(dialog.program.windows()) == 1, "the message to go")
        return dialog, call

    def test_a_document_that_failed_can_be_printed_again_with_its_settings(self):
        for name, (cause, words, undo) in FAILURES.items():
            with self.subTest(name):
                self.start()
                dialog, call = self.failing(cause, words)
                undo(self.cups)
                dialog.wait_for_tab("Tandem Trim")
                for side, keyword in MARGINS.items():
                    self.assertEqual(dialog.text(f"{side} Margin"), CHANGED[keyword])
                dialog.press("Print")
                self.assertEqual(call.answer(), (DONE, {}))
                record = self.job()
                self.assertEqual((of_panel(record.options), record.sha256), (CHANGED, digest(SAMPLE)))
                self.end_backend()
                self.forget()

    def forget(self):
        """Resets the server for the next subtest."""
        self.cups.forget()
        self.run_command("lpoptions", "-d", "Morva")

    def test_a_document_that_failed_can_be_saved_as_a_file(self):
        for name, (cause, words, undo) in FAILURES.items():
            with self.subTest(name):
                self.start()
                dialog, call = self.failing(cause, words)
                dialog.page("General")
                dialog.select_printer(FILE)
                until(lambda: not dialog.has_tab("Tandem Trim"), "the panel to go")
                dialog.press("Print")
                self.assertEqual(call.answer(), (DONE, {}))
                (saved,) = pathlib.Path(self.cups.environment()["HOME"]).rglob("*.pdf")
                self.assertEqual(digest(saved), digest(SAMPLE))
                self.end_backend()
                undo(self.cups)
                self.assert_nothing_was_sent()
                self.forget()

    def test_an_option_that_the_server_loses_is_named_and_the_program_gets_a_failure(self):
        name = b"\x0bMVTopMargin\x00"
        with Altered(self.cups.address, name, name.replace(b"n\x00", b"m\x00")) as relay:
            self.start(CUPS_SERVER=relay.address)
            call = self.client.prepare()
            dialog = self.shown()
            dialog.change_panel()
            dialog.press("Print")
            _, _, token = self.results_of(call)
            call = self.client.print(token=token)
            dialog = Shown(self.process, "Print")
            dialog.says("did not accept all of its settings")
            dialog.says("has lost these settings: MVTopMargin")
            dialog.press("Close")
            self.assertEqual(call.answer(), (FAILED, {}))
            until(dialog.is_gone, "the dialog to go")


if __name__ == "__main__":
    unittest.main()
