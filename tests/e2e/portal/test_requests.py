"""Programs' requests to the print backend and its answers, up to the printer's filter."""

import os
import pathlib
import random
import select
import signal
import subprocess
import unittest

import patience
from dialog_case import until
from gi.repository import GLib
from notifications import Desktop
from portal_case import parent_window, window_type
from portal_client import BUS, CANCELLED, DONE, FAILED, NAME, PLACE, Client, PortalCase, Shown, texts
from relay import WantsLogin
from screen_reader import SENSITIVE
from terminal_case import CHANGED, DEFAULTS, MARGINS, PPD, SAMPLE, VALID, digest, of_panel

RANGES = "Specify one or more page ranges"
A4 = {
    "PPDName": GLib.Variant("s", "A4"),
    "DisplayName": GLib.Variant("s", "A4"),
    "Width": GLib.Variant("d", 210.0),
    "Height": GLib.Variant("d", 297.0),
    "MarginTop": GLib.Variant("d", 6.35),
    "Orientation": GLib.Variant("s", "portrait"),
}
SETTINGS = ("n-copies", "collate", "reverse", "page-set", "number-up", "number-up-layout", "print-pages", "page-ranges", "scale", "printer")
SETTINGS += ("output-basename", "output-uri", "output-file-format", "cups-MVTopMargin", "")
PAGE_SETUP = ("PPDName", "DisplayName", "Width", "Height", "MarginTop", "Orientation")
OPTIONS = ("modal", "accept_label", "supported_output_file_formats", "has_current_page", "has_selected_pages", "token")
PARENTS = ("", "x11:", "x11:zzzz", "x11:ffffffffffffffff", "x11:12345", "wayland:", "wayland:abc", "a" * 100000)
IDLE = 10  # seconds until an idle backend ends
# The most sessions at a time. Each has a dialog, open or hidden, or gets one once its document is copied.
MOST_SESSIONS = 16
# Settings that keep a program from doing what the printer does.
NEUTRAL = {"n-copies": "1", "collate": "false", "reverse": "false", "page-set": "all", "number-up": "1"}


