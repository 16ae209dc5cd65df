"""The document's page in the picture of the sheet: what a user sees and hears of it, and how pages are turned."""

import subprocess
import unittest

import gi
import pages
from dialog_case import RANGES, DialogCase, until
from listener import Listener, is_heard, words
from pages import A4, bar
from screen_reader import FOCUSED, SENSITIVE
from terminal_case import BUILD, MARGINS, PPD, SAMPLE, VALID

gi.require_version("GdkPixbuf", "2.0")
from gi.repository import GdkPixbuf  # noqa: E402

# For each side, a bar 2 mm from it and 40 mm long.
AT_SIDES = {
    "Top": bar(85, 2, 40, 20),
    "Bottom": bar(85, 275, 40, 20),
    "Left": bar(2, 128, 20, 40),
    "Right": bar(188, 128, 20, 40),
}
IN_THE_MIDDLE = bar(100, 140, 10, 10)
NOTE = "The page has content in: "
NOT_SHOWN = "the document's page is not shown: "


def is_red(colour):
    red, green, blue = colour
    return red > green + 60 and red > blue


def colours_in(pixels):
    """The rows of pixels, each pixel as (red, green, blue)."""
    content, step, row = pixels.get_pixels(), pixels.get_n_channels(), pixels.get_rowstride()
    places = [range(y * row, y * row + pixels.get_width() * step, step) for y in range(pixels.get_height())]
    return [[tuple(content[place : place + 3]) for place in line] for line in places]


