"""Settings of the print dialog's own pages: they reach the printer's filter and the next dialog."""

import stat
import unittest

from dialog_case import RANGES, DialogCase, of_pages, until
from relay import Relay
from screen_reader import FOCUSED
from terminal_case import DEFAULTS, MARGINS, PPD, SAMPLE, SMALLER, of_panel

DUPLEX = """\
*OpenUI *Duplex/Two-Sided: PickOne
*OrderDependency: 15 AnySetup *Duplex
*DefaultDuplex: None
*Duplex None/Off: ""
*Duplex DuplexNoTumble/Long Edge: ""
*Duplex DuplexTumble/Short Edge: ""
*CloseUI: *Duplex

*OpenGroup: TandemTrim"""

GLUE = """\
*OpenGroup: ColorPage/Color
*OpenUI *Glue/Glue: PickOne
*OrderDependency: 15 AnySetup *Glue
*DefaultGlue: None
*Glue None/Off: ""
*Glue Hot/Hot: ""
*Glue Cold/Cold: ""
*CloseUI: *Glue
*CloseGroup: ColorPage

*OpenGroup: TandemTrim"""


OTHERS = {"number-up": "2", "OutputOrder": "Reverse", "PageSize": "A3", "landscape": "true", "x-note": "saved", "page-set": "all"}


class Restoring(Relay):
    """Another program that at once saves two pages per side again in this file."""

    def __init__(self, server, file):
        super().__init__(server, float("inf"), None)
        self._file = file

    def _on_request(self, piece):
        text = self._file.read_text()
        if "number-up" not in text:
            self._file.write_text(text.replace("\n", " number-up=2\n"))


