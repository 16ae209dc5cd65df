"""The options by which programs describe themselves and their documents, and the effect of these on the dialog and the job."""

import pathlib
import unittest

from dialog_case import until
from gi.repository import Atspi, GLib
from portal_client import DONE, Client, PortalCase, Shown, texts
from screen_reader import SENSITIVE
from terminal_case import PPD

MODAL = int(Atspi.StateType.MODAL)
DESKTOP_FILE = "[Desktop Entry]\nType=Application\nName=Letters & More\nExec=true\n"
YES, NO = GLib.Variant("b", True), GLib.Variant("b", False)


class OptionsTest(PortalCase):
    def test_the_dialog_begins_with_the_programs_printer_if_that_exists(self):
        self.cups.add_queue("Other", PPD)
        self.start()
        for suggested, begins in (("Other", "Other"), ("Nowhere", "Morva"), ("%s", "Morva")):
            with self.subTest(suggested):
                settings, _, _ = self.chosen(settings=texts(printer=suggested))
                self.assertEqual(settings["printer"], begins)

    def test_a_job_without_a_title_gets_its_programs_name(self):
        places = self.temporary_folder()
        (places / "applications").mkdir()
        (places / "applications/org.example.Letters.desktop").write_text(DESKTOP_FILE)
        self.start(XDG_DATA_HOME=str(places))
        for application, named in (("org.example.Letters", "Letters & More"), ("org.example.Other", "org.example.Other"), ("../Letters", "../Letters")):
            with self.subTest(application):
                self.cups.forget()
                self.run_command("lpoptions", "-d", "Morva")
                self.client = Client(application)
                _, _, token = self.chosen()
                self.assertEqual(self.client.print(token=token).answer(), (DONE, {}))
                self.assertEqual(self.job().title, named)

    def test_a_job_is_not_named_print_in_any_language(self):
        self.start(LANG="C.UTF-8", LANGUAGE="de")
        for title in ("Print", self.of_gtk("Print", "de")):
            with self.subTest(title):
                self.cups.forget()
                self.run_command("lpoptions", "-d", "Morva")
                call = self.client.prepare(title=title)
                dialog = Shown(self.process, title)
                dialog.wait_for_tab("Tandem Trim")
                dialog.press(self.of_gtk("Print", "de"))
                _, _, token = self.results_of(call)
                self.assertEqual(self.client.print(token=token, title=title).answer(), (DONE, {}))
                self.assertEqual(self.job().title, "Dokument")

    def test_current_page_and_selection_are_offered_only_if_the_program_has_them(self):
        self.start()
        call = self.client.prepare()
        dialog = self.shown()
        self.assertFalse(dialog.find("check box", "Current Page").has(SENSITIVE))
        self.assertIsNone(dialog.look("check box", "Selection"))
        dialog.press("Cancel")
        call.answer()
        for title, value in (("Current Page", "current"), ("Selection", "selection")):
            with self.subTest(title):
                call = self.client.prepare(has_current_page=YES, has_selected_pages=YES)
                dialog = self.shown()
                dialog.check(title)
                dialog.press("Print")
                settings, _, _ = self.results_of(call)
                self.assertEqual(settings["print-pages"], value)

    def test_a_dialog_is_modal_unless_the_program_declines_that(self):
        self.start()
        for options, modal in (({}, True), ({"modal": YES}, True), ({"modal": NO}, False), ({"modal": GLib.Variant("s", "no")}, True)):
            with self.subTest(options):
                call = self.client.prepare(**options)
                dialog = self.shown()
                self.assertEqual(dialog.window.has(MODAL), modal)
                dialog.press("Cancel")
                call.answer()
                until(dialog.is_gone, "the dialog to go")

    def test_print_to_file_offers_only_formats_that_the_program_makes(self):
        self.start()
        for formats, shown in ((["pdf", "ps", "svg"], ["PDF", "PostScript", "SVG"]), (["png", "ps", "pdf"], ["PDF", "PostScript"])):
            with self.subTest(formats):
                call = self.client.prepare(supported_output_file_formats=GLib.Variant("as", formats))
                dialog = self.shown()
                dialog.select_printer("Print to File")
                dialog.find("check box", "PDF")
                self.assertEqual([title for title in ("PDF", "PostScript", "SVG") if dialog.shows("check box", title)], shown)
                dialog.press("Cancel")
                call.answer()
                until(dialog.is_gone, "the dialog to go")
        for formats, made in ((["ps"], "ps"), ([], None), (["png"], None)):
            with self.subTest(formats):
                call = self.client.prepare(supported_output_file_formats=GLib.Variant("as", formats))
                dialog = self.shown()
                if made is None:
                    self.assertIsNone(dialog.look("label", "Print to File"))
                    dialog.press("Cancel")
                    call.answer()
                    continue
                dialog.select_printer("Print to File")
                dialog.press("Print")
                settings, _, token = self.results_of(call)
                self.assertEqual(settings["output-file-format"], made)
                self.assertEqual(self.client.print(token=token).answer(), (DONE, {}))
                (saved,) = pathlib.Path(self.cups.environment()["HOME"]).rglob(f"*.{made}")
                saved.unlink()


if __name__ == "__main__":
    unittest.main()
