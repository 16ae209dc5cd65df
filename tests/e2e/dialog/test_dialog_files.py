"""Print to File: what the dialog saves, and which files it leaves unchanged."""

import os
import stat
import subprocess
import unittest

from dialog_case import DialogCase, until
from screen_reader import SENSITIVE
from terminal_case import PROGRAM, SAMPLE

FILE = "Print to File"  # in GTK's list of printers
PDF = b"%PDF-1.4\n"
LARGE = 80_000_000  # bytes
LIMIT = 70_000_000  # bytes of a file; more than the largest PPD
EARLIER = "earlier content"
# A document that no password opens.
PROTECTED = b"""%%PDF-1.4
1 0 obj<</Type/Catalog/Pages 2 0 R>>endobj
2 0 obj<</Type/Pages/Kids[]/Count 0>>endobj
3 0 obj<</Filter/Standard/V 1/R 2/P -4/O<%b>/U<%b>>>endobj
trailer<</Root 1 0 R/Encrypt 3 0 R/ID[<00><00>]>>
%%%%EOF
""" % (b"00" * 32, b"11" * 32)


class DialogFilesTest(DialogCase):
    def setUp(self):
        super().setUp()
        self.folder = self.temporary_folder()

    def saving(self, document=SAMPLE, *others, limits=(), options=()):
        """A dialog with Print to File selected; it saves into `self.folder`."""
        dialog = self.dialog(f"--chdir={self.folder}", *limits, PROGRAM, "-d", "Morva", *options, documents=(document, *others), program="env")
        dialog.wait_for_tab("Tandem Trim")
        dialog.select_printer(FILE)
        until(lambda: not dialog.has_tab("Tandem Trim"), "the panel to go")
        return dialog

    def document(self, name, content, size=None):
        path = self.temporary_folder() / name
        path.write_bytes(content)
        os.truncate(path, size or len(content))
        return path

    def choose_format(self, dialog, title):
        dialog.click(dialog.find("check box", title))

    def saved(self, dialog, name):
        """Prints and returns the contents of the file of this name, which must be the only one in its folder."""
        dialog.press("Print")
        return self.end_of(dialog, name)

    def end_of(self, dialog, name):
        status, out, said = dialog.ends()
        self.assertEqual(status, 0, out + said)
        content = (self.folder / name).read_bytes()
        self.assertEqual(out, f"saved as {self.folder / name} ({len(content)} bytes)\n")
        self.assertEqual(os.listdir(self.folder), [name])
        self.assert_nothing_was_sent()
        return content

    def assert_refused(self, dialog, words, left):
        """Asserts that a message has these words, that the dialog can be used afterwards, and that exactly the files `left` exist."""
        dialog.says(words)
        dialog.press("Close")
        until(lambda: len(dialog.program.windows()) == 1, "the message to go")
        self.assertEqual(sorted(os.listdir(self.folder)), sorted(left))
        until(lambda: dialog.is_live("push button", "Print"), "Print to be ready again")

    def postscript(self):
        return subprocess.run(["pdftops", SAMPLE, "-"], check=True, capture_output=True).stdout

    def test_a_document_is_saved_unchanged_in_its_own_format(self):
        self.assertEqual(self.saved(self.saving(), "output.pdf"), SAMPLE.read_bytes())
        (self.folder / "output.pdf").unlink()
        postscript = self.postscript()
        dialog = self.saving(self.document("document.ps", postscript))
        self.choose_format(dialog, "PostScript")
        self.assertEqual(self.saved(dialog, "output.ps"), postscript)

    def test_a_document_of_another_format_is_converted_to_the_chosen_one(self):
        for name, content, title, beginning in (
            ("document.pdf", SAMPLE.read_bytes(), "PostScript", b"%!PS-Adobe"),
            ("document.ps", self.postscript(), "PDF", b"%PDF-"),
        ):
            with self.subTest(name):
                dialog = self.saving(self.document(name, content))
                self.choose_format(dialog, title)
                ending = {"PDF": "pdf", "PostScript": "ps"}[title]
                self.assertTrue(self.saved(dialog, f"output.{ending}").startswith(beginning))
                (self.folder / f"output.{ending}").unlink()

    def test_a_document_of_any_other_kind_can_be_saved_only_as_pdf(self):
        dialog = self.saving(self.document("document.txt", b"A line.\n"))
        self.assertFalse(dialog.shows("check box", "PostScript"))
        self.assertTrue(self.saved(dialog, "output.pdf").startswith(b"%PDF-"))

    def test_a_document_that_no_filter_understands_is_not_saved(self):
        dialog = self.saving(self.document("document", bytes(range(256)) * 20))
        dialog.press("Print")
        self.assert_refused(dialog, "could not be converted to PDF", [])

    def test_print_to_file_is_not_offered_for_several_documents(self):
        dialog = self.dialog("-d", "Morva", documents=(SAMPLE, SAMPLE))
        dialog.wait_for_tab("Tandem Trim")
        dialog.find("label", "Morva")
        self.assertFalse(dialog.shows("label", FILE))

    def test_a_file_is_replaced_only_if_the_user_agrees_and_keeps_its_permissions(self):
        there = self.folder / "output.pdf"
        there.write_text(EARLIER)
        there.chmod(0o640)
        dialog = self.saving()
        dialog.press("Print")
        dialog.answer("Cancel")
        until(lambda: len(dialog.program.windows()) == 1, "the question to go")
        self.assertEqual(there.read_text(), EARLIER)
        dialog.press("Print")
        dialog.answer("Replace")
        self.assertEqual(self.end_of(dialog, "output.pdf"), SAMPLE.read_bytes())
        self.assertEqual(stat.S_IMODE(there.stat().st_mode), 0o640)

    def test_a_link_stays_and_its_target_is_replaced(self):
        target = self.temporary_folder() / "target.pdf"
        target.write_text(EARLIER)
        (self.folder / "output.pdf").symlink_to(target)
        dialog = self.saving()
        dialog.press("Print")
        dialog.answer("Replace")
        self.assertEqual(dialog.ends()[:2], (0, f"saved as {target} ({SAMPLE.stat().st_size} bytes)\n"))
        self.assertTrue((self.folder / "output.pdf").is_symlink())
        self.assertEqual(target.read_bytes(), SAMPLE.read_bytes())

    def test_folders_and_pipes_are_not_replaced(self):
        for make in (os.mkdir, os.mkfifo):
            with self.subTest(make.__name__):
                there = self.folder / "output.pdf"
                make(there)
                dialog = self.saving()
                dialog.press("Print")
                dialog.answer("Replace")
                self.assert_refused(dialog, "is a folder or a device", ["output.pdf"])
                subprocess.run(["rm", "-r", there], check=True)

    def test_a_file_stays_unchanged_if_there_is_no_room_for_the_new_one(self):
        there = self.folder / "output.pdf"
        there.write_text(EARLIER)
        document = self.document("large.pdf", PDF, LARGE)
        dialog = self.saving(document, limits=("prlimit", f"--fsize={LIMIT}"))
        dialog.press("Print")
        dialog.answer("Replace")
        self.assert_refused(dialog, "could not be saved", ["output.pdf"])
        self.assertEqual(there.read_text(), EARLIER)

    def test_a_folder_that_is_gone_is_named(self):
        dialog = self.saving()
        self.folder.rename(self.folder.with_suffix(".gone"))
        dialog.press("Print")
        dialog.says(f"could not be saved as {self.folder / 'output.pdf'}")
        self.folder.with_suffix(".gone").rename(self.folder)
        self.assert_refused(dialog, "could not be saved", [])

    def test_a_folder_without_write_permission_is_named_and_its_file_stays_unchanged(self):
        there = self.folder / "output.pdf"
        there.write_text(EARLIER)
        self.folder.chmod(0o555)
        # Root must lose the capability that overrides permissions.
        dialog = self.saving(limits=("setpriv", "--bounding-set=-dac_override") if os.geteuid() == 0 else ())
        dialog.press("Print")
        dialog.answer("Replace")
        dialog.says("Permission denied")
        self.assert_refused(dialog, f"could not be saved as {there}", ["output.pdf"])
        self.assertEqual(there.read_text(), EARLIER)
        self.folder.chmod(0o755)

    def test_a_document_with_a_password_is_saved_unchanged_and_cannot_be_converted(self):
        protected = self.document("protected.pdf", PROTECTED)
        dialog = self.saving(protected)
        self.choose_format(dialog, "PostScript")
        dialog.press("Print")
        self.assert_refused(dialog, "protected by a password and cannot be converted to PostScript", [])
        self.choose_format(dialog, "PDF")
        self.assertEqual(self.saved(dialog, "output.pdf"), PROTECTED)

    def test_paper_and_orientation_can_be_set_for_a_printer_but_not_for_a_file(self):
        dialog = self.saving()
        for printer, live in ((FILE, False), ("Morva", True)):
            dialog.select_printer(printer)
            if live:
                dialog.wait_for_tab("Tandem Trim")
            dialog.page("Page Setup")
            for row in ("Paper size", "Orientation"):
                until(lambda: dialog.look_past(row, "combo box").has(SENSITIVE) == live, f"{row} live: {live}")  # noqa: B023
            dialog.page("General")

    def test_a_layout_other_than_the_documents_own_is_refused(self):
        dialog = self.saving(options=("-o", "number-up=4"))
        dialog.press("Print")
        self.assert_refused(dialog, "A file always contains the whole document", [])

    def test_a_document_from_a_pipe_is_saved_too(self):
        content = SAMPLE.read_bytes()
        dialog = self.dialog(f"--chdir={self.folder}", PROGRAM, "--dialog", "-d", "Morva", documents=("-",), content=content, program="env")
        dialog.wait_for_tab("Tandem Trim")
        dialog.select_printer(FILE)
        until(lambda: not dialog.has_tab("Tandem Trim"), "the panel to go")
        self.assertEqual(self.saved(dialog, "output.pdf"), content)


if __name__ == "__main__":
    unittest.main()
