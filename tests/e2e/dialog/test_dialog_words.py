"""Failures are shown in the user's language, without words that help only at a terminal."""

import re
import unittest

from dialog_case import DialogCase
from private_cups import PrivateCups
from relay import WantsLogin
from terminal_case import OF_TERMINALS, PPD, PROJECT, SAMPLE

TABLES = PROJECT / "host/dialog/texts"
GERMAN = {"LANG": "C.UTF-8", "LANGUAGE": "de"}
SHORTEST = 8  # the letters of the shortest piece that is compared


def table(language):
    """The dialog's texts: English to this language."""
    lines = (TABLES / f"{language}.lproj/Localizable.strings").read_text(encoding="utf-8-sig").splitlines()
    return dict(re.match(r'"((?:[^"\\]|\\.)*)" = "((?:[^"\\]|\\.)*)";', line).groups() for line in lines if line)


def pieces(text):
    """The parts of a text between its placeholders."""
    return [piece.strip(" :;,.()") for piece in re.split(r"\[\w+\]", text) if len(piece.strip(" :;,.()")) >= SHORTEST]


GERMAN_TEXTS = table("de")
ENGLISH = sorted({piece for key, text in GERMAN_TEXTS.items() for piece in pieces(key) if piece not in text})


class DialogWordsTest(DialogCase):
    def german(self, *arguments, documents=(SAMPLE,), **variables):
        return self.dialog(*arguments, documents=documents, **GERMAN, **variables)

    def ready(self, *arguments, **variables):
        dialog = self.german("-d", "Morva", *arguments, **variables)
        dialog.wait_for_tab("Tandem Trim")
        return dialog

    def prints(self, dialog):
        dialog.press("Drucken")
        return dialog

    def assert_shown(self, dialog, what, *details):
        """Asserts that the dialog shows the translation of this text and these details, with no English and nothing about terminals."""
        for words in (GERMAN_TEXTS[what].replace('\\"', '"'), *details):
            text = dialog.says(words)
            for piece in ENGLISH:
                self.assertNotIn(piece, text)
            self.assertNotRegex(text, OF_TERMINALS)
        dialog.close()

    def test_a_server_that_refuses_the_connection_is_reported(self):
        dialog = self.ready()
        self.cups.kill()
        what = "The print server cannot be used at present. Make sure that it is running and can be reached, then try again."
        self.assert_shown(self.prints(dialog), what, "antwortet kein Druckserver")

    def test_a_server_that_does_not_answer_is_reported(self):
        dialog = self.ready(TANDEM_TRIM_TIMEOUT="1")
        self.cups.freeze()
        self.addCleanup(self.cups.thaw)
        what = "The print server cannot be used at present. Make sure that it is running and can be reached, then try again."
        self.assert_shown(self.prints(dialog), what, "hat nicht innerhalb von 1 s geantwortet.")

    def test_a_printer_that_does_not_exist_is_reported(self):
        what = "The print server does not have this printer. Choose another printer."
        self.assert_shown(self.german("-d", "Nowhere"), what, "Es gibt keinen Drucker »Nowhere«.")

    def test_a_missing_default_printer_is_reported(self):
        self.assert_shown(self.german(), "There is no default printer. Choose a printer.", "Es gibt keinen Standarddrucker,")

    def test_a_stopped_printer_is_reported(self):
        self.run_command("cupsdisable", "-r", "out of blades", "Morva")
        what = "The printer is stopped. Choose another printer, or have it started and try again."
        self.assert_shown(self.prints(self.ready()), what, "Morva ist angehalten. Meldung: »out of blades«.")

    def test_a_refused_job_is_reported(self):
        dialog = self.ready("-o", "document-format=application/x-nothing")
        what = "The printer cannot print documents of this kind. Choose another printer, or save the document as a PDF file and print that."
        self.assert_shown(self.prints(dialog), what, "Morva hat sample.pdf nicht angenommen.", "kann Dokumente dieser Art nicht drucken. Meldung:", "application/x-nothing")

    def test_a_missing_document_is_reported(self):
        what = "The document cannot be printed. Check it, then try again."
        missing = str(self.temporary_folder() / "missing.pdf")
        self.assert_shown(self.german("-d", "Morva", documents=(missing,)), what, f"{missing} kann nicht gelesen werden")

    def test_an_empty_document_is_reported(self):
        empty = self.temporary_folder() / "empty.pdf"
        empty.touch()
        what = "The document cannot be printed. Check it, then try again."
        self.assert_shown(self.german("-d", "Morva", documents=(empty,)), what, "empty.pdf ist leer.")

    def test_a_missing_password_is_reported(self):
        with WantsLogin(self.cups.address, "ann:Secret") as relay:
            dialog = self.prints(self.ready(CUPS_SERVER=relay.address))
            dialog.answer("Abbrechen")
            what = "The print server requires a password and accepted none. Try again, or ask its administrator."
            self.assert_shown(dialog, what, "verlangt das Passwort von")

    def test_a_changed_certificate_is_reported(self):
        encrypted = {"CUPS_ENCRYPTION": "Required"}
        self.trim("-d", "Morva", SAMPLE, **encrypted)
        with PrivateCups() as other:
            other.add_queue("Morva", PPD)
            dialog = self.german("-d", "Morva", CUPS_SERVER="{}:{}".format(*other.address), **encrypted)
            what = "The connection to the print server cannot be trusted. Ask its administrator."
            self.assert_shown(dialog, what, "weist sich mit einem anderen Zertifikat aus als bisher")

    def test_settings_that_cannot_be_saved_for_all_jobs_are_reported(self):
        home = self.temporary_folder() / "file"
        home.write_text("no folder")
        dialog = self.ready(CUPS_SERVERROOT=str(home), HOME=str(home), XDG_STATE_HOME=str(self.temporary_folder()))
        dialog.page("Tandem Trim")
        dialog.check("Für alle meine Aufträge verwenden")
        what = "The job was sent, but its settings could not be kept for all your jobs. Choose them again for the next job."
        self.assert_shown(self.prints(dialog), what, "Die Vorgaben für Morva können nicht geändert werden.")

    def test_settings_that_cannot_be_remembered_are_reported(self):
        state = self.temporary_folder() / "file"
        state.write_text("no folder")
        dialog = self.ready(XDG_STATE_HOME=str(state))
        what = "The job was sent, but its settings could not be remembered. Choose them again for the next job."
        self.assert_shown(self.prints(dialog), what)

    def test_an_option_that_the_server_loses_is_reported(self):
        dialog = self.ready("-o", "job-media-sheets-completed=17")
        what = "The job was sent, but the print server did not accept all of its settings. Check the printout."
        self.assert_shown(self.prints(dialog), what, "job-media-sheets-completed")

    def test_a_title_that_would_be_lost_is_reported(self):
        dialog = self.ready("-t", "x" * 2000)
        what = "That did not work. Try again, or choose another printer."
        self.assert_shown(self.prints(dialog), what, "Der Titel des Auftrags")

    def test_an_option_that_would_be_lost_is_reported(self):
        dialog = self.ready("-o", "x-note={a=b}")
        what = "That did not work. Try again, or choose another printer."
        self.assert_shown(self.prints(dialog), what, "Der Wert von x-note kann nicht gesendet werden: {a=b}")

    def test_a_missing_plugin_is_reported(self):
        dialog = self.german("-d", "Morva", "--plugin", str(self.temporary_folder()))
        what = "The printer's own settings are not available."
        self.assert_shown(dialog, what, "Das Plug-in TandemTrim.bundle ist nicht installiert.")


if __name__ == "__main__":
    unittest.main()
