"""Other programs print with this dialog: a GTK 4 and a GTK 3 editor, through Debian's desktop portal, from Control-P to the filter."""

import getpass
import os
import pathlib
import unittest

from dialog_case import RANGES, of_pages, until
from portal_case import BACKEND_NAME, EDITORS, PortalCase, on_wayland, parent_window, process_of, wayland_windows, windows_of
from terminal_case import CHANGED, of_panel

FILE = "Print to File"
A4 = (595, 842)
# More than three pages in both editors.
LONG = "".join(f"Line {number}\n" for number in range(1, 301))


class Applications:
    """The tests, for the editor of one toolkit."""

    toolkit = None

    def shown(self, text="One line.\n"):
        """Starts an editor with this text and shows the dialog."""
        editor = self.editor(self.toolkit, text)
        return editor, self.dialog_of(editor)

    def prints(self, dialog):
        dialog.press("Print")
        dialog.wait_until_gone()
        return self.next_record()

    def test_settings_of_the_panel_reach_the_filter_once(self):
        _, dialog = self.shown()
        dialog.change_panel()
        record = self.prints(dialog)
        self.assertEqual(of_panel(record.options), CHANGED)
        self.assertEqual((record.copies, of_pages(record.options)), (1, {}))
        self.assertEqual(len(self.pages(record.document)), 1)
        self.assertNotIn(record.title.strip(), ("", "Print", "Untitled"))

    def test_the_dialog_is_a_child_of_the_editors_window(self):
        editor, dialog = self.shown()
        if on_wayland():
            # The compositor tiles a window unless it is another window's child.
            kinds = {pid: window["type"] for pid, window in wayland_windows().items()}
            self.assertEqual(kinds, {editor.process.pid: "con", dialog.pid: "floating_con"})
            return
        (shown,) = windows_of(dialog.pid)
        self.assertEqual([parent_window(shown)], windows_of(editor.process.pid))

    def test_the_program_chooses_the_pages_and_the_printer_makes_the_copies(self):
        _, dialog = self.shown(LONG)
        dialog.spin("Copies", "3")
        dialog.check("Reverse")
        dialog.check("Pages:")
        dialog.type(RANGES, "2-3")
        dialog.page("Page Setup")
        dialog.choose_by_keys("Pages per side", "Down")
        record = self.prints(dialog)
        self.assertEqual(record.copies, 3)
        self.assertEqual(of_pages(record.options), {"Collate": "true", "OutputOrder": "Reverse", "number-up": "2"})
        self.assertEqual(len(self.pages(record.document)), 2)

    def test_the_program_makes_landscape_pages_itself(self):
        _, dialog = self.shown()
        dialog.page("Page Setup")
        dialog.choose_by_keys("Orientation", "Down")
        record = self.prints(dialog)
        ((width, height),) = self.pages(record.document)
        self.assertEqual((round(width), round(height)), A4[::-1])
        self.assertNotIn("orientation-requested", record.options)

    def test_ten_documents_are_printed_one_after_another(self):
        editor = self.editor(self.toolkit, "One line.\n")
        for number in range(10):
            dialog = self.dialog_of(editor)
            dialog.page("Tandem Trim")
            if number == 0:
                dialog.check("Use Tandem Trim")
            dialog.type("Top Margin", str(number))
            record = self.prints(dialog)
            self.assertEqual((record.options["MVTandemTrim"], record.options["MVTopMargin"]), ("On", str(number)))

    def test_cancel_leaves_the_editor_usable(self):
        editor, dialog = self.shown()
        dialog.press("Cancel")
        dialog.wait_until_gone()
        before = editor.document.read_text()
        if on_wayland():
            # The compositor returns the focus to the editor.
            editor.hands.press("x")
        else:
            editor.type("x")
        editor.save()
        until(lambda: len(editor.document.read_text()) == len(before) + 1, "the typed text in the file")
        self.assert_nothing_was_sent()
        self.prints(self.dialog_of(editor))

    def test_a_refusal_is_shown_and_the_document_can_be_printed_again(self):
        _, dialog = self.shown()
        dialog.change_panel()
        self.run_command("lpadmin", "-p", "Morva", "-u", f"deny:{getpass.getuser()}")
        dialog.press("Print")
        dialog.says("allow")
        self.assert_nothing_was_sent()
        dialog.press("Close")
        self.run_command("lpadmin", "-p", "Morva", "-u", "allow:all")
        until(lambda: dialog.is_live("push button", "Print"), "Print to be ready again")
        record = self.prints(dialog)
        self.assertEqual(of_panel(record.options), CHANGED)

    def test_an_editor_prints_to_a_file_in_each_format_that_it_makes(self):
        editor = self.editor(self.toolkit, "One line.\n")
        for title, name, beginning in (("PDF", "output.pdf", b"%PDF-"), ("PostScript", "output.ps", b"%!PS-Adobe"), ("SVG", "output.svg", b"<?xml")):
            with self.subTest(title):
                dialog = self.dialog_of(editor)
                dialog.select_printer(FILE)
                until(lambda: not dialog.has_tab("Tandem Trim"), "the panel to go")  # noqa: B023
                dialog.click(dialog.find("check box", title))
                dialog.find("push button", name)
                dialog.press("Print")
                dialog.wait_until_gone()
                # The home folder, as this user has no documents folder.
                saved = pathlib.Path(self.environment()["HOME"], name)
                until(lambda: saved.exists() and saved.read_bytes().startswith(beginning), f"the file {name}")  # noqa: B023
        self.assert_nothing_was_sent()

    def test_the_editor_survives_when_the_backend_is_killed_and_prints_with_the_next_one(self):
        editor, dialog = self.shown()
        os.kill(dialog.pid, 9)
        until(lambda: process_of(BACKEND_NAME) != dialog.pid, "the end of the backend")
        self.prints(self.dialog_of(editor))

    def test_the_dialog_closes_when_its_editor_dies(self):
        editor, dialog = self.shown()
        editor.process.kill()
        dialog.wait_until_gone()
        self.assert_nothing_was_sent()
        _, dialog = self.shown()
        self.prints(dialog)

    def test_the_dialog_closes_when_the_portal_dies_and_the_editor_prints_with_the_next_one(self):
        editor, dialog = self.shown()
        self.session.kill_portal()
        dialog.wait_until_gone()
        editor.type("x")
        editor.save()
        until(lambda: "x" in editor.document.read_text(), "the typed text in the file")
        self.assert_nothing_was_sent()
        # The bus starts another portal.
        self.prints(self.dialog_of(editor))

    def test_a_job_is_printed_even_if_the_portal_dies_after_passing_the_document(self):
        editor, dialog = self.shown()
        self.cups.freeze()
        self.addCleanup(self.cups.thaw)
        dialog.press("Print")
        # The dialog reappears to show the progress.
        until(lambda: dialog.look("progress bar", ""), "the progress")
        self.session.kill_portal()
        self.cups.thaw()
        self.next_record()
        dialog.wait_until_gone()
        self.prints(self.dialog_of(editor))

    def test_a_frozen_portal_delays_a_job_but_does_not_lose_it(self):
        _, dialog = self.shown()
        dialog.change_panel()
        with self.session.frozen_portal():
            dialog.press("Print")
            dialog.wait_until_gone()
            self.assert_nothing_was_sent()
        self.assertEqual(of_panel(self.next_record().options), CHANGED)


class GTK4Test(Applications, PortalCase):
    toolkit = "GTK 4"


class GTK3Test(Applications, PortalCase):
    toolkit = "GTK 3"


assert set(EDITORS) == {GTK4Test.toolkit, GTK3Test.toolkit}

if __name__ == "__main__":
    unittest.main()