class PagePreviewTest(DialogCase):
    def document(self, content, name="document.pdf"):
        path = self.temporary_folder() / name
        path.write_bytes(content)
        return path

    def shown(self, content, *options, side=None, margin=5, language="en"):
        """Shows the panel, switched on, with a document of this content and this margin on one side."""
        margins = dict.fromkeys(MARGINS.values(), 0) | ({MARGINS[side]: margin} if side else {})
        values = " ".join([f"{VALID}=On", *(f"{keyword}={value}" for keyword, value in margins.items())])
        dialog = self.dialog("-d", "Morva", "-o", values, *options, documents=(self.document(content),), LANG="C.UTF-8", LANGUAGE=language)
        dialog.page("Tandem Trim")
        return dialog

    def picture(self, dialog):
        """The node of the picture of the sheet; its name describes the picture to a screen reader."""
        return next((node for node in dialog.nodes() if node.role == "image" and "mm; " in node.name), None)

    def colours(self, dialog):
        """The rows of pixels in the picture."""
        path = self.temporary_folder() / "dialog.png"
        dialog.save_picture(path)
        left, top, width, height = dialog.program.place(self.picture(dialog))
        return colours_in(GdkPixbuf.Pixbuf.new_from_file(str(path)).new_subpixbuf(left, top, width, height))

    def red(self, dialog):
        """The centre of all red pixels in the picture, as (across, down) from 0 to 1; None without red."""
        rows = self.colours(dialog)
        places = [(x, y) for y, row in enumerate(rows) for x, colour in enumerate(row) if is_red(colour)]
        if not places:
            return None
        return tuple(sum(place[way] for place in places) / len(places) / size for way, size in enumerate((len(rows[0]), len(rows))))

    def see_red(self, dialog):
        return until(lambda: self.red(dialog), "the page in the picture")

    def test_the_picture_shows_the_page_with_its_margins_and_a_note_names_content_in_them(self):
        expected = {"Top": (0.5, 0.2), "Bottom": (0.5, 0.8), "Left": (0.4, 0.55), "Right": (0.6, 0.55)}
        for side, content in AT_SIDES.items():
            with self.subTest(side):
                dialog = self.shown(pages.pdf([content, IN_THE_MIDDLE]), side=side)
                note = dialog.says(NOTE)
                self.assertEqual(note, f"{NOTE}{side} Margin (up to 3 mm)")
                self.assertTrue(self.picture(dialog).name.endswith(f"; {note}"))
                across, down = self.see_red(dialog)
                self.assertEqual((across < 0.45, across > 0.55, down < 0.4, down > 0.7), tuple(s == side for s in ("Left", "Right", "Top", "Bottom")),
                                 f"{across}, {down}; about {expected[side]}")
                dialog.close()

    def test_the_note_changes_with_each_typed_digit(self):
        dialog = self.shown(pages.pdf([AT_SIDES["Left"]]), side="Left", margin=2)
        self.see_red(dialog)
        self.assertFalse(any(NOTE in label for label in dialog.labels()))
        dialog.go_to("Left Margin")
        dialog.keys("ctrl+a", "9")
        dialog.says(f"{NOTE}Left Margin (up to 7 mm)")
        dialog.keys("BackSpace", "1")
        until(lambda: not any(NOTE in label for label in dialog.labels()), "the end of the note")

    def test_content_is_noted_if_it_reaches_less_than_a_millimetre_into_a_margin_but_not_if_it_only_touches_it(self):
        dialog = self.shown(pages.pdf([bar(5, 5, 200, 287)]), side="Left")
        self.see_red(dialog)
        self.assertFalse(any(NOTE in label for label in dialog.labels()))
        dialog.close()
        self.shown(pages.pdf([bar(4.7, 5, 200, 287)]), side="Left").says(f"{NOTE}Left Margin (up to 1 mm)")

    def test_pages_are_turned_by_the_keyboard(self):
        dialog = self.shown(pages.pdf([AT_SIDES["Top"]], [AT_SIDES["Bottom"]], [AT_SIDES["Left"]]), side="Bottom")
        dialog.says("Page 1 of 3")
        self.assertFalse(dialog.find("push button", "Previous page").has(SENSITIVE))
        self.assertLess(self.see_red(dialog)[1], 0.4)
        dialog.click(dialog.find("push button", "Next page"))
        dialog.says("Page 2 of 3")
        dialog.says(f"{NOTE}Bottom Margin (up to 3 mm)")
        until(lambda: self.red(dialog)[1] > 0.7, "the second page")
        self.assertIn("; Page 2 of 3; ", self.picture(dialog).name)
        dialog.keys("space")
        dialog.says("Page 3 of 3")
        dialog.keys("shift+Tab", "space")
        dialog.says("Page 2 of 3")
        self.assertTrue(dialog.find("push button", "Next page").has(SENSITIVE))

    def choose_pages(self, dialog, ranges):
        dialog.page("General")
        dialog.check("Pages:")
        dialog.type(RANGES, ranges)
        dialog.page("Tandem Trim")

    def is_live(self, dialog):
        """Whether the button of the previous page and that of the next page can be used, as a list."""
        return [dialog.is_live("push button", name) for name in ("Previous page", "Next page")]

    def test_only_pages_that_are_printed_are_shown(self):
        content = pages.pdf(*[[AT_SIDES[side]] for side in ("Top", "Left", "Bottom", "Right", "Top")])
        choices = {"page-ranges=3": [3], "page-ranges=2-3,5": [2, 3, 5], "page-set=even": [2, 4], "page-ranges=2-5 page-set=odd": [3, 5]}
        for options, shown in choices.items():
            with self.subTest(options):
                dialog = self.shown(content, "-o", options, side="Bottom")
                for page in shown:
                    dialog.says(f"Page {page} of 5")
                    self.assertEqual(self.is_live(dialog), [page != shown[0], page != shown[-1]])
                    self.assertEqual([NOTE in label for label in dialog.labels()].count(True), page == 3)
                    if page != shown[-1]:
                        dialog.press("Next page")
                for page in reversed(shown[:-1]):
                    dialog.press("Previous page")
                    dialog.says(f"Page {page} of 5")
                dialog.close()

    def test_the_picture_follows_the_choice_of_pages(self):
        dialog = self.shown(pages.pdf([AT_SIDES["Top"]], [AT_SIDES["Bottom"]], [AT_SIDES["Left"]]), side="Bottom")
        dialog.says("Page 1 of 3")
        self.choose_pages(dialog, "2-3")
        dialog.says("Page 2 of 3")
        dialog.says(f"{NOTE}Bottom Margin (up to 3 mm)")
        self.choose_pages(dialog, "4-")
        until(lambda: not self.red(dialog), "lines for pages that the document does not have")
        self.assertFalse([label for label in dialog.labels() if " of 3" in label or NOTE in label])
        self.choose_pages(dialog, "3")
        dialog.says("Page 3 of 3")
        self.see_red(dialog)

    def test_pages_beyond_the_document_are_shown_as_lines_without_a_message(self):
        dialog = self.shown(pages.pdf([bar(0, 0, *A4)], []), "-o", "page-ranges=7")
        self.lines_for_a_while(dialog)
        self.choose_pages(dialog, "1")
        self.see_red(dialog)
        dialog.process.terminate()
        self.assertNotIn(NOT_SHOWN, dialog.ends()[2])

    def test_the_focus_stays_at_its_button_at_the_first_and_the_last_page(self):
        dialog = self.shown(pages.pdf([], [IN_THE_MIDDLE]))
        dialog.says("Page 1 of 2")
        dialog.click(dialog.find("push button", "Next page"))
        for name, number, turn, back in (("Next page", 2, "space", "shift+Tab"), ("Previous page", 1, "Return", "Tab")):
            with self.subTest(name):
                dialog.says(f"Page {number} of 2")
                until(lambda: self.is_grey(dialog, name), "the button to be grey")  # noqa: B023
                self.assertEqual(self.focused(dialog), name)
                # The keys have no effect on a grey button.
                dialog.keys(turn, turn)
                dialog.keys(back)
                until(lambda: self.focused(dialog) not in (None, name), "the other button")  # noqa: B023
                dialog.says(f"Page {number} of 2")
                dialog.keys("space")
        self.assertEqual(self.focused(dialog), "Next page")

    def is_grey(self, dialog, name):
        """Whether the button is greyed."""
        return not dialog.find("push button", name).has(SENSITIVE)

    def focused(self, dialog):
        """The name of the button with the focus; None if another control has it."""
        return next((node.name for node in dialog.nodes() if node.has(FOCUSED) and node.role == "push button"), None)

    def hears(self, dialog, act, *expected):
        """Calls `act`, waits until all of this is heard, and returns everything that was heard."""
        listener = Listener(dialog.program)
        said = set()
        act()
        until(lambda: said.update(listener.hears()) or all(is_heard(one, said) for one in expected), f"{expected} among {said}")
        return said

    def test_a_screen_reader_reads_page_and_note_when_a_page_is_turned(self):
        dialog = self.shown(pages.pdf([], [AT_SIDES["Bottom"]], []), side="Bottom")
        note = f"{NOTE}Bottom Margin (up to 3 mm)"
        dialog.says("Page 1 of 3")
        self.assertTrue(self.picture(dialog).name.endswith("; Page 1 of 3"), self.picture(dialog).name)
        dialog.click(dialog.find("push button", "Next page"))
        dialog.says(note)
        self.assertTrue(self.picture(dialog).name.endswith(f"; Page 2 of 3; {note}"), self.picture(dialog).name)
        for name in ("Previous page", "Next page"):
            self.assertEqual(dialog.find("push button", name).description, f"Page 2 of 3; {note}")
        turn = lambda: dialog.keys("space")  # noqa: E731
        self.hears(dialog, turn, ("description", "push button", words("Next page", "Page 3 of 3")))
        dialog.keys("shift+Tab")
        until(lambda: self.focused(dialog) == "Previous page", "the other button")
        self.hears(dialog, turn, ("description", "push button", words("Previous page", f"Page 2 of 3; {note}")))
        dialog.type("Bottom Margin", "4")
        until(lambda: dialog.find("push button", "Next page").description.endswith("(up to 2 mm)"), "the new depth")

    def test_a_screen_reader_reads_the_note_at_the_margin_that_causes_it(self):
        dialog = self.shown(pages.pdf([AT_SIDES["Left"]]), side="Left", margin=2)
        self.see_red(dialog)
        dialog.go_to("Left Margin")
        for digit, depth in (("9", 7), ("5", 3)):
            note = f"{NOTE}Left Margin (up to {depth} mm)"
            self.hears(dialog, lambda: dialog.keys("ctrl+a", digit), ("description", "spin button", words("Left Margin:", note)))  # noqa: B023
        dialog.go_to("Top Margin")
        self.hears(dialog, lambda: dialog.keys("ctrl+a", "3"), ("text", "spin button", words("Top Margin:", "3")))
        dialog.says(note)
        self.assertNotIn(NOTE, dialog.find("entry", "Top Margin").description)
        dialog.go_to("Left Margin")
        dialog.keys("ctrl+a", "1")
        until(lambda: NOTE not in dialog.find("entry", "Left Margin").description, "the end of the note")

    def test_a_screen_reader_reads_the_note_after_the_warning(self):
        dialog = self.shown(pages.pdf([AT_SIDES["Left"]]), side="Left", margin=18)
        self.see_red(dialog)
        dialog.go_to("Left Margin")
        lines = until(lambda: dialog.find("entry", "Left Margin").description, "a description").splitlines()
        self.assertEqual(["does not allow" in lines[0], lines[1:]], [True, [f"{NOTE}Left Margin (up to 16 mm)"]])

    def test_the_buttons_have_names_in_each_language(self):
        for language, previous, following, number in (("de", "Vorherige Seite", "Nächste Seite", "Seite 1 von 2"), ("ar", "الصفحة السابقة", "الصفحة التالية", "الصفحة 1 من 2")):
            with self.subTest(language):
                dialog = self.shown(pages.pdf([IN_THE_MIDDLE], []), language=language)
                dialog.says(number)
                places = [dialog.program.place(dialog.find("push button", name))[0] for name in (previous, following)]
                self.assertEqual(places[0] < places[1], language != "ar")
                dialog.close()

    def test_a_page_of_the_other_orientation_is_turned_as_the_printer_turns_it(self):
        # A bar 2 mm below the upper edge of a page that is wider than high.
        dialog = self.shown(pages.pdf([bar(128, 2, 40, 20)], size=A4[::-1]), side="Left")
        dialog.says(f"{NOTE}Left Margin (up to 3 mm)")
        self.assertLess(self.see_red(dialog)[0], 0.45)

    def left_of_print(self, record):
        """The width, in millimetres, of the empty strip at the left of the first sheet that the printer got."""
        picture = self.temporary_folder() / "printed"
        command = ["pdftoppm", "-png", "-singlefile", "-r", str(10 * 25.4), record.document, picture]
        subprocess.run(command, check=True)
        rows = colours_in(GdkPixbuf.Pixbuf.new_from_file(f"{picture}.png"))
        return min(x for row in rows for x, colour in enumerate(row) if is_red(colour)) / 10

    def test_pages_are_fitted_as_the_print_system_fits_them(self):
        # 10 mm are unprintable at the left, 20 at the right. Without a filter for PDF in the PPD, the print system lays out the pages.
        ppd = self.temporary_folder() / "fitting.ppd"
        left, bottom, right, top = (length * 72 / 25.4 for length in (10, 5, 190, 282))
        ppd.write_text(
            PPD.read_text()
            .replace('*ImageableArea A4/A4: "12 12 583 830"', f'*ImageableArea A4/A4: "{left} {bottom} {right} {top}"')
            .replace('*cupsFilter: "application/pdf 0 morvatandem"\n', "")
        )
        self.cups.add_queue("Morva", ppd)
        large, small = (297, 420), (100, 150)
        for sizes in ((large,), (small, large)):
            with self.subTest(sizes):
                dialog = self.shown(pages.pdf(*([bar(0, 0, *size)] for size in sizes), sizes=sizes), side="Left", margin=15)
                dialog.says(f"{NOTE}Left Margin (up to 5 mm)")
                self.assertLess(self.see_red(dialog)[0], 0.49)
                dialog.page("General")
                dialog.press("Print")
                self.assertAlmostEqual(self.left_of_print(self.printed(dialog)), 10, delta=0.3)

    def test_a_smaller_page_is_in_the_middle_of_its_paper(self):
        dialog = self.shown(pages.pdf([bar(0, 0, 100, 150)], size=(100, 150)), side="Left", margin=15)
        across, down = self.see_red(dialog)
        self.assertAlmostEqual(across, 0.5, delta=0.03)
        # The picture has space for an arrow above the paper.
        self.assertAlmostEqual(down, 0.54, delta=0.03)
        self.assertFalse(any(NOTE in label for label in dialog.labels()))

    def lines_only(self, dialog):
        """Asserts that the picture shows lines instead of a page."""
        self.assertIsNone(self.red(dialog))
        self.assertFalse([label for label in dialog.labels() if "Page 1" in label or NOTE in label])

    def lines_for_a_while(self, dialog):
        """Asserts that the picture shows lines, before and after the page has been read."""
        self.lines_only(dialog)
        # Gives the program time to read the page.
        dialog.page("Summary")
        dialog.page("Tandem Trim")
        self.lines_only(dialog)

    def test_layouts_that_the_picture_cannot_show_are_shown_as_lines(self):
        content = pages.pdf([bar(0, 0, *A4)], [])
        for options in (("-o", "number-up=2"), ("-o", "print-scaling=fill"), ("-o", "mirror=true"), ("-o", "nopdfAutorotate"), ("-o", "page-label=Draft")):
            with self.subTest(options):
                dialog = self.shown(content, *options, side="Left")
                self.lines_for_a_while(dialog)
                dialog.close()

    def test_layouts_by_the_queues_defaults_are_shown_as_lines(self):
        content = pages.pdf([bar(0, 0, *A4)], [])
        for default in ("print-scaling=fill", "print-scaling=none", "number-up=2", "mirror=true", "fit-to-page=true"):
            with self.subTest(default):
                self.cups.add_queue("Morva", PPD)
                self.run_command("lpadmin", "-p", "Morva", "-o", default.replace("=", "-default="))
                dialog = self.shown(content, side="Left")
                self.lines_for_a_while(dialog)
                dialog.close()
                self.cups.remove("Morva")

    def test_a_layout_by_the_ppds_defaults_is_shown_as_lines(self):
        choices = "".join(f'*MirrorPrint {choice}/{choice}: ""\n' for choice in ("True", "False"))
        mirror = f"*OpenUI *MirrorPrint/Mirrored: PickOne\n*DefaultMirrorPrint: True\n{choices}*CloseUI: *MirrorPrint\n"
        ppd = self.temporary_folder() / "mirror.ppd"
        ppd.write_text(PPD.read_text().replace("*OpenUI *PageSize", f"{mirror}*OpenUI *PageSize"))
        self.cups.add_queue("Morva", ppd)
        content = pages.pdf([bar(0, 0, *A4)], [])
        dialog = self.shown(content, side="Left")
        self.lines_for_a_while(dialog)
        dialog.close()
        self.see_red(self.shown(content, "-o", "MirrorPrint=False", side="Left"))

    def test_a_queues_default_layout_does_not_count_if_the_job_has_its_own(self):
        self.run_command("lpadmin", "-p", "Morva", "-o", "number-up-default=2")
        self.run_command("lpoptions", "-p", "Morva", "-o", "number-up=1")
        dialog = self.shown(pages.pdf([bar(0, 0, *A4)], []), side="Left")
        self.see_red(dialog)
        dialog.page("General")
        dialog.press("Print")
        self.assertEqual(self.printed(dialog).options["number-up"], "1")

    def test_the_picture_shows_lines_once_several_pages_per_side_are_chosen(self):
        dialog = self.shown(pages.pdf([bar(0, 0, *A4)], []), side="Left")
        self.see_red(dialog)
        dialog.page("Page Setup")
        dialog.choose_by_keys("Pages per side", "Down")
        dialog.page("Tandem Trim")
        until(lambda: not self.red(dialog), "lines for two pages on a sheet")
        self.lines_only(dialog)

    def test_with_an_invalid_choice_of_pages_the_picture_still_shows_lines(self):
        dialog = self.shown(pages.pdf([bar(0, 0, *A4)], []), "-o", "number-up=2", side="Left")
        dialog.page("General")
        dialog.check("Pages:")
        dialog.type("Specify one or more page ranges", "x")
        dialog.page("Tandem Trim")
        self.lines_only(dialog)

    def test_a_document_whose_pages_cannot_be_shown_is_printed_with_a_message(self):
        for content, reason in ((pages.locked(), "it needs a password"), (b"%PDF-1.5\nnothing", "it is not a PDF document that can be read")):
            with self.subTest(reason):
                dialog = self.shown(content)
                self.lines_only(dialog)
                dialog.page("General")
                dialog.press("Print")
                record = self.printed(dialog)
                self.assertEqual(record.size, len(content))
                self.assertEqual([line for line in dialog.said.splitlines() if NOT_SHOWN in line], [f"tandem-trim: {NOT_SHOWN}{reason}"])

    def test_several_documents_or_one_other_than_pdf_are_shown_as_lines_without_a_message(self):
        red = pages.pdf([bar(0, 0, *A4)])
        for documents in ((self.document(red), SAMPLE), (self.document(b"a text\n", "a.txt"),)):
            with self.subTest(documents):
                dialog = self.dialog("-d", "Morva", "-o", f"{VALID}=On", documents=documents)
                dialog.page("Tandem Trim")
                until(lambda: self.picture(dialog), "the picture")  # noqa: B023
                self.lines_only(dialog)
                dialog.process.terminate()
                self.assertNotIn(NOT_SHOWN, dialog.ends()[2])

    def test_a_page_that_takes_forever_to_render_does_not_delay_printing(self):
        dialog = self.shown(pages.slow_to_render())
        dialog.type("Top Margin", "7")
        dialog.press("Print")
        self.assertEqual(self.printed(dialog).options[MARGINS["Top"]], "7")

    def test_each_page_of_the_document_is_read_only_when_it_is_shown(self):
        prefix = self.temporary_folder() / "usr"
        subprocess.run(["cmake", "--install", BUILD, "--prefix", prefix], check=True, capture_output=True)
        (program,) = prefix.glob("lib/**/tandem-trim-page")
        real = program.rename(program.with_suffix(".real"))
        log = self.temporary_folder() / "log"
        program.write_text(f'#!/bin/sh\necho "$@" >>{log}\nexec {real} "$@"\n')
        program.chmod(0o755)
        dialog = self.dialog("-d", "Morva", "-o", f"{VALID}=On", program=prefix / "bin/tandem-trim", TANDEM_TRIM_PLUGIN_PATH="")
        dialog.wait_for_tab("Tandem Trim")
        dialog.page("Summary")
        self.assertFalse(log.exists())
        dialog.page("Tandem Trim")
        dialog.says("Page 1 of 3")
        dialog.press("Next page")
        dialog.says("Page 2 of 3")
        self.assertEqual([line.split()[0] for line in log.read_text().splitlines()], ["1", "2"])


if __name__ == "__main__":
    unittest.main()
