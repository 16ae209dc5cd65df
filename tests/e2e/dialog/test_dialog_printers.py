"""The print dialog with printers that differ, refuse or are gone."""

import re
import signal
import unittest

from dialog_case import DialogCase, until
from relay import Holdup
from terminal_case import DEFAULTS, MARGINS, POSITION, PPD, SMALLER, VALID, of_panel

FILE = "Print to File"  # in GTK's list of printers
TINY = (SMALLER[0], SMALLER[1].replace("8", "3"))  # a limit below the default
GET_JOB_ATTRIBUTES = b"\x02\x00\x00\x09"  # the first bytes of such a request: version and operation
LARGE = 400_000_000  # bytes; takes a while to send


class DialogPrintersTest(DialogCase):
    def refused_at_print(self, dialog, words):
        """Presses Print, and asserts that a message with these words appears and the settings stay."""
        dialog.type("Top Margin", "11")
        dialog.press("Print")
        dialog.says(words)
        dialog.press("Close")
        self.assertEqual(dialog.text("Top Margin"), "11")
        until(lambda: dialog.is_live("push button", "Print"), "Print to be ready again")

    def in_the_middle_of_a_document(self, *arguments, seconds):
        """A dialog that is sending a large document to a server that no longer answers."""
        large = self.temporary_folder() / "large.txt"
        with large.open("wb") as document:
            document.truncate(LARGE)
        dialog = self.panel(*arguments, documents=[large], TANDEM_TRIM_TIMEOUT=str(seconds))
        dialog.find("spin button", "Top Margin")
        dialog.press("Print")
        until(lambda: self.cups.jobs("not-completed"), "the start of the job")
        self.cups.freeze()
        self.addCleanup(self.cups.thaw)
        return dialog

    def test_the_progress_is_a_bar_with_a_button_that_cancels_the_job(self):
        dialog = self.in_the_middle_of_a_document(seconds=600)

        def percent():
            # The text has the job's number once there is a job.
            return int(re.search(r"large\.txt(?: \(job 1\))?: (\d+) % of 400 MB", dialog.says("MB sent"))[1])

        # Enough to be visible on the bar.
        while (before := percent()) < 5:
            self.cups.thaw()
            until(lambda: percent() > before, "more of the document")  # noqa: B023
            self.cups.freeze()
        bar = dialog.find("progress bar", "large.txt (job 1)")
        until(lambda: percent() < 100 and abs(dialog.program.value(bar) * 100 - percent()) <= 1, "a bar that shows the percentage")
        cancel = dialog.find_live("push button", "Cancel the job")
        self.assertEqual(cancel.name, "Cancel the job")
        left, _, width, _ = dialog.program.place(bar)
        self.assertGreater(dialog.program.place(cancel)[0], left + width)
        dialog.program.press(cancel)
        self.cups.thaw()
        dialog.ends()
        self.assertEqual(self.cups.jobs("not-completed"), [])
        self.assertEqual(self.cups.records(), [])

    def test_a_job_does_not_begin_with_the_progress_of_the_one_before(self):
        dialog = self.in_the_middle_of_a_document(seconds=3)
        dialog.says("of 400 MB")
        dialog.says("did not answer")
        dialog.press("Close")
        until(lambda: dialog.is_live("push button", "Print"), "Print to be ready again")
        dialog.press("Print")
        dialog.says("Sending…")
        self.assertEqual(dialog.program.value(dialog.find("progress bar", "")), 0)
        dialog.says("The print server cannot be used at present")

    def test_a_value_that_the_printer_does_not_allow_is_shown_and_can_be_corrected(self):
        dialog = self.panel("-o", "MVTandemTrim=On MVLeftMargin=18")
        self.assertEqual(dialog.text("Left Margin"), "18")
        dialog.says("does not allow 18")
        dialog.press("Correct")
        until(lambda: dialog.text("Left Margin") == "15", "the nearest legal value")
        dialog.press("Print")
        self.assertEqual(of_panel(self.printed(dialog).options)[MARGINS["Left"]], "15")

    def test_the_warning_disappears_when_the_user_corrects_the_value(self):
        for wrong, mend in {
            f"{MARGINS['Left']}=18": lambda dialog: dialog.type("Left Margin", "10"),
            f"{POSITION}=Diagonal": lambda dialog: dialog.choose("Print Position", 1),
        }.items():
            with self.subTest(wrong):
                dialog = self.panel("-o", f"{VALID}=On {wrong}")
                dialog.says("does not allow")
                mend(dialog)
                until(lambda: not any("does not allow" in label for label in dialog.labels()), "the warning to go")
                dialog.press("Cancel")
                dialog.ends()

    def test_print_asks_about_a_value_that_the_printer_does_not_allow_and_can_send_it(self):
        dialog = self.panel("-o", "MVTandemTrim=On MVLeftMargin=18")
        dialog.press("Print")
        dialog.press("Print Anyway")
        self.assertEqual(of_panel(self.printed(dialog).options)[MARGINS["Left"]], "18")

    def test_enter_at_the_question_corrects_the_value(self):
        dialog = self.panel("-o", f"{MARGINS['Left']}=18")
        dialog.press("Print")
        until(lambda: len(dialog.program.windows()) == 2, "the question")
        dialog.keys("Return")
        self.assertEqual(of_panel(self.printed(dialog).options)[MARGINS["Left"]], "15")

    def test_choices_that_the_printer_does_not_have_stay_until_they_are_corrected(self):
        wrong = {VALID: "Maybe", POSITION: "Diagonal"}
        for answer, expected in (("Print Anyway", wrong), ("Correct", {VALID: "Off", POSITION: "Left"})):
            with self.subTest(answer):
                dialog = self.panel(*(f"-o{keyword}={value}" for keyword, value in wrong.items()))
                dialog.page("Summary")
                dialog.page("Tandem Trim")
                dialog.says("Diagonal")
                dialog.press("Print")
                dialog.answer(answer)
                options = of_panel(self.printed(dialog).options)
                self.assertEqual({keyword: options.get(keyword) for keyword in wrong}, expected)

    def constrained(self, *arguments):
        """The dialog for a printer whose PPD forbids trimming together with hot glue."""
        glue = "".join(f"*Glue {choice}/{choice}: \"\"\n" for choice in ("None", "Hot"))
        option = f"*OpenUI *Glue/Glue: PickOne\n*OrderDependency: 15 AnySetup *Glue\n*DefaultGlue: None\n{glue}*CloseUI: *Glue\n"
        constraints = f"*UIConstraints: *{VALID} On *Glue Hot\n*UIConstraints: *Glue Hot *{VALID} On\n"
        self.add_other(("*OpenGroup: TandemTrim", f"{option}{constraints}*OpenGroup: TandemTrim"))
        dialog = self.dialog("-d", "Other", "-o", "Glue=Hot", *arguments)
        dialog.page("Tandem Trim")
        dialog.check("Use Tandem Trim")
        dialog.says(self.CONFLICT)
        return dialog

    CONFLICT = "Use Tandem Trim (On) cannot be combined with Glue (Hot)"

    def test_a_conflict_is_shown_exactly_while_it_exists(self):
        dialog = self.constrained()
        self.assertFalse(dialog.shows("push button", "Correct"))
        dialog.check("Use Tandem Trim")
        until(lambda: not any(self.CONFLICT in label for label in dialog.labels()), "the warning to go")
        dialog.press("Print")
        self.assertEqual(of_panel(self.printed(dialog, "Other").options), DEFAULTS)

    def test_print_asks_about_a_conflict_and_can_send_it(self):
        dialog = self.constrained()
        for cancel in (lambda: dialog.answer("Cancel"), lambda: dialog.keys("Return")):
            dialog.press("Print")
            until(lambda: len(dialog.program.windows()) == 2, "the question")
            cancel()
            until(lambda: len(dialog.program.windows()) == 1, "the question to go")
            self.assert_nothing_was_sent()
        dialog.press("Print")
        dialog.answer("Print Anyway")
        options = self.printed(dialog, "Other").options
        self.assertEqual((options[VALID], options["Glue"]), ("On", "Hot"))

    def test_print_asks_only_once_about_a_conflict_and_a_value_that_it_corrects(self):
        dialog = self.constrained("-o", f"{MARGINS['Left']}=18")
        dialog.press("Print")
        dialog.answer("Correct")
        options = self.printed(dialog, "Other").options
        self.assertEqual((options[VALID], options["Glue"], options[MARGINS["Left"]]), ("On", "Hot", "15"))

    def warned_of(self, dialog):
        """The sides that the warning names since their margins leave nothing of the paper."""
        labels = "\n".join(dialog.labels())
        return {side for side in MARGINS if re.search(rf"{side} Margin \(\d+ mm\) cannot be combined with Paper size", labels)}

    def test_a_warning_names_the_sides_whose_margins_leave_nothing_of_the_paper(self):
        dialog = self.live_panel("-o", "media=custom_tiny_21x50mm", "-o", f"{MARGINS['Left']}=5 {MARGINS['Right']}=5")
        self.assertEqual(self.warned_of(dialog), set())
        for side, text, warned in (("Left", "15", set()), ("Right", "6", {"Left", "Right"}), ("Left", "5", set()),
                                   ("Right", "21", {"Right"}), ("Top", "20", {"Right"}), ("Bottom", "30", {"Top", "Bottom", "Right"})):
            with self.subTest(side=side, text=text):
                dialog.type(f"{side} Margin", text)
                until(lambda: self.warned_of(dialog) == warned, f"a warning about {warned}")
        dialog.press("Print")
        dialog.answer("Cancel")
        until(lambda: len(dialog.program.windows()) == 1, "the question to go")
        self.assert_nothing_was_sent()
        dialog.check("Use Tandem Trim")
        until(lambda: not self.warned_of(dialog), "the warning to go")
        dialog.press("Print")
        self.assertEqual(of_panel(self.printed(dialog).options)[MARGINS["Right"]], "21")

    def test_on_a_landscape_sheet_margins_count_at_the_edges_that_the_user_sees(self):
        dialog = self.live_panel("-o", "media=custom_tiny_21x50mm", "-o", f"landscape {MARGINS['Top']}=11 {MARGINS['Bottom']}=10")
        until(lambda: self.warned_of(dialog) == {"Top", "Bottom"}, "the warning")

    def test_the_user_can_cancel_the_question(self):
        dialog = self.panel("-o", f"{MARGINS['Left']}=18")
        dialog.press("Print")
        dialog.answer("Cancel")
        self.assertEqual(dialog.text("Left Margin"), "18")
        self.assert_nothing_was_sent()

    def test_a_default_beyond_the_limit_is_corrected_once_the_panel_is_switched_on(self):
        self.add_other(TINY)
        dialog = self.dialog("-d", "Other")
        dialog.page("Tandem Trim")
        self.assertEqual(dialog.text("Top Margin"), "5")
        self.assertFalse(any("does not allow" in label for label in dialog.labels()))
        dialog.check("Use Tandem Trim")
        until(lambda: dialog.text("Top Margin") == "3", "the nearest legal value")
        dialog.press("Print")
        options = of_panel(self.printed(dialog, "Other").options)
        self.assertEqual(options, DEFAULTS | {VALID: "On", MARGINS["Top"]: "3"})

    def test_a_default_beyond_the_limit_is_sent_unchanged_while_the_panel_is_off_and_is_not_saved(self):
        self.add_other(TINY)
        state = {"XDG_STATE_HOME": str(self.temporary_folder())}
        dialog = self.dialog("-d", "Other", **state)
        dialog.page("Tandem Trim")
        dialog.check("Use for all my jobs")
        dialog.press("Print")
        self.assertEqual(of_panel(self.printed(dialog, "Other").options), DEFAULTS)
        dialog = self.dialog("-d", "Other", **state)
        dialog.page("Tandem Trim")
        dialog.check("Use Tandem Trim")
        until(lambda: dialog.text("Top Margin") == "3", "the nearest legal value")

    def test_each_printer_has_its_own_defaults_and_edits(self):
        self.add_other(("*DefaultMVTopMargin: 5", "*DefaultMVTopMargin: 8"), ("*DefaultMVLeftMargin: 5", "*DefaultMVLeftMargin: 7"))
        self.run_command("lpadmin", "-p", "Morva", "-o", "MVTopMargin-default=6", "-o", "MVPrintPosition=Right")
        dialog = self.live_panel()
        self.assertEqual((dialog.text("Top Margin"), dialog.text("Left Margin")), ("6", "5"))
        dialog.type("Bottom Margin", "9")
        dialog.page("General")
        dialog.select_printer("Other")
        dialog.page("Tandem Trim")
        until(lambda: dialog.text("Top Margin") == "8", "the other printer's default")
        dialog.press("Print")
        options = of_panel(self.printed(dialog, "Other").options)
        changed = {MARGINS["Top"]: "8", MARGINS["Left"]: "7"}
        self.assertEqual(options, DEFAULTS | changed)

    def dialog_frozen_at_other(self):
        self.add_other(SMALLER)
        dialog = self.dialog("-d", "Morva", TANDEM_TRIM_TIMEOUT="60")
        self.freeze_at_other(dialog, lambda: self.see_limit(dialog, 8))
        return dialog

    def press_print_while_reading(self, dialog):
        dialog.press("Print")
        until(lambda: not dialog.is_live("push button", "Print"), "Print to wait for the details")

    def test_the_dialog_stays_usable_while_it_waits_for_a_server(self):
        dialog = self.dialog_frozen_at_other()
        dialog.page("Tandem Trim")
        dialog.says("details are being read")
        self.cups.thaw()
        dialog.says("(0 to 8)")

    def test_the_warning_about_a_printer_goes_as_soon_as_another_one_is_chosen(self):
        self.run_command("lpoptions", "-p", "Morva", "-o", f"{VALID}=On", "-o", f"{MARGINS['Left']}=18")
        self.add_other(SMALLER)
        dialog = self.panel(TANDEM_TRIM_TIMEOUT="60")
        dialog.says("does not allow 18")
        dialog.page("General")
        self.freeze_at_other(dialog, lambda: self.see_limit(dialog, 8))
        dialog.page("Tandem Trim")
        dialog.says("details are being read")
        self.assertFalse(any("does not allow" in label for label in dialog.labels()))
        self.assertFalse(dialog.shows("push button", "Correct"))
        self.cups.thaw()

    def test_a_printer_that_is_chosen_before_the_first_ones_details_are_read_stays_chosen(self):
        self.add_other(SMALLER)
        with Holdup(self.cups.address, b"GET /printers/Morva.ppd") as holdup:
            dialog = self.dialog("-d", "Morva", "-o", "MVTopMargin=7", CUPS_SERVER=holdup.address)
            dialog.select_printer("Other")
            holdup.release()
            self.see_limit(dialog, 8)
            dialog.press("Print")
            self.assertEqual(of_panel(self.printed(dialog, "Other").options)[MARGINS["Top"]], "7")

    def test_pages_that_are_chosen_before_the_first_printers_details_are_read_stay_chosen(self):
        with Holdup(self.cups.address, b"GET /printers/Morva.ppd") as holdup:
            dialog = self.dialog("-d", "Morva", "-n", "3", CUPS_SERVER=holdup.address)
            dialog.check("Pages:")
            dialog.type("Specify one or more page ranges", "2")
            holdup.release()
            self.see_limit(dialog, 20)
            dialog.press("Print")
            record = self.printed(dialog)
            self.assertEqual(record.options["page-ranges"], "2")
            self.assertEqual(record.copies, 3)

    def test_a_server_that_does_not_answer_from_the_start_is_reported_once_and_can_be_tried_again(self):
        self.cups.freeze()
        self.addCleanup(self.cups.thaw)
        dialog = self.dialog("-d", "Morva", "-o", "MVTopMargin=7", TANDEM_TRIM_TIMEOUT="1")
        for _ in range(2):
            dialog.says("The print server cannot be used at present")
            reports = [label for label in dialog.labels() if "127.0.0.1" in label]
            self.assertEqual(len(reports), 1, reports)
            self.assertEqual([tab.name for tab in dialog.tabs() if tab.name == "Printer Settings"], [])
            dialog.press("Try Again")
            until(lambda: not dialog.shows("push button", "Try Again"), "the notice to go")
        dialog.find("push button", "Try Again")
        self.cups.thaw()
        dialog.press("Try Again")
        dialog.page("Tandem Trim")
        self.assertEqual(dialog.text("Top Margin"), "7")
        dialog.press("Print")
        self.assertEqual(of_panel(self.printed(dialog).options)[MARGINS["Top"]], "7")

    def test_a_server_that_stops_answering_when_another_printer_is_chosen_can_be_tried_again(self):
        self.add_other(SMALLER)
        dialog = self.dialog("-d", "Morva", TANDEM_TRIM_TIMEOUT="1")
        self.freeze_at_other(dialog, lambda: self.see_limit(dialog, 8))
        dialog.find("push button", "Try Again")
        self.cups.thaw()
        dialog.press("Try Again")
        self.see_limit(dialog, 8)
        self.assertFalse(dialog.shows("push button", "Try Again"))

    def test_print_pressed_while_details_are_read_prints_once_they_are(self):
        dialog = self.dialog_frozen_at_other()
        self.press_print_while_reading(dialog)
        self.cups.thaw()
        self.assertEqual(of_panel(self.printed(dialog, "Other").options), DEFAULTS)

    def test_print_that_waits_for_details_is_cancelled_when_another_printer_is_chosen(self):
        dialog = self.dialog_frozen_at_other()
        self.press_print_while_reading(dialog)
        dialog.select_printer("Morva")
        until(lambda: dialog.is_live("push button", "Print"), "Print to be ready again")
        self.cups.thaw()
        self.see_limit(dialog, 20)
        self.assert_nothing_was_sent()

    def test_print_stays_grey_after_a_cancelled_wait_if_the_chosen_printer_accepts_no_jobs(self):
        self.run_command("cupsreject", "Morva")
        dialog = self.dialog_frozen_at_other()
        self.press_print_while_reading(dialog)
        dialog.select_printer("Morva")
        dialog.page("Tandem Trim")
        dialog.says("details are being read")
        self.assertFalse(dialog.is_live("push button", "Print"))

    def test_selecting_print_to_file_between_two_printers_hides_the_panel_without_a_message(self):
        self.add_other(SMALLER)
        dialog = self.live_panel()
        dialog.type("Top Margin", "7")
        dialog.page("General")
        dialog.select_printer(FILE)
        until(lambda: not dialog.has_tab("Tandem Trim"), "the panel to go")
        self.assertFalse(any("own settings are not available" in label for label in dialog.labels()))
        dialog.select_printer("Other")
        self.see_limit(dialog, 8)
        dialog.press("Print")
        self.assertEqual(of_panel(self.printed(dialog, "Other").options), DEFAULTS)

    def test_details_that_arrive_after_another_printer_is_chosen_are_ignored(self):
        dialog = self.dialog_frozen_at_other()
        dialog.select_printer(FILE)
        until(lambda: not dialog.has_tab("Tandem Trim"), "the page to go")
        requests = self.cups.folder / "access_log"

        def answered():
            return requests.read_text().count("GET /printers/Other.ppd")

        before = answered()
        self.cups.thaw()
        until(lambda: answered() > before, "the answer of the server")
        dialog.page("Page Setup")
        self.assertFalse(dialog.has_tab("Tandem Trim"))

    def test_print_that_waits_for_details_is_cancelled_if_the_panel_turns_out_to_be_missing(self):
        dialog = self.dialog_frozen_at_other()
        self.cups.ppd_of("Other").write_text("damaged")
        self.press_print_while_reading(dialog)
        self.cups.thaw()
        dialog.says("own settings are not available")
        until(lambda: dialog.is_live("push button", "Print"), "Print to be ready again")
        self.assert_nothing_was_sent()

    def test_a_stopped_queue_is_reported_and_print_stays_ready(self):
        self.addCleanup(self.run_command, "cupsenable", "Morva")
        self.run_command("cupsdisable", "Morva")
        dialog = self.live_panel()
        dialog.type("Top Margin", "11")
        dialog.press("Print")
        dialog.says("The printer is stopped. Choose another printer")
        dialog.press("Close")
        self.assert_nothing_was_sent()
        self.run_command("cupsenable", "Morva")
        dialog.press("Print")
        self.assertEqual(of_panel(self.printed(dialog).options)[MARGINS["Top"]], "11")

    def test_print_is_grey_for_a_rejecting_queue_until_it_accepts_again(self):
        self.addCleanup(self.run_command, "cupsaccept", "Morva")
        self.run_command("cupsreject", "Morva")
        dialog = self.live_panel()
        dialog.type("Top Margin", "11")
        self.assertFalse(dialog.is_live("push button", "Print"))
        self.run_command("cupsaccept", "Morva")
        dialog.press("Print")
        self.assertEqual(of_panel(self.printed(dialog).options)[MARGINS["Top"]], "11")

    def corrects_at(self, printer, nearest):
        """Chooses a printer with a saved margin that it does not allow, corrects it by the button and prints."""
        self.run_command("lpoptions", "-p", printer, "-o", f"{VALID}=On", "-o", f"{MARGINS['Top']}=14")
        dialog = self.live_panel()
        dialog.page("General")
        dialog.select_printer(printer)
        dialog.page("Tandem Trim")
        dialog.says("does not allow 14")
        dialog.says(f"(0 to {nearest})")
        self.assertEqual(dialog.text("Top Margin"), "14")
        dialog.press("Correct")
        until(lambda: dialog.text("Top Margin") == nearest, "the nearest legal value")
        dialog.press("Print")
        self.assertEqual(of_panel(self.printed(dialog, printer).options)[MARGINS["Top"]], nearest)

    def test_a_ppd_that_is_replaced_while_a_dialog_is_open_counts_for_the_next_dialog(self):
        dialog = self.live_panel()
        smaller = self.temporary_folder() / "smaller.ppd"
        smaller.write_text(PPD.read_text().replace(*SMALLER))
        self.cups.add_queue("Morva", smaller)
        dialog.type("Top Margin", "19")
        dialog.press("Print")
        self.assertEqual(of_panel(self.printed(dialog).options)[MARGINS["Top"]], "19")
        self.panel().says("does not allow 19")

    def test_another_printer_shows_its_own_limits(self):
        self.add_other(SMALLER)
        self.corrects_at("Other", "8")

    def test_a_printer_without_a_ppd_has_the_panels_own_limits(self):
        self.cups.add_queue("Raw")
        self.corrects_at("Raw", "10")

    def test_a_printer_without_the_panel_has_no_page_and_gets_none_of_its_options(self):
        self.add_other(("*APDialogExtension", "*%APDialogExtension"))
        dialog = self.live_panel()
        dialog.page("General")
        dialog.select_printer("Other")
        until(lambda: not dialog.shows("check box", "Use Tandem Trim"), "the panel to go")
        dialog.press("Print")
        self.assertEqual(of_panel(self.printed(dialog, "Other").options), {})
        self.assertIn("Other has no panel, since its PPD names none", dialog.said)

    def test_a_server_that_stops_answering_is_reported_and_print_stays_ready(self):
        dialog = self.live_panel(TANDEM_TRIM_TIMEOUT="1")
        dialog.type("Top Margin", "11")
        self.cups.freeze()
        self.addCleanup(self.cups.thaw)
        dialog.press("Print")
        dialog.says("127.0.0.1")
        dialog.press("Close")
        self.cups.thaw()
        dialog.press("Print")
        self.assertEqual(of_panel(self.printed(dialog).options)[MARGINS["Top"]], "11")

    def test_a_server_that_is_killed_is_reported_and_print_stays_ready(self):
        dialog = self.live_panel()
        dialog.find("spin button", "Top Margin")
        self.cups.kill()
        self.refused_at_print(dialog, "The print server cannot be used at present.")

    def test_a_printer_that_was_removed_is_reported_and_print_stays_ready(self):
        self.cups.add_queue("Other", PPD)
        dialog = self.live_panel()
        dialog.find("spin button", "Top Margin")
        self.cups.remove("Morva")
        self.refused_at_print(dialog, "The print server does not have this printer.")
        self.assert_nothing_was_sent()

    def test_a_format_that_is_not_supported_is_reported_and_print_stays_ready(self):
        dialog = self.live_panel("-o", "document-format=application/x-nothing")
        self.refused_at_print(dialog, "cannot print documents of this kind")
        self.assertEqual(self.cups.records(), [])

    def test_the_focus_returns_to_its_control_after_a_refused_job(self):
        dialog = self.live_panel("-o", "document-format=application/x-nothing")
        dialog.go_to("Top Margin")
        dialog.keys("ctrl+a", "1", "1", "Return")
        dialog.says("cannot print documents of this kind")
        dialog.press("Close")
        until(lambda: len(dialog.program.windows()) == 1, "the message to go")
        dialog.keys("ctrl+a", "1", "2")
        until(lambda: dialog.text("Top Margin") == "12", "the new text")

    def test_a_job_that_is_being_sent_can_be_cancelled(self):
        self.cups.add_queue("Other", PPD)
        for what, cancel in {
            "Cancel": lambda dialog: dialog.press("Cancel"),
            "Escape": lambda dialog: dialog.keys("Escape"),
        }.items():
            with self.subTest(what):
                dialog = self.in_the_middle_of_a_document(seconds=60)
                dialog.click_tab("General")
                dialog.select_printer("Other")
                until(lambda: not dialog.is_live("push button", "Print"), "Print to be greyed")
                cancel(dialog)
                until(lambda: not dialog.shows("push button", "Cancel"), "the dialog to go")
                self.cups.thaw()
                status, out, said = dialog.ends()
                self.assertEqual((status, out), (0, ""), said)
                self.assertEqual([line for line in said.splitlines() if "tandem-trim: " in line], ["tandem-trim: cancelled"])
                self.assertEqual(self.cups.jobs("not-completed"), [])
                self.assertEqual(self.cups.records(), [])

    def test_a_signal_closes_the_dialog_and_cancels_a_job_that_is_being_sent(self):
        dialog = self.in_the_middle_of_a_document(seconds=60)
        dialog.process.send_signal(signal.SIGINT)
        until(lambda: not dialog.shows("push button", "Cancel"), "the dialog to go")
        self.cups.thaw()
        status, out, said = dialog.ends()
        self.assertEqual((status, out), (128 + signal.SIGINT, ""), said)
        self.assertRegex(said, r"tandem-trim: interrupted; job \d+ on Morva was cancelled\n$")
        self.assertEqual((self.cups.jobs("not-completed"), self.cups.records()), ([], []))
        dialog = self.panel()
        dialog.process.send_signal(signal.SIGTERM)
        status, out, said = dialog.ends()
        self.assertEqual((status, out), (128 + signal.SIGTERM, ""), said)
        self.assertTrue(said.endswith("\ntandem-trim: terminated\n"), said)
        self.assertEqual(self.cups.jobs("not-completed"), [])

    def test_a_job_that_cannot_be_cancelled_is_named(self):
        dialog = self.in_the_middle_of_a_document(seconds=1)
        dialog.press("Cancel")
        dialog.says("may still be printed")
        dialog.press("Close")
        status, out, said = dialog.ends()
        self.assertEqual((status, out), (1, ""), said)
        self.assertRegex(said, r"job \d+ on Morva could not be cancelled and may still be printed")
        self.cups.thaw()
        self.cups.cancel_all()

    def test_a_job_that_is_cancelled_too_late_is_reported(self):
        with Holdup(self.cups.address, GET_JOB_ATTRIBUTES) as holdup:
            dialog = self.dialog("-d", "Morva", CUPS_SERVER=holdup.address)
            dialog.wait_for_tab("Tandem Trim")
            dialog.press("Print")
            until(holdup.reached.is_set, "the request about the job that was sent")
            dialog.press("Cancel")
            until(lambda: not dialog.shows("push button", "Cancel"), "the dialog to go")
            holdup.release()
            self.assertEqual(of_panel(self.printed(dialog).options), DEFAULTS)

    def test_a_server_that_stops_answering_in_the_middle_of_a_document_is_reported_and_print_stays_ready(self):
        dialog = self.in_the_middle_of_a_document(seconds=2)
        dialog.says("did not answer")
        dialog.press("Close")
        until(lambda: dialog.is_live("push button", "Print"), "Print to be ready again")

    def test_a_server_that_is_killed_in_the_middle_of_a_document_is_reported_and_print_stays_ready(self):
        dialog = self.in_the_middle_of_a_document("-o", "MVTandemTrim=On MVTopMargin=17", seconds=60)
        dialog.says("MB sent")
        self.cups.kill()
        dialog.says("127.0.0.1")
        dialog.press("Close")
        until(lambda: dialog.is_live("push button", "Print"), "Print to be ready again")
        self.assertEqual(dialog.text("Top Margin"), "17")


if __name__ == "__main__":
    unittest.main()
