"""The print dialog's warnings and questions: what a user sees and hears of them."""

import unittest

import gi
import pages
from dialog_case import DialogCase, title_of, until
from terminal_case import DEFAULTS, MARGINS, POSITION, VALID, of_panel

gi.require_version("GdkPixbuf", "2.0")
from gi.repository import GdkPixbuf  # noqa: E402

NOT_ALLOWED = "does not allow"
READABLE = 4.5  # the smallest contrast of a readable text
COLOURED = 40  # the least difference between red, green and blue in a colour other than grey
THREE_WRONG = (f"{MARGINS['Left']}=18", f"{POSITION}=Diagonal", f"{MARGINS['Top']}=99")
SMALL_SCREEN = (1024, 600)


def brightness(colour):
    """The relative luminance of a colour."""
    parts = [part / 255 for part in colour]
    red, green, blue = [part / 12.92 if part <= 0.03928 else ((part + 0.055) / 1.055) ** 2.4 for part in parts]
    return 0.2126 * red + 0.7152 * green + 0.0722 * blue


def contrast(one, other):
    lighter, darker = sorted((brightness(one), brightness(other)), reverse=True)
    return (lighter + 0.05) / (darker + 0.05)


class DialogWarningsTest(DialogCase):
    def wrong_panel(self, *wrong, **variables):
        dialog = self.panel("-o", " ".join([f"{VALID}=On", *wrong]), **variables)
        dialog.says(NOT_ALLOWED)
        return dialog

    def row(self, dialog):
        return next((node for node in dialog.nodes() if node.role == "alert"), None)

    def sentences(self, node):
        return [inside.name for inside in node.all() if inside.role == "label"]

    def described(self, dialog, name):
        return dialog.find("entry", name).description

    def test_the_row_is_an_alert_with_a_sentence_for_each_value_and_an_icon(self):
        dialog = self.wrong_panel(*THREE_WRONG)
        row = until(lambda: self.row(dialog), "the row")
        sentences = [text for text in self.sentences(row) if text != "Correct"]
        self.assertEqual([text.partition(":")[0] for text in sentences], ["Print Position", "Top Margin", "Left Margin"])
        for text in sentences:
            self.assertIn(NOT_ALLOWED, text)
            self.assertNotIn("\n", text)
            self.assertIn(text, row.name)
        self.assertTrue(any(node.role == "image" for node in row.all()))

    def test_the_page_is_not_made_before_it_is_shown(self):
        dialog = self.dialog("-d", "Morva", "-o", " ".join([f"{VALID}=On", *THREE_WRONG]))
        dialog.wait_for_tab("Summary")
        # Waiting for the page has requested the objects of all pages, not only of the one in front; made() lists them.
        made = dialog.program.made()
        dialog.page("Tandem Trim")
        dialog.says(NOT_ALLOWED)
        inside = {"Use Tandem Trim", "Top Margin:", "Correct", "Help"}
        *_, (page, *rest) = ([*node.all()] for node in dialog.nodes() if inside <= {title_of(each) for each in node.all()})
        self.assertLess(len(rest), len(made))
        self.assertEqual([(node.role, title_of(node)) for node in rest if node.path in made], [])

    def is_whole(self, dialog, sentence, around):
        """Whether the whole sentence is within the node `around`."""
        _, top, _, height = dialog.program.place(sentence)
        _, top_around, _, height_around = dialog.program.place(around)
        return height > 0 and top >= top_around and top + height <= top_around + height_around

    def test_three_sentences_are_wholly_visible_in_the_row_and_in_the_question(self):
        for language in ("en", "de", "ar"):
            with self.subTest(language):
                dialog = self.dialog("-d", "Morva", "-o", " ".join([f"{VALID}=On", *THREE_WRONG]), LANG="C.UTF-8", LANGUAGE=language)
                dialog.page("Tandem Trim")
                row = until(lambda: self.row(dialog), "the row")  # noqa: B023
                dialog.keys("Return")
                for around in (row, self.question(dialog)):
                    lists = [node for node in around.all() if node.role == "scroll pane"]
                    self.assertEqual(len(lists), 1)
                    sentences = [node for node in lists[0].all() if node.role == "label"]
                    self.assertEqual(len(sentences), 3)
                    for sentence in sentences:
                        until(lambda: self.is_whole(dialog, sentence, lists[0]), f"{sentence.name!r} as a whole")  # noqa: B023
                dialog.close()

    def test_the_row_is_low_and_its_button_keeps_its_size(self):
        sizes = {}
        for wrong in (THREE_WRONG[:1], THREE_WRONG):
            dialog = self.wrong_panel(*wrong)
            button = dialog.find("push button", "Correct")
            sizes[wrong] = dialog.program.place(button)[2:]
            self.assertLess(dialog.program.place(self.row(dialog))[3], 4 * sizes[wrong][1])
            dialog.close()
        self.assertEqual(*sizes.values())

    def test_the_page_its_warning_and_the_summary_are_indented_like_gtks_own_pages(self):
        for language, summary, direction in (("en", "Summary", "Image Direction"), ("ar", "الملخص", "اتجاه الصورة")):
            with self.subTest(language):
                dialog = self.dialog("-d", "Morva", "-o", " ".join([f"{VALID}=On", *THREE_WRONG]), LANG="C.UTF-8", LANGUAGE=language)
                dialog.wait_for_tab("Tandem Trim")
                starts = {}
                for page, role, name in (
                    (self.of_gtk("Page Setup", language), "label", self.of_gtk("Layout", language)),
                    ("Tandem Trim", "label", f"{direction}:"),
                    ("Tandem Trim", "alert", ""),
                    (summary, "label", direction),
                ):
                    dialog.page(page)
                    node = dialog.find(role, name)
                    dialog.middle(node)
                    left, _, width, _ = dialog.program.place(node)
                    starts[page, role] = dialog.width() - left - width if language == "ar" else left
                self.assertEqual(len(set(starts.values())), 1, starts)
                dialog.close()

    def test_the_warning_is_readable_in_light_and_dark(self):
        for dark in (False, True):
            with self.subTest(dark=dark):
                dialog = self.wrong_panel(THREE_WRONG[0], GTK_THEME="Default:dark" if dark else "Default")
                path = self.temporary_folder() / "warning.png"
                dialog.save_picture(path)
                label = next(node for node in self.row(dialog).all() if node.role == "label" and NOT_ALLOWED in node.name)
                colours = self.colours(path, *dialog.program.place(label))
                ground = max(colours, key=colours.get)
                text = max(colours, key=lambda colour: contrast(colour, ground))
                self.assertGreaterEqual(contrast(text, ground), READABLE)
                self.assertNotEqual(max(text) - min(text), 0, "the text has no colour")
                self.assertEqual(brightness(ground) < brightness(text), dark)
                icon = next(node for node in self.row(dialog).all() if node.role == "image")
                drawn = self.colours(path, *dialog.program.place(icon))
                self.assertGreater(max(max(colour) - min(colour) for colour in drawn), COLOURED, "the icon is grey")
                dialog.close()

    def colours(self, path, left, top, width, height):
        """The number of pixels of each colour in a part of the picture."""
        picture = GdkPixbuf.Pixbuf.new_from_file(str(path)).new_subpixbuf(left, top, width, height)
        pixels, step, row = picture.get_pixels(), picture.get_n_channels(), picture.get_rowstride()
        counts = {}
        for y in range(height):
            for x in range(width):
                start = y * row + x * step
                colour = tuple(pixels[start : start + 3])
                counts[colour] = counts.get(colour, 0) + 1
        return counts

    def test_the_focused_control_has_the_warning_as_its_description_until_the_value_is_allowed(self):
        dialog = self.wrong_panel(THREE_WRONG[0])
        dialog.go_to("Left Margin")
        until(lambda: NOT_ALLOWED in self.described(dialog, "Left Margin"), "the warning at the control")
        self.assertNotIn(NOT_ALLOWED, self.described(dialog, "Top Margin"))
        dialog.keys("ctrl+a", "9")
        until(lambda: NOT_ALLOWED not in self.described(dialog, "Left Margin"), "the end of the warning")

    def test_a_new_warning_becomes_the_description_of_the_focused_control(self):
        dialog = self.live_panel("-o", "media=custom_tiny_21x50mm", "-o", f"{MARGINS['Right']}=5")
        dialog.go_to("Right Margin")
        dialog.keys("ctrl+a", "2", "1")
        until(lambda: "cannot be combined with Paper size" in self.described(dialog, "Right Margin"), "the warning at the control")

    def test_a_screen_reader_reads_a_menus_choice_before_the_warning(self):
        # An empty page causes no note, which would be in the description, too.
        document = self.temporary_folder() / "empty.pdf"
        document.write_bytes(pages.pdf([]))
        dialog = self.wrong_panel(THREE_WRONG[0], documents=(document,))
        dialog.click(dialog.find("combo box", "Print Position"))
        dialog.keys("Escape")

        def described():
            descriptions = [node.description for node in dialog.nodes() if node.role == "push button"]
            return next((text for text in descriptions if NOT_ALLOWED in text), None)

        self.assertRegex(until(described, "the warning at a control"), r"^Center\n")
        dialog.type("Left Margin", "9")
        until(lambda: not described(), "the end of the warning")
        self.assertIn("Center", [node.description for node in dialog.nodes() if node.role == "push button"])

    def drawn(self, dialog, node):
        """The attributes of a text, by the toolkit's names."""
        return dialog.program.ask(node.path, "Text", "GetDefaultAttributes")

    def question(self, dialog):
        """The window of the question."""
        until(lambda: len(dialog.program.windows()) == 2, "the question")
        return dialog.program.windows()[-1]

    def test_the_question_has_a_name_and_a_description_and_its_first_button_cancels(self):
        dialog = self.wrong_panel(*THREE_WRONG)
        dialog.press("Print")
        window = self.question(dialog)
        self.assertEqual(window.name, "The printer does not allow these settings")
        weights = {node.name: int(self.drawn(dialog, node)["weight"]) for node in window.all() if node.role == "label"}
        self.assertGreater(weights[window.name], weights["Cancel"], "the heading is not bold")
        sentences = [text for text in self.sentences(window) if NOT_ALLOWED in text and text != window.name]
        self.assertEqual(window.description.splitlines(), sentences[-3:])
        buttons = [node.name for node in window.all() if node.role == "push button"]
        self.assertEqual([name.replace("_", "").split()[0] for name in buttons], ["Cancel", "Print", "Correct"])

    def test_the_question_can_be_answered_by_the_keyboard(self):
        dialog = self.wrong_panel(*THREE_WRONG)
        dialog.go_to("Bottom Margin")
        dialog.keys("ctrl+a", "7", "Return")
        self.question(dialog)
        dialog.keys("Escape")
        until(lambda: len(dialog.program.windows()) == 1, "the end of the question")
        dialog.go_to("Bottom Margin")
        dialog.keys("ctrl+a", "8", "Return")
        self.question(dialog)
        self.assert_nothing_was_sent()
        dialog.keys("Return")
        corrected = {VALID: "On", POSITION: "Left", MARGINS["Top"]: "20", MARGINS["Bottom"]: "8", MARGINS["Left"]: "15"}
        self.assertEqual(of_panel(self.printed(dialog).options), DEFAULTS | corrected)

    def fits(self, dialog, window):
        """Asserts that the window is no larger than a small screen."""
        for size, most in zip(dialog.program.place(window)[2:], SMALL_SCREEN, strict=True):
            self.assertLessEqual(size, most)

    def test_the_dialog_is_no_larger_than_a_small_screen_with_three_warnings(self):
        for language in ("de", "ar"):
            with self.subTest(language):
                dialog = self.dialog("-d", "Morva", "-o", " ".join([f"{VALID}=On", *THREE_WRONG]), LANG="C.UTF-8", LANGUAGE=language)
                dialog.page("Tandem Trim")
                until(lambda: self.row(dialog), "the row")  # noqa: B023
                self.fits(dialog, dialog.window)
                dialog.close()

    def test_a_refusal_has_a_name_and_a_description(self):
        dialog = self.panel("-o", "document-format=application/x-nothing")
        dialog.press("Print")
        window = self.question(dialog)
        self.assertIn("cannot print documents of this kind", window.name)
        self.assertIn("application/x-nothing", window.description)

    def test_no_question_is_larger_than_a_small_screen(self):
        for language in ("de", "ar"):
            with self.subTest(language):
                dialog = self.dialog("-d", "Morva", "-o", " ".join([f"{VALID}=On", *THREE_WRONG, f"{POSITION}={'Diagonal' * 40}"]),
                                     LANG="C.UTF-8", LANGUAGE=language)
                dialog.page("Tandem Trim")
                dialog.keys("Return")
                window = self.question(dialog)
                self.fits(dialog, window)
                dialog.close()


if __name__ == "__main__":
    unittest.main()
