"""The print dialog as a user uses it, from the panel to the printer's filter."""

import unittest

import surroundings
from dialog_case import INSIDE, DialogCase, until
from terminal_case import CHANGED, DEFAULTS, MARGINS, POSITION, PPD, PROJECT, SAMPLE, VALID, digest, of_panel


# The warnings about a left margin of 18, a position and a switch that the printer does not allow.
WARNED = {
    "de": (
        "Linker Rand: Dieser Drucker erlaubt 18 nicht (erlaubt: 0 bis 15)",
        "Druckposition: Dieser Drucker erlaubt Diagonal nicht (erlaubt: Links, Mitte, Rechts)",
        "Tandem Trim verwenden: Dieser Drucker erlaubt Maybe nicht (erlaubt: Ein, Aus)",
    ),
    "ja": (
        "左余白：このプリンターでは 18 は使えません（使える値：0〜15）",
        "印刷位置：このプリンターでは Diagonal は使えません（使える値：左、中央、右）",
        "タンデムトリムを使用：このプリンターでは Maybe は使えません（使える値：オン、オフ）",
    ),
    "ar": (
        "الهامش الأيسر: لا تسمح هذه الطابعة بالقيمة 18 (المسموح: 0 إلى 15)",
        "موضع الطباعة: لا تسمح هذه الطابعة بالقيمة Diagonal (المسموح: يسار، وسط، يمين)",
        "استخدم Tandem Trim: لا تسمح هذه الطابعة بالقيمة Maybe (المسموح: تشغيل، إيقاف)",
    ),
}
# The names of the switch, the menus and the margins, in the order of the page.
SPOKEN = {
    "de": ("Tandem Trim verwenden", "Bildausrichtung", "Druckposition", "Oberer Rand", "Unterer Rand", "Linker Rand", "Rechter Rand"),
    "ja": ("タンデムトリムを使用", "画像の向き", "印刷位置", "上余白", "下余白", "左余白", "右余白"),
    "ar": (
        "استخدم Tandem Trim",
        "اتجاه الصورة",
        "موضع الطباعة",
        "الهامش العلوي",
        "الهامش السفلي",
        "الهامش الأيسر",
        "الهامش الأيمن",
    ),
}
# The titles in the summary, from top to bottom.
SUMMARY = ["Image Direction", "Print Position", "Top Margin", "Bottom Margin", "Left Margin", "Right Margin"]
FONTS = ("DejaVu Sans 11", "Cantarell 11", "Noto Sans 11")
LANGUAGES = sorted(path.stem.replace("-Hans", "_CN") for path in PROJECT.glob("resources/*.lproj"))
PAGES = dict.fromkeys(LANGUAGES, "Tandem Trim") | {"ja": "タンデムトリム", "ko": "탠덤 트림"}