class DialogPagesTest(DialogCase):
    def shown(self, *arguments, **variables):
        """Shows the dialog and waits until it knows the printer's details."""
        dialog = self.dialog("-d", "Morva", *arguments, **variables)
        dialog.wait_for_tab("Tandem Trim")
        until(lambda: dialog.is_live("spin button", "Copies"), "the printer")
        return dialog

    def set_up(self, dialog, **choices):
        dialog.page("Page Setup")
        for name, keys in choices.items():
            dialog.choose_by_keys(name, *keys)
        dialog.page("General")

    def sent(self, dialog):
        """Prints and returns the job's options that belong to the dialog's own pages."""
        dialog.press("Print")
        return of_pages(self.printed(dialog).options)

    def add_option(self, option):
        """Adds this option to Morva's PPD."""
        ppd = self.temporary_folder() / "more.ppd"
        ppd.write_text(PPD.read_text().replace("*OpenGroup: TandemTrim", option, 1))
        self.cups.add_queue("Morva", ppd)

    def test_a_job_without_changes_has_no_options_of_the_pages(self):
        self.assertEqual(self.sent(self.shown()), {})

    def test_each_row_of_the_page_setup_reaches_the_filter(self):
        rows = {
            ("Paper size", ("Down",)): {"PageSize": "A3"},
            ("Orientation", ("Down",)): {"orientation-requested": "4"},
            ("Orientation", ("Down", "Down")): {"orientation-requested": "6"},
            ("Orientation", ("Down", "Down", "Down")): {"orientation-requested": "5"},
            ("Pages per side", ("Down",)): {"number-up": "2"},
            ("Only print", ("Down",)): {"page-set": "even"},
            ("Two-sided", ("Down",)): {"Duplex": "DuplexNoTumble"},
        }
        self.add_option(DUPLEX)
        for (name, keys), expected in rows.items():
            with self.subTest(name, keys=keys):
                dialog = self.shown(XDG_STATE_HOME=str(self.temporary_folder()))
                self.set_up(dialog, **{name: keys})
                self.assertEqual(self.sent(dialog), expected | ({} if "Duplex" in expected else {"Duplex": "None"}))

    def test_copies_and_their_order_reach_the_filter(self):
        dialog = self.shown()
        dialog.check("Reverse")
        dialog.spin("Copies", "2")
        dialog.press("Print")
        record = self.printed(dialog)
        self.assertEqual(record.copies, 2)
        self.assertEqual(of_pages(record.options), {"OutputOrder": "Reverse", "Collate": "true"})

    def test_copies_need_not_be_collated(self):
        dialog = self.shown()
        dialog.spin("Copies", "3")
        until(lambda: dialog.is_live("check box", "Collate"), "Collate to be live")
        dialog.check("Collate")
        self.assertEqual(self.sent(dialog), {"Collate": "false"})

    def test_page_ranges_are_sent_in_ascending_order_and_each_page_once(self):
        for typed, sent in (("2", "2"), ("2,1", "1-2"), ("1-3,2", "1-3"), ("7,1-2", "1-2,7"), ("5-,2", "2,5-2147483647")):
            with self.subTest(typed):
                dialog = self.shown()
                dialog.check("Pages:")
                dialog.type(RANGES, typed)
                self.assertEqual(self.sent(dialog), {"page-ranges": sent})

    def test_print_is_refused_if_pages_are_chosen_but_not_named(self):
        dialog = self.shown()
        dialog.check("Pages:")
        dialog.press("Print")
        dialog.says("all pages")
        dialog.press("Close")
        self.assert_nothing_was_sent()
        dialog.type(RANGES, "1")
        self.assertEqual(self.sent(dialog), {"page-ranges": "1"})

    def refused(self, dialog, words):
        """Presses Print, and asserts that a message with these words appears, can be closed, and nothing is sent."""
        dialog.press("Print")
        dialog.says(words)
        dialog.press("Close")
        until(lambda: len(dialog.program.windows()) == 1, "the message to go")
        self.assert_nothing_was_sent()

    def refuses_invalid_page_ranges(self, **sent_otherwise):
        dialog = self.shown()
        dialog.check("Pages:")
        for typed in ("abc", "1,,2", "3-1", "2x", "0"):
            with self.subTest(typed):
                dialog.type(RANGES, typed)
                self.refused(dialog, f'"{typed}" is not a valid page range. Type page numbers such as 1-3,5')
        dialog.type(RANGES, "1 - 2; 4")
        self.assertEqual(self.sent(dialog), {"page-ranges": "1-2,4"} | sent_otherwise)

    def test_invalid_page_ranges_are_refused_with_an_explanation(self):
        self.refuses_invalid_page_ranges()

    def test_invalid_page_ranges_are_refused_even_if_a_paper_is_saved_for_all_users(self):
        (self.cups.folder / "home/lpoptions").write_text("Dest Morva PageSize=A3\n")
        self.refuses_invalid_page_ranges(PageSize="A3")

    def test_the_summary_takes_the_focus_once_and_a_screen_reader_reads_whole_rows(self):
        dialog = self.live_panel("-o", f"{MARGINS['Top']}=12")
        dialog.page("Summary")

        expected = [
            "Image Direction: Long-Edge Feed",
            "Print Position: Center",
            "Top Margin: 12",
            *(f"{side} Margin: 5" for side in ("Bottom", "Left", "Right")),
        ]

        def shows_rows():
            summary = dialog.look("list", "Summary")
            return summary and [node.name for node in summary.all() if node.role == "list item"] == expected

        until(shows_rows, "the rows")
        for _ in range(2):
            focused = until(lambda: [node for node in dialog.nodes() if node.has(FOCUSED)], "the focus")[0]
            if focused.role == "list":
                break
            dialog.keys("Tab")
            until(lambda: [node.path for node in dialog.nodes() if node.has(FOCUSED)] != [focused.path], "the next stop")  # noqa: B023
        self.assertEqual((focused.role, focused.description.splitlines()), ("list", expected))
        dialog.keys("Tab")
        until(lambda: dialog.find("push button", "Cancel").has(FOCUSED), "the stop after the summary")

    def test_the_summary_can_be_copied_by_keys_and_by_its_menu(self):
        dialog = self.live_panel("-o", f"{MARGINS['Top']}=12")

        def copied_by(copy):
            dialog.page("Summary")
            summary = dialog.find("list", "Summary")
            dialog.click(summary)
            until(lambda: dialog.find("list", "Summary").has(FOCUSED), "the focus in the summary")
            copy(summary)
            dialog.page("General")
            dialog.click(dialog.find_live("text", RANGES))
            dialog.keys("ctrl+a", "ctrl+v")
            return dialog.text(RANGES)

        def by_menu(_):
            dialog.keys("shift+F10")
            dialog.click(dialog.find("menu item", "Copy"))

        dialog.check("Pages:")
        for copy in (lambda _: dialog.keys("ctrl+c"), by_menu):
            with self.subTest(copy):
                dialog.type(RANGES, "")
                until(lambda: copied_by(copy).splitlines()[::2] == ["Image Direction: Long-Edge Feed", "Top Margin: 12", "Left Margin: 5"], "the copy")  # noqa: B023

    def test_the_summary_is_aligned_as_a_form(self):
        dialog = self.live_panel()
        dialog.page("Summary")
        list_ = dialog.find("list", "Summary")
        cells = [node for node in list_.all() if node.role == "label"]
        lefts = [dialog.program.place(cell)[0] for cell in cells]
        self.assertEqual((len(set(lefts[::2])), len(set(lefts[1::2]))), (1, 1))
        self.assertGreater(lefts[1], lefts[0])

    def test_an_invalid_time_is_refused_with_an_explanation(self):
        dialog = self.shown()
        dialog.page("Job")
        dialog.click(dialog.find("check box", "At:"))
        for typed in ("25:99", "abc", "indefinite", ""):
            with self.subTest(typed):
                dialog.click(dialog.find_live("text", "Specify the time of print"))
                dialog.keys("ctrl+a", "BackSpace", *("colon" if letter == ":" else letter for letter in typed))
                self.refused(dialog, f'"{typed}" is not a time of day. Type one such as 14:30')
        dialog.click(dialog.find("text", "Specify the time of print"))
        dialog.keys("ctrl+a", "2", "3", "colon", "5", "9")
        dialog.press("Print")
        self.assertEqual(dialog.ends()[0], 0)
        self.assertEqual(self.cups.jobs("not-completed"), [1])

    def test_the_pages_start_with_the_command_lines_options(self):
        self.add_option(DUPLEX)
        starts = {
            "PageSize=A3": {"PageSize": "A3"},
            "media=iso_a5_148x210mm": {"PageSize": "A5"},
            "media=a3,Upper": {"PageSize": "A3", "media": "Upper"},
            "landscape": {"orientation-requested": "4"},
            "orientation-requested=6": {"orientation-requested": "6"},
            "outputorder=reverse": {"OutputOrder": "Reverse"},
            "Copies=2 collate=false": {"Collate": "false"},
            "copies=x": {},
            "page-ranges=3,1": {"page-ranges": "1,3"},
            "page-set=odd": {"page-set": "odd"},
            "number-up=4": {"number-up": "4"},
            "sides=two-sided-short-edge": {"Duplex": "DuplexTumble"},
        }
        for option, expected in starts.items():
            with self.subTest(option):
                dialog = self.shown("-o", option, XDG_STATE_HOME=str(self.temporary_folder()))
                self.assertEqual(self.sent(dialog), {"Duplex": "None"} | expected)

    def test_changes_in_the_dialog_override_the_command_line(self):
        options = "COPIES=3 page-ranges=2 page-set=even landscape PageSize=A3 number-up=2 sides=two-sided-long-edge"
        self.add_option(DUPLEX)
        dialog = self.shown("-o", options)
        dialog.check("All Pages")
        dialog.spin("Copies", "1")
        first = dict.fromkeys(("Orientation", "Pages per side", "Only print", "Two-sided"), ("Home",))
        self.set_up(dialog, **first, **{"Paper size": ("Up",)})
        dialog.press("Print")
        record = self.printed(dialog)
        self.assertEqual(record.copies, 1)
        self.assertEqual(of_pages(record.options), {"Duplex": "None"})

    def test_an_option_of_the_command_line_is_sent_even_if_no_page_shows_it(self):
        self.assertEqual(self.sent(self.shown("-o", "sides=two-sided-long-edge")), {"sides": "two-sided-long-edge"})

    def test_choices_in_the_dialog_override_the_queues_defaults(self):
        self.run_command("lpadmin", "-p", "Morva", "-o", "number-up-default=2")
        dialog = self.shown()
        self.set_up(dialog, **{"Pages per side": ("Home",)})
        self.assertEqual(self.sent(dialog), {"number-up": "1"})

    def test_the_next_dialog_starts_with_the_last_page_setup_but_with_all_pages(self):
        state = self.temporary_folder()
        dialog = self.shown(XDG_STATE_HOME=str(state))
        dialog.check("Pages:")
        dialog.type(RANGES, "2")
        self.set_up(dialog, **{"Paper size": ("Down",), "Orientation": ("Down",)})
        self.assertEqual(
            self.sent(dialog), {"page-ranges": "2", "PageSize": "A3", "orientation-requested": "4"}
        )
        remembered = self.remembered_file(state)
        self.assertEqual(stat.S_IMODE(remembered.stat().st_mode), 0o600)
        self.assertEqual(stat.S_IMODE(remembered.parent.stat().st_mode), 0o700)
        dialog = self.shown(XDG_STATE_HOME=str(state))
        self.assertEqual(self.sent(dialog), {"PageSize": "A3", "orientation-requested": "4"})

    def test_the_last_jobs_settings_override_saved_ones(self):
        self.run_command("lpoptions", "-p", "Morva", "-o", "OutputOrder=Reverse", "-o", "MVTopMargin=7")
        state = {"XDG_STATE_HOME": str(self.temporary_folder())}
        dialog = self.live_panel(**state)
        dialog.type("Top Margin", "8")
        dialog.page("General")
        dialog.check("Reverse")
        dialog.press("Print")
        self.printed(dialog)
        dialog = self.panel(**state)
        self.assertEqual(dialog.text("Top Margin"), "8")
        dialog.page("General")
        self.assertFalse(dialog.is_checked("Reverse"))

    def test_a_choice_for_another_printer_overrides_the_command_line(self):
        self.add_other(SMALLER)
        self.run_command("lpoptions", "-p", "Morva", "-o", "number-up=2")
        dialog = self.shown("-o", "number-up=4")
        dialog.select_printer("Other")
        self.see_limit(dialog, 8)
        self.set_up(dialog, **{"Pages per side": ("Home", "Down")})
        dialog.press("Print")
        self.assertEqual(self.printed(dialog, "Other").options["number-up"], "2")

    def test_the_command_line_overrides_saved_options_in_any_letter_case(self):
        self.add_option(GLUE)
        self.run_command("lpoptions", "-p", "Morva", "-o", "Glue=Hot", "-o", "number-up=2")
        dialog = self.shown("-o", "glue=Cold number-up=4")
        shown = dialog.chosen("Color", "Glue"), dialog.chosen("Page Setup", "Pages per side")
        self.assertEqual(shown, ("Cold", "4"))
        dialog.press("Print")
        options = self.printed(dialog).options
        self.assertEqual((options.get("Glue"), options.get("number-up")), ("Cold", "4"))

    def test_without_a_default_printer_the_command_lines_options_apply_to_the_first_chosen_one(self):
        self.cups.add_queue("Other", PPD)
        dialog = self.dialog("-n", "3", "-o", "MVTandemTrim=On MVTopMargin=12 x-note=kept")
        dialog.says("There is no default printer")
        dialog.select_printer("Morva")
        dialog.page("Tandem Trim")
        until(lambda: dialog.text("Top Margin") == "12", "the margin")
        dialog.press("Print")
        record = self.printed(dialog)
        self.assertEqual(of_panel(record.options)[MARGINS["Top"]], "12")
        self.assertEqual((record.copies, record.options["x-note"]), (3, "kept"))

    def test_after_a_job_on_hold_the_next_one_is_not_on_hold(self):
        state = {"XDG_STATE_HOME": str(self.temporary_folder())}
        dialog = self.shown(**state)
        dialog.page("Job")
        dialog.click(dialog.find("check box", "On hold"))
        dialog.page("General")
        dialog.press("Print")
        self.assertEqual(dialog.ends()[0], 0)
        self.assertEqual(self.cups.jobs("not-completed"), [1])
        dialog = self.shown(**state)
        dialog.press("Print")
        self.assertEqual(dialog.ends()[0], 0)
        until(lambda: self.cups.jobs("not-completed") == [1], "the end of the second job")

    def test_a_title_that_the_server_would_lose_is_refused(self):
        dialog = self.shown("-t", "two\nlines")
        dialog.press("Print")
        dialog.says("title")
        dialog.press("Close")
        dialog.press("Cancel")
        dialog.ends()
        self.assert_nothing_was_sent()

    def test_an_instance_of_a_printer_has_its_own_saved_settings(self):
        self.run_command("lpoptions", "-p", "Morva/draft", "-o", "MVTandemTrim=On", "-o", "MVTopMargin=7")
        dialog = self.dialog("-d", "Morva/draft")
        dialog.page("Tandem Trim")
        self.assertEqual(dialog.text("Top Margin"), "7")
        dialog.type("Top Margin", "9")
        dialog.check("Use for all my jobs")
        dialog.press("Print")
        self.printed(dialog)
        (kept,) = (path.read_text() for path in (self.cups.folder / "home").rglob("lpoptions"))
        self.assertRegex(kept, r"Morva/draft .*MVTopMargin=9")
        self.assertNotIn("Dest Morva ", kept)

    def kept_for_all_jobs(self):
        kept = (self.cups.folder / "home/lpoptions", self.cups.folder / "home/.cups/lpoptions")
        lines = [line for path in kept if path.exists() for line in path.read_text().splitlines() if "Morva" in line]
        return dict(word.partition("=")[::2] for line in lines for word in line.split()[2:])

    def test_settings_for_all_jobs_do_not_include_those_of_a_single_job(self):
        dialog = self.shown("-o", "x-note=kept", "-n", "2")
        dialog.check("Pages:")
        dialog.type(RANGES, "1")
        dialog.page("Tandem Trim")
        dialog.check("Use Tandem Trim")
        dialog.type("Top Margin", "14")
        dialog.check("Use for all my jobs")
        self.sent(dialog)
        expected = DEFAULTS | {"MVTandemTrim": "On", MARGINS["Top"]: "14", "x-note": "kept"}
        self.assertEqual(self.kept_for_all_jobs(), expected)

    def keeps_the_queues_values(self, saved):
        """Saves OTHERS as the user's options in this file, then chooses the queue's own values for all jobs in a dialog.

        Returns the options that the dialog's job has of its pages, and all those of a later job by lp.
        """
        saved.parent.mkdir(exist_ok=True)
        saved.write_text(f"Dest Morva {' '.join(f'{keyword}={value}' for keyword, value in OTHERS.items())}\n")
        dialog = self.live_panel(XDG_STATE_HOME=str(self.temporary_folder()))
        dialog.check("Use for all my jobs")
        dialog.page("General")
        dialog.check("Reverse")
        self.set_up(dialog, **{"Pages per side": ("Home",), "Paper size": ("Up",), "Orientation": ("Home",)})
        options = self.sent(dialog)
        self.run_command("lp", "-d", "Morva", SAMPLE)
        self.cups.wait_for_jobs()
        return options, self.cups.records()[-1].options

    def test_settings_for_all_jobs_replace_those_that_the_user_saved_before(self):
        own = self.cups.folder / "home/.cups/lpoptions"
        options, later = self.keeps_the_queues_values(own)
        stays = {"x-note": "saved", "page-set": "all"}
        self.assertEqual((options, dict(later.items() & OTHERS.items())), ({}, stays))
        self.assertEqual(self.kept_for_all_jobs(), DEFAULTS | {"MVTandemTrim": "On"} | stays)

    def test_settings_for_all_jobs_override_those_that_the_administrator_saved_for_all_users(self):
        options, later = self.keeps_the_queues_values(self.cups.folder / "home/lpoptions")
        explicit = {"number-up": "1", "OutputOrder": "Normal", "PageSize": "A4", "orientation-requested": "3"}
        self.assertEqual(options, explicit)
        self.assertEqual({keyword: later[keyword] for keyword in explicit}, explicit)

    def test_saved_options_reach_the_filter_whether_a_page_shows_them_or_not(self):
        self.run_command("lpoptions", "-p", "Morva", "-o", "x-note=saved", "-o", "number-up=2")
        dialog = self.shown()
        dialog.press("Print")
        options = self.printed(dialog).options
        self.assertEqual((options.get("x-note"), options.get("number-up")), ("saved", "2"))

    def test_a_refused_job_changes_no_defaults(self):
        dialog = self.live_panel("-o", "document-format=application/x-nothing")
        dialog.check("Use for all my jobs")
        dialog.press("Print")
        dialog.says("application/x-nothing")
        dialog.press("Close")
        dialog.press("Cancel")
        dialog.ends()
        self.assertEqual(self.kept_for_all_jobs(), {})

    def test_a_saved_option_that_cannot_be_removed_is_reported(self):
        own = self.cups.folder / "home/.cups/lpoptions"
        own.parent.mkdir()
        own.write_text("Dest Morva number-up=2\n")
        state = {"XDG_STATE_HOME": str(self.temporary_folder())}
        with Restoring(self.cups.address, own) as relay:
            dialog = self.live_panel(CUPS_SERVER=relay.address, **state)
            dialog.check("Use for all my jobs")
            dialog.page("General")
            self.set_up(dialog, **{"Pages per side": ("Home",)})
            dialog.press("Print")
            dialog.says("its settings could not be kept for all your jobs")
            dialog.press("Close")
            status, _, said = dialog.ends()
        self.assertEqual(status, 0, said)
        self.assertIn("its settings were not saved for all jobs: the old default of number-up is still in use", said)

    def test_a_job_whose_settings_cannot_be_saved_is_printed_with_a_message(self):
        home = self.temporary_folder() / "file"
        home.write_text("no folder")
        dialog = self.live_panel(CUPS_SERVERROOT=str(home), HOME=str(home), XDG_STATE_HOME=str(self.temporary_folder()))
        dialog.check("Use for all my jobs")
        dialog.press("Print")
        dialog.says("its settings could not be kept for all your jobs")
        dialog.press("Close")
        status, out, said = dialog.ends()
        self.assertEqual(status, 0, said)
        self.assertRegex(out, "job 1 on Morva")
        self.assertRegex(said, "was sent, but its settings were not saved")
        self.cups.wait_for_jobs()
        self.assertEqual(of_panel(self.cups.records()[0].options)["MVTandemTrim"], "On")


if __name__ == "__main__":
    unittest.main()