class RequestsTest(PortalCase):
    def test_a_programs_dialog_offers_the_users_presets(self):
        home = self.temporary_folder()
        around = {"XDG_CONFIG_HOME": str(home), "XDG_STATE_HOME": str(home)}
        self.trim("-d", "Morva", "--save-preset", "Booklet", "--set", "Valid=On", "--set", "Top=12", **around)
        self.start(**around)
        call = self.client.prepare()
        dialog = self.shown()
        dialog.page("Tandem Trim")
        dialog.click(dialog.find("push button", "Preset: None"))
        dialog.find("menu item", "Booklet")
        dialog.keys("Return")
        dialog.find("push button", "Preset: Booklet")
        dialog.press("Print")
        _, _, token = self.results_of(call)
        self.client.print(token=token).answer()
        self.assertEqual(of_panel(self.job().options), DEFAULTS | {VALID: "On", MARGINS["Top"]: "12"})

    def test_settings_are_kept_for_the_next_program_and_for_all_jobs_if_the_user_wants_that(self):
        home = self.temporary_folder()
        self.start(XDG_STATE_HOME=str(home))
        for title, kept in (("First", {}), ("Second", CHANGED)):
            call = self.client.prepare(title=title)
            dialog = self.shown(title)
            if title == "First":
                dialog.change_panel()
            else:
                dialog.page("Tandem Trim")
                dialog.check("Use for all my jobs")
            dialog.press("Print")
            _, _, token = self.results_of(call)
            self.assertEqual(self.client.print(token=token).answer(), (DONE, {}))
            self.cups.wait_for_jobs()
            self.assertEqual(of_panel(self.cups.records()[-1].options), CHANGED)
            self.assertEqual(of_panel(self.saved_options()), kept)

    def saved_options(self):
        """The user's saved options for the printer."""
        shown = subprocess.run(["lpoptions", "-p", "Morva"], env=self.environment(), capture_output=True, text=True, check=True).stdout
        return dict(word.partition("=")[::2] for word in shown.split())

    def test_a_notification_reports_the_outcome_of_a_programs_job(self):
        self.start()
        with Desktop(self.temporary_folder()) as desktop:
            _, _, token = self.chosen(settings=texts(output_basename="Letter"))
            self.client.print(token=token).answer()
            (shown,) = desktop.wait_for(1)
        self.assertEqual(shown["heading"], "Job 1 on Morva: all settings confirmed")
        self.assertEqual(shown["body"].splitlines()[0], "Letter")

    def set_up(self, dialog):
        """Chooses copies, pages, orientation, pages per side and the panel's values."""
        dialog.spin("Copies", "3")
        dialog.check("Pages:")
        dialog.type(RANGES, "1-2")
        dialog.page("Page Setup")
        dialog.choose_by_keys("Orientation", "Down")
        dialog.choose_by_keys("Pages per side", "Down")
        dialog.change_panel()

    def test_the_program_gets_the_layout_and_the_job_gets_all_other_options(self):
        self.start()
        call = self.client.prepare(page_setup=A4)
        dialog = self.shown()
        self.set_up(dialog)
        dialog.press("Print")
        settings, page_setup, token = self.results_of(call)
        layout = {"print-pages": "ranges", "page-ranges": "0-1", "scale": "100", "orientation": "landscape"}
        self.assertEqual(settings, NEUTRAL | layout | {"output-file-format": "pdf", "printer": "Morva"})
        self.assertEqual((page_setup["Width"], page_setup["Height"], page_setup["Orientation"]), (210.0, 297.0, "landscape"))
        until(dialog.is_gone, "the dialog to go")
        self.assertEqual(self.client.print(token=token).answer(), (DONE, {}))
        record = self.job()
        self.assertEqual((record.copies, record.sha256), (3, digest(SAMPLE)))
        self.assertEqual(of_panel(record.options), CHANGED)
        others = {keyword: value for keyword, value in record.options.items() if keyword not in CHANGED and not keyword.startswith("job-")}
        self.assertEqual(others.pop("Collate"), "true")
        self.assertEqual(others.pop("number-up"), "2")
        for keyword in ("page-ranges", "orientation-requested", "copies"):
            self.assertNotIn(keyword, others)

    def test_without_a_token_the_dialog_is_shown_first_and_the_job_gets_the_layout_too(self):
        self.start()
        call = self.client.print()
        dialog = self.shown()
        self.set_up(dialog)
        self.assertFalse(call.is_answered())
        dialog.press("Print")
        self.assertEqual(call.answer(), (DONE, {}))
        record = self.job()
        self.assertEqual((record.copies, record.sha256), (3, digest(SAMPLE)))
        self.assertEqual(of_panel(record.options), CHANGED)
        for keyword, value in {"page-ranges": "1-2", "orientation-requested": "4", "number-up": "2"}.items():
            self.assertEqual(record.options[keyword], value)

    def test_the_dialog_shows_the_documents_pages_only_if_it_has_the_document(self):
        self.start()
        call = self.client.print()
        dialog = self.shown()
        dialog.page("Tandem Trim")
        dialog.says("Page 1 of 3")
        dialog.press("Cancel")
        self.assertEqual(call.answer()[0], CANCELLED)
        self.client.prepare(page_setup=A4)
        dialog = self.shown()
        dialog.page("Tandem Trim")
        dialog.says("Top Margin:")
        self.assertFalse(any("Page 1" in label for label in dialog.labels()))

    def test_the_dialog_takes_the_programs_settings_except_those_of_the_panel(self):
        self.start()
        settings = texts(n_copies="2", reverse="true", print_pages="ranges", page_ranges="1,3-4", scale="75", cups_MVTopMargin="12")
        call = self.client.prepare(settings | {"collate": GLib.Variant("i", 1)}, A4 | {"Orientation": GLib.Variant("s", "landscape")})
        dialog = self.shown()
        self.assertEqual(dialog.text(RANGES), "2,4-5")
        dialog.press("Print")
        settings, page_setup, token = self.results_of(call)
        self.assertEqual((settings["page-ranges"], settings["scale"], page_setup["Orientation"]), ("1,3-4", "75", "landscape"))
        self.client.print(token=token).answer()
        record = self.job()
        self.assertEqual((record.copies, record.options["OutputOrder"]), (2, "Reverse"))
        self.assertEqual(of_panel(record.options), DEFAULTS)

    def test_cancel_is_reported_to_the_program_and_nothing_is_sent(self):
        self.start()
        for ask in (self.client.prepare, self.client.print):
            call = ask()
            dialog = self.shown()
            dialog.press("Cancel")
            self.assertEqual(call.answer(), (CANCELLED, {}))
            until(dialog.is_gone, "the dialog to go")
        self.assert_nothing_was_sent()

    def test_the_dialog_closes_when_its_program_withdraws_the_request_or_dies(self):
        self.start()
        for ask in (Client.prepare, Client.print):
            for end in ("close", "leave"):
                with self.subTest(ask.__name__, end=end):
                    client = Client()
                    call = ask(client)
                    dialog = self.shown()
                    if end == "close":
                        call.close()
                        self.assertEqual(call.answer(), (FAILED, {}))
                    else:
                        client.leave()
                    until(dialog.is_gone, "the dialog to go")
        self.assert_nothing_was_sent()

    def test_a_token_is_valid_once_and_only_for_its_program(self):
        self.start()
        _, _, token = self.chosen()
        strange = Client("org.example.Other").print(token=token)
        self.shown().press("Cancel")
        self.assertEqual(strange.answer(), (CANCELLED, {}))
        self.assertEqual(self.client.print(token=token).answer(), (DONE, {}))
        self.cups.wait_for_jobs()
        again = self.client.print(token=token)
        self.shown().press("Cancel")
        self.assertEqual(again.answer(), (CANCELLED, {}))
        self.assertEqual(len(self.cups.records()), 1)

    def test_for_a_late_document_the_dialog_reappears_with_its_settings(self):
        self.start("--ask-again-after", "0")
        call = self.client.prepare()
        dialog = self.shown()
        self.set_up(dialog)
        dialog.press("Print")
        _, _, token = self.results_of(call)
        until(dialog.is_gone, "the dialog to go")
        call = self.client.print(token=token)
        dialog = self.shown()
        self.assert_nothing_was_sent()
        self.assertFalse(call.is_answered())
        dialog.press("Print")
        self.assertEqual(call.answer(), (DONE, {}))
        record = self.job()
        self.assertEqual((record.copies, record.sha256, of_panel(record.options)), (3, digest(SAMPLE), CHANGED))

    def test_a_late_document_is_not_printed_if_the_user_cancels_or_its_program_leaves(self):
        self.start("--ask-again-after", "0")
        for end in ("Cancel", "leave"):
            with self.subTest(end):
                client = Client()
                _, _, token = self.results_of(self.prepare_and_press_print(client))
                call = client.print(token=token)
                dialog = self.shown()
                if end == "Cancel":
                    dialog.press(end)
                    self.assertEqual(call.answer(), (CANCELLED, {}))
                else:
                    client.leave()
                until(dialog.is_gone, "the dialog to go")
        self.assert_nothing_was_sent()

    def prepare_and_press_print(self, client, **more):
        """Requests a dialog, presses Print in it, and returns the call."""
        call = client.prepare(**more)
        self.shown().press("Print")
        return call

    def test_programs_that_never_send_their_documents_do_not_block_other_programs_dialogs(self):
        self.start()
        tokens = [self.chosen()[2] for _ in range(MOST_SESSIONS)]
        self.chosen()
        # The oldest session has ended.
        call = self.client.print(token=tokens[0])
        self.shown().press("Cancel")
        self.assertEqual(call.answer(), (CANCELLED, {}))
        self.assertEqual(self.client.print(token=tokens[-1]).answer(), (DONE, {}))

    def assert_invalid_after(self, program, token):
        """Ends the program's connection to the bus, and asserts that a document with the token then needs another dialog."""
        program.leave()
        call = self.client.print(token=token)
        self.shown().press("Cancel")
        self.assertEqual(call.answer(), (CANCELLED, {}))
        self.assert_nothing_was_sent()

    def test_a_token_is_invalid_once_its_program_has_left_the_bus(self):
        self.start()
        program = Client()
        _, _, token = self.results_of(self.prepare_and_press_print(program))
        self.assert_invalid_after(program, token)

    def test_a_token_is_invalid_once_the_program_behind_the_portal_has_left_the_bus(self):
        self.start()
        program = Client()
        handle = f"{PLACE}/request/{program.bus.get_unique_name()[1:].replace('.', '_')}/its_token"
        _, _, token = self.results_of(self.prepare_and_press_print(self.client, handle=handle))
        self.assert_invalid_after(program, token)

    def test_an_unknown_token_opens_the_dialog(self):
        self.start()
        for token in (0, 1):
            call = self.client.print(token=token)
            self.shown().press("Cancel")
            self.assertEqual(call.answer(), (CANCELLED, {}))

    def test_a_document_can_be_passed_as_a_pipe(self):
        self.start()
        _, _, token = self.chosen()
        reading, writing = os.pipe()
        call = self.client.print(reading, token)
        os.close(reading)
        with os.fdopen(writing, "wb") as pipe:
            pipe.write(SAMPLE.read_bytes())
        self.assertEqual(call.answer(), (DONE, {}))
        self.assertEqual(self.job().sha256, digest(SAMPLE))

    def test_an_endless_pipe_blocks_no_other_request_and_can_be_withdrawn(self):
        self.start()
        _, _, token = self.chosen()
        reading, writing = os.pipe()
        self.addCleanup(os.close, writing)
        call = self.client.print(reading, token)
        os.close(reading)
        os.write(writing, b"%PDF-1.4\n")
        other = self.client.prepare(title="Another")
        self.shown("Another").press("Cancel")
        self.assertEqual(other.answer(), (CANCELLED, {}))
        self.assertFalse(call.is_answered())
        call.close()
        self.assertEqual(call.answer(), (FAILED, {}))
        self.assert_nothing_was_sent()

    def test_a_folder_a_device_and_an_empty_file_are_refused_with_a_message(self):
        self.start()
        empty = self.temporary_folder() / "empty"
        empty.touch()
        for place, words in (("/", "neither a file nor a pipe"), ("/dev/zero", "neither a file nor a pipe"), (empty, "is empty")):
            with self.subTest(place):
                _, _, token = self.chosen()
                call = self.client.print(place, token)
                dialog = Shown(self.process, "Print")
                dialog.says(words)
                dialog.press("Close")
                self.assertEqual(call.answer(), (FAILED, {}))
                until(dialog.is_gone, "the dialog to go")
        self.assert_nothing_was_sent()

    def test_a_servers_refusal_is_shown_and_the_document_can_be_printed_once_the_cause_is_gone(self):
        self.start()
        call = self.client.prepare()
        dialog = self.shown()
        dialog.page("Tandem Trim")
        dialog.check("Use Tandem Trim")
        dialog.type("Top Margin", "12")
        dialog.press("Print")
        _, _, token = self.results_of(call)
        self.cups.add_queue("Morva", PPD, accepting=False)
        call = self.client.print(token=token)
        dialog = Shown(self.process, "Print")
        dialog.says("does not accept jobs")
        self.assertFalse(call.is_answered())
        self.cups.add_queue("Morva", PPD)
        dialog.press("Close")
        dialog.press("Print")
        self.assertEqual(call.answer(), (DONE, {}))
        record = self.job()
        self.assertEqual((record.options[MARGINS["Top"]], record.sha256), ("12", digest(SAMPLE)))
        until(dialog.is_gone, "the dialog to go")

    def test_a_refused_document_can_still_be_printed_after_its_program_has_ended(self):
        self.start()
        _, _, token = self.chosen()
        self.cups.add_queue("Morva", PPD, accepting=False)
        self.client.print(token=token)
        dialog = Shown(self.process, "Print")
        dialog.says("does not accept jobs")
        self.client.leave()
        self.client = Client()
        self.cups.add_queue("Morva", PPD)
        dialog.press("Close")
        dialog.press("Print")
        until(dialog.is_gone, "the dialog to go")
        self.assertEqual(self.job().sha256, digest(SAMPLE))

    def test_choosing_other_pages_is_refused_once_the_program_has_made_the_document(self):
        self.start()
        _, _, token = self.chosen()
        self.cups.add_queue("Morva", PPD, accepting=False)
        call = self.client.print(token=token)
        dialog = Shown(self.process, "Print")
        dialog.says("does not accept jobs")
        self.cups.add_queue("Morva", PPD)
        dialog.press("Close")
        until(lambda: len(dialog.program.windows()) == 1, "the message to go")
        dialog.check("Pages:")
        dialog.type(RANGES, "1")
        dialog.press("Print")
        dialog.says("has already laid out the document")
        dialog.press("Close")
        until(lambda: len(dialog.program.windows()) == 1, "the message to go")
        self.assert_nothing_was_sent()
        dialog.check("All Pages")
        dialog.press("Print")
        self.assertEqual(call.answer(), (DONE, {}))

    def test_print_to_file_saves_what_the_program_sends_in_the_chosen_format(self):
        self.start()
        folder = self.temporary_folder()
        for title, ending in (("PDF", "pdf"), ("PostScript", "ps"), ("SVG", "svg")):
            with self.subTest(title):
                call = self.client.prepare(texts(output_basename="drawing"))
                dialog = self.shown()
                dialog.check("Pages:")
                dialog.type(RANGES, "1")
                dialog.select_printer("Print to File")
                dialog.check(title)
                dialog.press("Print")
                settings, _, token = self.results_of(call)
                self.assertEqual((settings["output-file-format"], settings["page-ranges"]), (ending, "0"))
                content = {"pdf": b"%PDF-1.5\n", "ps": b"%!PS-Adobe-3.0\n", "svg": b'<?xml version="1.0"?>\n'}[ending]
                document = folder / "drawn"
                document.write_bytes(content)
                self.assertEqual(self.client.print(document, token).answer(), (DONE, {}))
                (saved,) = pathlib.Path(self.home()).rglob(f"*.{ending}")
                self.assertEqual(saved.read_bytes(), content)
                saved.unlink()
        self.assert_nothing_was_sent()

    def test_paper_and_orientation_can_be_chosen_for_a_file_until_the_program_lays_it_out(self):
        self.start()
        file = pathlib.Path(self.home()) / "drawing.pdf"
        call = self.client.prepare(texts(output_basename="drawing"), A4)
        dialog = self.shown()
        dialog.select_printer("Print to File")
        dialog.page("Page Setup")
        dialog.choose_by_keys("Paper size", "Down")
        dialog.choose_by_keys("Orientation", "Down")
        dialog.page("General")
        dialog.press("Print")
        settings, page_setup, token = self.results_of(call)
        self.assertEqual((settings["orientation"], page_setup["Orientation"]), ("landscape", "landscape"))
        self.assertNotEqual((page_setup["Width"], page_setup["Height"]), (210.0, 297.0))
        file.mkdir()
        call = self.client.print(token=token)
        dialog = Shown(self.process, "Print")
        dialog.press("Close")
        dialog.page("Page Setup")
        for row in ("Paper size", "Orientation"):
            self.assertFalse(dialog.look_past(row, "combo box").has(SENSITIVE), row)
        file.rmdir()
        dialog.press("Print")
        self.assertEqual(call.answer(), (DONE, {}))
        self.assertEqual(digest(file), digest(SAMPLE))

    def home(self):
        return self.cups.environment()["HOME"]

    def test_a_jobs_title_is_the_dialogs_title_or_the_documents_name_but_never_print(self):
        self.start()
        for settings, title, named in (
            ({}, "A letter", "A letter"),
            (texts(output_basename="letter.txt"), "Print", "letter.txt"),
            ({}, "Print", "Document"),
        ):
            with self.subTest(title, settings=settings):
                self.cups.forget()
                self.run_command("lpoptions", "-d", "Morva")
                call = self.client.prepare(settings, title=title)
                self.shown(title).press("Print")
                _, _, token = self.results_of(call)
                self.client.print(token=token, title=title).answer()
                self.assertEqual(self.job().title, named)

    def test_the_print_button_has_the_programs_label(self):
        self.start()
        call = self.client.prepare(accept_label=GLib.Variant("s", "_Send"))
        self.shown().press("Send")
        self.assertEqual(call.answer()[0], DONE)

    def test_two_dialogs_can_be_open_and_used_at_the_same_time(self):
        self.start()
        first, second = self.client.prepare(title="First"), Client("org.example.Other").prepare(title="Second")
        dialogs = [self.shown(title) for title in ("First", "Second")]
        for dialog, call in zip(dialogs, (first, second)):
            self.focus(dialog)
            dialog.keys("Escape")
            self.assertEqual(call.answer(), (CANCELLED, {}))

    def focus(self, dialog):
        """Gives a dialog the focus, as a window manager does."""
        subprocess.run(["xdotool", "search", "--name", f"^{dialog.title}$", "windowfocus", "--sync"], check=True)

    def test_without_a_screen_each_request_fails_with_a_message_and_a_backend_started_later_works(self):
        self.start(DISPLAY=":none")
        for ask in (self.client.prepare, self.client.print):
            self.assertEqual(ask().answer(), (FAILED, {}))
        self.assertIn("there is no screen to show the print dialog on", self.end_backend())
        self.start()
        self.chosen()

    def test_a_server_that_wants_a_login_gets_it_from_the_user_though_the_dialog_is_hidden(self):
        relay = WantsLogin(self.cups.address, "ann:Secret")
        self.enterContext(relay)
        self.start(CUPS_SERVER=relay.address, TANDEM_TRIM_TIMEOUT="5")
        _, _, token = self.chosen()
        call = self.client.print(token=token)
        question = Shown(self.process, "Log In")
        question.type("User name", "ann")
        question.type("Password", "Secret")
        question.press("Continue")
        self.assertEqual(call.answer(), (DONE, {}))
        self.assertEqual(self.job().sha256, digest(SAMPLE))

    def test_the_dialog_belongs_to_the_programs_window(self):
        self.start()
        call = self.client.prepare(parent="x11:abcdef")
        self.shown()
        window = subprocess.check_output(["xdotool", "search", "--name", "^Print$"], text=True).split()[-1]
        self.assertEqual(parent_window(int(window)), 0xABCDEF)
        self.assertEqual(window_type(int(window)), "_NET_WM_WINDOW_TYPE_DIALOG")
        call.close()

    def test_a_handle_that_is_in_use_is_refused(self):
        self.start()
        call = self.client.prepare()
        dialog = self.shown()
        self.assertEqual(self.client.prepare(handle=call.handle).answer(), (FAILED, {}))
        dialog.press("Cancel")
        self.assertEqual(call.answer(), (CANCELLED, {}))

    def test_the_backend_ends_when_idle_but_not_while_a_token_is_valid(self):
        self.start()
        _, _, token = self.chosen()
        # Longer than it would stay without a token.
        with self.assertRaises(subprocess.TimeoutExpired):
            self.process.wait(IDLE + 2)
        self.assertTrue(self.has_name())
        self.client.print(token=token).answer()
        self.assertEqual(self.process.wait(patience.PATIENCE), 0)

    def call_while_it_ends(self):
        """Makes a call that arrives exactly when the backend's idle time is over."""
        # Without privileges, its threads cannot restore the scheduling that is changed here, and GLib complains.
        self.expected = "Failed to set scheduler settings"
        # All threads share one processor, and the main thread, which counts the idle time, runs before the one that reads the bus.
        for thread in pathlib.Path(f"/proc/{self.process.pid}/task").iterdir():
            os.sched_setaffinity(int(thread.name), {min(os.sched_getaffinity(0))})
            if int(thread.name) != self.process.pid:
                os.sched_setscheduler(int(thread.name), os.SCHED_IDLE, os.sched_param(0))
        self.process.send_signal(signal.SIGSTOP)
        call = self.client.prepare()
        # When it wakes, its idle time is over and a request is waiting.
        with self.assertRaises(subprocess.TimeoutExpired):
            self.process.wait(IDLE + 2)
        self.process.send_signal(signal.SIGCONT)
        return call

    def test_a_request_that_arrives_while_the_backend_ends_is_answered(self):
        self.start()
        call = self.call_while_it_ends()
        self.shown().press("Print")
        _, _, token = self.results_of(call)
        self.assertEqual(self.client.print(token=token).answer(), (DONE, {}))
        self.assertEqual(self.process.wait(patience.PATIENCE), 0)

    def test_a_request_that_arrives_while_the_backend_ends_is_answered_even_if_another_process_has_its_name(self):
        self.start()
        other = Client()
        other.ask(*BUS, "RequestName", GLib.Variant("(su)", (NAME, 0)))
        call = self.call_while_it_ends()
        self.shown().press("Print")
        self.results_of(call)
        other.leave()

    def test_a_job_that_takes_long_shows_its_progress_and_can_be_cancelled(self):
        self.start(TANDEM_TRIM_TIMEOUT="5")
        _, _, token = self.chosen()
        self.cups.freeze()
        self.addCleanup(self.cups.thaw)
        call = self.client.print(token=token)
        dialog = Shown(self.process, "Print")
        until(lambda: dialog.look("progress bar", ""), "the progress")
        dialog.press("Cancel the job")
        until(dialog.is_gone, "the dialog to go")
        self.cups.thaw()
        self.assertEqual(call.answer(), (CANCELLED, {}))
        self.assert_nothing_was_sent()

    def test_a_frozen_server_blocks_no_request(self):
        self.start(TANDEM_TRIM_TIMEOUT="3600")
        _, _, token = self.chosen()
        self.cups.freeze()
        self.addCleanup(self.cups.thaw)
        sending = self.client.print(token=token)
        reading = self.client.prepare(title="Another")
        Shown(self.process, "Another")
        for call in (reading, sending):
            call.close()
            self.assertEqual(call.answer(), (FAILED, {}))
        self.cups.thaw()
        # The user has pressed Print, so the document is printed.
        until(self.cups.records, "the job")
        self.assertEqual(self.job().sha256, digest(SAMPLE))

    def test_a_backend_that_is_killed_leaves_no_file_and_the_next_print_works(self):
        reading, writing = os.pipe()
        self.addCleanup(os.close, reading)
        self.addCleanup(os.close, writing)
        folder = self.temporary_folder()
        for moment in ("dialog", "token", "copy"):
            with self.subTest(moment):
                self.start(TMPDIR=str(folder))
                if moment == "dialog":
                    call = self.client.prepare()
                    self.shown()
                else:
                    _, _, token = self.chosen()
                    call = self.client.print(reading, token) if moment == "copy" else None
                if moment == "copy":
                    os.write(writing, b"%PDF-1.4\n")
                    until(lambda: self.has_read(reading), "the beginning of the document to be read")
                self.process.kill()
                self.process.wait()
                self.process = None
                if call:
                    self.assertIsInstance(call.answer(), GLib.Error)
                self.assertEqual(list(folder.iterdir()), [])
        self.start()
        _, _, token = self.chosen()
        self.assertEqual(self.client.print(token=token).answer(), (DONE, {}))

    @staticmethod
    def has_read(pipe):
        return not select.select([pipe], [], [], 0)[0]

    def test_requests_with_random_contents_are_all_answered(self):
        self.start()
        chance = random.Random(20261122)
        for _ in range(40):
            settings, page_setup, options = (self.made_up(chance, keys) for keys in (SETTINGS, PAGE_SETUP, OPTIONS))
            title, parent = chance.choice(["", "Print", "%s%n<b>", "a" * 100000]), chance.choice(PARENTS)
            if chance.random() < 0.5:
                call = self.client.prepare(settings, page_setup, title, parent, **options)
            else:
                call = self.client.print(title=title, **options)
            until(self.windows, "a dialog")
            call.close()
            self.assertEqual(call.answer(), (FAILED, {}))
            until(lambda: not self.windows(), "the dialog to go")
        self.assert_nothing_was_sent()

    def made_up(self, chance, keys):
        """A dictionary with some of the keys and random values."""
        values = [
            GLib.Variant("s", chance.choice(["", "1", "-1", "99999999999999999999", "nan", "true", "0-1", "%s%s%n", "a" * 70000, "\x1b[31m"])),
            GLib.Variant("i", chance.randint(-(2**31), 2**31 - 1)),
            GLib.Variant("u", chance.randint(0, 2**32 - 1)),
            GLib.Variant("d", chance.choice([0.0, -1.0, 1e308, float("nan"), float("inf"), 210.0])),
            GLib.Variant("b", chance.random() < 0.5),
            GLib.Variant("as", ["pdf", "png"] * chance.randint(0, 3)),
            GLib.Variant("v", GLib.Variant("s", "deep")),
            GLib.Variant("a{sv}", {"n-copies": GLib.Variant("s", "3")}),
            GLib.Variant("ay", bytes(1000)),
        ]
        return {key: chance.choice(values) for key in keys if chance.random() < 0.7}


if __name__ == "__main__":
    unittest.main()