class DialogTest(DialogCase):
    def test_settings_of_the_panel_reach_the_filter(self):
        dialog = self.panel()
        dialog.change_panel()
        dialog.press("Print")
        self.assertEqual(of_panel(self.printed(dialog).options), CHANGED)

    def test_a_job_has_the_panels_defaults_even_if_the_panel_was_never_shown(self):
        dialog = self.dialog("-d", "Morva")
        dialog.wait_for_tab("Tandem Trim")
        dialog.press("Print")
        self.assertEqual(of_panel(self.printed(dialog).options), DEFAULTS)

    def test_print_can_be_pressed_before_the_printers_details_are_read(self):
        dialog = self.dialog("-d", "Morva")
        dialog.press("Print")
        self.assertEqual(of_panel(self.printed(dialog).options), DEFAULTS)

    def test_nothing_typed_is_lost_when_print_follows_at_once(self):
        dialog = self.live_panel()
        x, y = dialog.middle(dialog.find("push button", "Print"))
        dialog.go_to("Top Margin")
        dialog.hands.press_quickly("ctrl+a", "1", "7")
        dialog.hands.click(x, y)
        self.assertEqual(of_panel(self.printed(dialog).options)[MARGINS["Top"]], "17")

    def test_enter_in_a_box_prints(self):
        dialog = self.live_panel()
        dialog.go_to("Left Margin")
        dialog.hands.press_quickly("ctrl+a", "9", "Return")
        self.assertEqual(of_panel(self.printed(dialog).options)[MARGINS["Left"]], "9")

    def test_enter_in_a_box_prints_with_the_buttons_in_a_header_bar_too(self):
        header = surroundings.fonts(self.temporary_folder() / "fonts", more="gtk-dialogs-use-header=true\n")
        dialog = self.live_panel(**header)
        dialog.go_to("Left Margin")
        dialog.keys("ctrl+a", "9", "Return")
        self.assertEqual(of_panel(self.printed(dialog).options)[MARGINS["Left"]], "9")

    def test_cancel_sends_nothing_and_remembers_nothing(self):
        dialog = self.live_panel()
        dialog.type("Top Margin", "13")
        dialog.press("Cancel")
        self.assertEqual(dialog.ends()[:2], (0, ""))
        self.assert_nothing_was_sent()
        dialog = self.panel()
        self.assertEqual(dialog.text("Top Margin"), "5")

    def test_the_panel_is_grey_until_it_is_switched_on(self):
        dialog = self.panel()
        for side in MARGINS:
            self.assertFalse(dialog.is_live("spin button", f"{side} Margin"))
        dialog.check("Use Tandem Trim")
        for side in MARGINS:
            until(lambda: dialog.is_live("spin button", f"{side} Margin"), f"{side} to be live")

    def test_a_margin_steps_while_a_button_is_held_and_stops_wherever_it_is_released(self):
        dialog = self.live_panel()
        left, top, width, height = dialog.program.place(dialog.find_live("spin button", "Top Margin"))
        box = dialog.middle(dialog.find_live("spin button", "Left Margin"))
        dialog.hands.hold(left + width - INSIDE, top + height // 2)
        until(lambda: int(dialog.text("Top Margin")) >= 5 + 2, "two steps")
        dialog.hands.move(*box)
        dialog.hands.release()
        dialog.spin("Left Margin", "9")
        until(lambda: dialog.text("Left Margin") == "9", "the keys after the release")
        stopped = dialog.text("Top Margin")
        for number in "34567":
            dialog.type("Left Margin", number)
        self.assertEqual(dialog.text("Top Margin"), stopped)
        dialog.press("Print")
        self.assertEqual(of_panel(self.printed(dialog).options)[MARGINS["Top"]], stopped)

    def test_the_button_restores_the_defaults(self):
        dialog = self.live_panel("-o", "MVTopMargin=9")
        self.assertEqual(dialog.text("Top Margin"), "9")
        dialog.press("Restore Defaults")
        until(lambda: dialog.text("Top Margin") == "5", "the default")
        dialog.press("Print")
        self.assertEqual(of_panel(self.printed(dialog).options), DEFAULTS | {"MVTandemTrim": "On"})

    def test_edits_stay_when_the_user_goes_to_another_page_and_back(self):
        dialog = self.live_panel()
        dialog.choose("Print Position", 2)
        dialog.type("Top Margin", "14")
        dialog.page("General")
        dialog.page("Tandem Trim")
        self.assertTrue(dialog.is_checked("Use Tandem Trim"))
        self.assertEqual(dialog.text("Top Margin"), "14")
        dialog.press("Print")
        options = of_panel(self.printed(dialog).options)
        self.assertEqual((options[POSITION], options[MARGINS["Top"]]), ("Right", "14"))

    def test_escape_closes_the_dialog_and_sends_nothing(self):
        dialog = self.live_panel()
        dialog.type("Top Margin", "14")
        dialog.keys("Escape")
        status, out, said = dialog.ends()
        self.assertEqual((status, out), (0, ""), said)
        self.assert_nothing_was_sent()

    def test_escape_in_a_box_closes_the_dialog_without_a_complaint_of_the_toolkit(self):
        for side in MARGINS:
            with self.subTest(side):
                dialog = self.live_panel()
                dialog.go_to(f"{side} Margin")
                dialog.keys("1", "Escape")
                status, out, said = dialog.ends()
                self.assertEqual((status, out), (0, ""), said)
                dialog.close()

    def test_the_summary_shows_an_edit(self):
        dialog = self.live_panel()
        dialog.type("Bottom Margin", "22")
        dialog.page("Summary")
        dialog.says("22")
        self.assertEqual([text for text in dialog.labels() if text in SUMMARY], SUMMARY)
        dialog.page("Tandem Trim")
        self.assertEqual(dialog.text("Bottom Margin"), "22")
        dialog.press("Print")
        self.assertEqual(of_panel(self.printed(dialog).options)[MARGINS["Bottom"]], "22")

    def test_the_summary_follows_the_page_that_it_summarizes(self):
        dialog = self.panel()
        left = {tab.name: dialog.program.place(tab)[0] for tab in dialog.tabs() if tab.role == "label"}
        pages = sorted(left, key=left.get)
        self.assertEqual(pages.index("Summary"), pages.index("Tandem Trim") + 1)

    def test_the_next_dialog_starts_with_the_last_jobs_settings(self):
        dialog = self.live_panel()
        dialog.type("Right Margin", "21")
        dialog.press("Print")
        self.printed(dialog)
        dialog = self.panel()
        self.assertTrue(dialog.is_checked("Use Tandem Trim"))
        self.assertEqual(dialog.text("Right Margin"), "21")
        dialog.press("Print")
        self.assertEqual(of_panel(self.printed(dialog).options)[MARGINS["Right"]], "21")

    def test_a_damaged_file_of_the_last_jobs_settings_is_renamed_and_reported(self):
        state = self.temporary_folder()
        remembered = self.remembered_file(state)
        remembered.parent.mkdir()
        remembered.write_bytes(b"[Tandem Trim\nMVTopMargin")
        dialog = self.panel(XDG_STATE_HOME=str(state))
        self.assertEqual(dialog.text("Top Margin"), "5")
        dialog.press("Cancel")
        _, _, said = dialog.ends()
        self.assertIn(remembered.name, said)
        self.assertTrue(remembered.with_name(remembered.name + ".damaged").exists())

    def test_settings_can_be_saved_for_all_jobs(self):
        dialog = self.live_panel()
        dialog.type("Top Margin", "18")
        dialog.check("Use for all my jobs")
        dialog.press("Print")
        self.printed(dialog)
        options = self.options_of()
        self.assertEqual(options[MARGINS["Top"]], "18")

    def test_settings_of_gtks_pages_reach_the_filter_too(self):
        dialog = self.dialog("-d", "Morva", "-o", "x-note=kept", "-n", "3")
        dialog.check("Pages:")
        dialog.type("Specify one or more page ranges", "2")
        dialog.press("Print")
        record = self.printed(dialog)
        self.assertEqual(record.options["page-ranges"], "2")
        self.assertEqual(record.options["x-note"], "kept")
        self.assertEqual(record.copies, 3)

    def test_the_dialog_is_in_the_users_language(self):
        names = {
            "de": ("Oberer Rand", "Für alle meine Aufträge verwenden"),
            "ar": ("الهامش العلوي", "استخدم لكل مهامي"),
            "ja": ("上余白", "すべてのジョブに使用"),
        }
        for language, (margin, check_box) in names.items():
            with self.subTest(language):
                dialog = self.dialog("-d", "Morva", LANG="C.UTF-8", LANGUAGE=language)
                dialog.page(PAGES[language])
                dialog.find("spin button", margin)
                dialog.find("check box", check_box)

    def test_warnings_of_what_the_printer_does_not_allow_are_in_the_users_language(self):
        wrong = ("-o", f"{MARGINS['Left']}=18", "-o", f"{POSITION}=Diagonal", "-o", f"{VALID}=Maybe")
        for language, warnings in WARNED.items():
            with self.subTest(language):
                dialog = self.dialog("-d", "Morva", *wrong, LANG="C.UTF-8", LANGUAGE=language)
                dialog.page(PAGES[language])
                for warning in warnings:
                    dialog.says(warning)
                dialog.close()

    def test_settings_reach_the_filter_unchanged_in_any_language(self):
        for language, (switch, direction, position, *margins) in SPOKEN.items():
            with self.subTest(language):
                state = str(self.temporary_folder())
                dialog = self.dialog("-d", "Morva", LANG="C.UTF-8", LANGUAGE=language, XDG_STATE_HOME=state)
                dialog.page(PAGES[language])
                dialog.check(switch)
                dialog.choose(direction, 1)
                dialog.choose(position, 0)
                for margin, text in zip(margins, ("12", "30", "0", "7")):
                    dialog.type(margin, text)
                dialog.go_to(margins[0])
                dialog.keys("Return")
                self.assertEqual(of_panel(self.printed(dialog).options), CHANGED)

    def test_a_refusal_is_shown_with_its_reason_in_the_users_language(self):
        self.run_command("cupsdisable", "-r", "out of blades", "Morva")
        for language, (message, fact) in {
            "de": (
                "Der Drucker ist angehalten. Wählen Sie einen anderen Drucker",
                "Morva ist angehalten. Meldung: »out of blades«.",
            ),
            "ja": ("プリンターは停止しています。", "Morva は停止しています。報告された内容：「out of blades」。"),
            "ar": ("الطابعة متوقفة.", "Morva متوقفة. نص الرسالة: «out of blades»."),
        }.items():
            with self.subTest(language):
                dialog = self.dialog("-d", "Morva", LANG="C.UTF-8", LANGUAGE=language)
                dialog.page(PAGES[language])
                dialog.click(dialog.find("check box", SPOKEN[language][0]))
                dialog.go_to(SPOKEN[language][3])
                dialog.keys("Return")
                dialog.says(message)
                dialog.says(fact)
                dialog.close()

    def test_a_sentence_that_begins_with_a_printers_name_is_read_from_the_right_in_arabic(self):
        right_to_left_mark = "\u200f"
        self.run_command("cupsdisable", "-r", "out of blades", "Morva")
        dialog = self.dialog("-d", "Morva", LANG="C.UTF-8", LANGUAGE="ar")
        dialog.wait_for_tab(PAGES["ar"])
        dialog.press("اطبع")
        self.assertEqual(dialog.says("Morva متوقفة")[:6], f"{right_to_left_mark}Morva")

    def test_the_dialog_is_no_wider_than_a_small_screen_in_any_language(self):
        for font in FONTS:
            fonts = surroundings.fonts(self.temporary_folder() / "fonts", font)
            for language in LANGUAGES:
                with self.subTest(font=font, language=language):
                    dialog = self.dialog("-d", "Morva", LANG="C.UTF-8", LANGUAGE=language, **fonts)
                    dialog.page(PAGES[language])
                    dialog.find("image", "210 × 297 mm")
                    self.assertLessEqual(dialog.width(), 760)
                    dialog.close()

    def test_the_panel_is_no_wider_than_gtks_pages_even_with_large_fonts(self):
        for font in ("DejaVu Sans 15", "Cantarell 17"):
            fonts = surroundings.fonts(self.temporary_folder() / "fonts", font)
            for language in ("de", "es", "zh_CN"):
                with self.subTest(font=font, language=language):
                    dialog = self.dialog("-d", "Morva", LANG="C.UTF-8", LANGUAGE=language, **fonts)
                    dialog.wait_for_tab(PAGES[language])
                    _, scale = (node for node in dialog.nodes() if node.role == "spin button")
                    dialog.page(self.of_gtk("Page Setup", language))
                    dialog.middle(scale)
                    width = dialog.width()
                    dialog.page(PAGES[language])
                    dialog.middle(dialog.find("image", "210 × 297 mm"))
                    self.assertEqual(dialog.width(), width)
                    dialog.close()

    def test_help_is_shown_in_the_users_language(self):
        languages = {
            "en": ("Help", "whole millimetres"),
            "de": ("Hilfe", "ganze Millimeter"),
            "ja": ("ヘルプ", "ミリメートル単位の整数"),
        }
        for language, (button, words) in languages.items():
            with self.subTest(language):
                dialog = self.dialog("-d", "Morva", LANG="C.UTF-8", LANGUAGE=language)
                dialog.page(PAGES[language])
                dialog.press(button)
                dialog.says(words)
                self.assertEqual(dialog.program.windows()[-1].name, PAGES[language])
                dialog.close()

    def test_an_option_that_the_server_drops_is_named(self):
        for job, close in enumerate((lambda: dialog.press("Close"), lambda: dialog.keys("Return"), lambda: dialog.keys("Escape")), 1):
            dialog = self.panel("-o", "job-media-sheets-completed=5")
            dialog.press("Print")
            dialog.says("did not accept all of its settings")
            dialog.says("has lost these settings: job-media-sheets-completed")
            close()
            status, out, said = dialog.ends()
            self.assertEqual((status, out), (1, f"request id is Morva-{job} (1 file(s))\n"))
            self.assertIn("lost: job-media-sheets-completed", said)

    def test_a_complaint_of_the_toolkit_fails_a_test(self):
        dialog = self.dialog("-d", "Morva", LC_ALL="xx_XX")
        with self.assertRaisesRegex(AssertionError, "Locale not supported"):
            dialog.close()

    def test_the_number_of_pages_per_side_reaches_the_filter(self):
        dialog = self.dialog("-d", "Morva", "-o", "number-up=2")
        dialog.wait_for_tab("Tandem Trim")
        dialog.press("Print")
        self.assertEqual(self.printed(dialog).options["number-up"], "2")

    def test_without_a_working_screen_the_program_prints_without_the_dialog(self):
        self.refuses("-d", "Morva", "--dialog", SAMPLE, DISPLAY=":none", words=["there is no screen", "--no-dialog"])
        result, (record,) = self.prints("-d", "Morva", SAMPLE, DISPLAY=":none")
        self.assertIn("there is no screen", result.stderr)
        self.assertEqual(of_panel(record.options), DEFAULTS)

    def test_each_setting_of_the_panel_is_shown_only_once(self):
        dialog = self.panel()
        dialog.find("spin button", "Top Margin")
        titles = [label for label in dialog.labels() if label.startswith("Top Margin")]
        self.assertEqual(titles, ["Top Margin:"])
        self.assertNotIn("Advanced", dialog.labels())

    def test_each_setting_of_the_panel_is_shown_only_once_even_if_the_ppd_translates_it(self):
        ppd = self.temporary_folder() / "translated.ppd"
        ppd.write_text(f'{PPD.read_text()}*cupsLanguages: "de"\n*de.Translation MVTopMargin/Rand oben: ""\n')
        self.cups.add_queue("Morva", ppd)
        german = surroundings.LANGUAGES["comma"] | {"LANG": "de_DE.UTF-8", "LANGUAGE": "de"}
        dialog = self.dialog("-d", "Morva", **german)
        dialog.page(PAGES["de"])
        dialog.find("spin button", "Oberer Rand")
        self.assertNotIn("Rand oben:", dialog.labels())

    def test_the_picture_has_the_size_of_the_paper(self):
        dialog = self.live_panel()
        dialog.find("image", "210 × 297 mm")
        dialog.page("Page Setup")
        dialog.choose_by_keys("Paper size", "Down")
        dialog.page("Tandem Trim")
        dialog.find("image", "297 × 420 mm")

    def test_the_picture_has_the_orientation_of_the_paper(self):
        dialog = self.live_panel("-o", "landscape")
        dialog.find("image", "297 × 210 mm")
        dialog.page("Page Setup")
        dialog.choose_by_keys("Orientation", "Home")
        dialog.page("Tandem Trim")
        dialog.find("image", "210 × 297 mm")

    def test_a_document_from_a_pipe_is_printed_completely(self):
        dialog = self.dialog("-d", "Morva", "--dialog", documents=["-"], content=SAMPLE.read_bytes())
        dialog.press("Print")
        self.assertEqual(self.printed(dialog).sha256, digest(SAMPLE))

    def test_documents_of_every_kind_that_the_printer_takes_arrive_unchanged(self):
        documents = self.documents_of_many_kinds()
        dialog = self.dialog("-d", "Any", documents=documents)
        dialog.press("Print")
        status, out, said = dialog.ends()
        self.assertEqual(status, 0, out + said)
        self.cups.wait_for_jobs()
        self.assertEqual([record.sha256 for record in self.cups.records()], [digest(document) for document in documents])

    def test_a_document_that_cannot_be_read_is_reported_in_the_dialog(self):
        missing = self.temporary_folder() / "missing.pdf"
        for close in (lambda: dialog.press("Close"), lambda: dialog.keys("Return"), lambda: dialog.keys("Escape")):
            dialog = self.dialog("-d", "Morva", documents=[missing])
            dialog.says("The document cannot be printed. Check it")
            dialog.says(f"{missing} cannot be read")
            close()
            status, out, said = dialog.ends()
            self.assertEqual((status, out), (1, ""))
            self.assertIn(f"{missing} cannot be read", said)


if __name__ == "__main__":
    unittest.main()
