"""Hostile programs: whatever they send is answered, takes little of the service's memory, and becomes neither markup nor a path."""

import os
import pathlib
import socket
import threading
import unittest

from dialog_case import until
from gi.repository import GLib
from portal_client import DONE, FAILED, NAME, PLACE, PRINT, REQUEST, SERVICE, Client, PortalCase, Shown, texts
from terminal_case import BUILD, SAMPLE, digest

MEBI = 1 << 20
MOST_SESSIONS = 16
# How much the service's memory may grow in a test; a text of a mebibyte is copied a few times.
MOST_GROWTH = 64 * MEBI
if os.environ.get("TANDEM_TRIM_SANITIZE"):
    MOST_GROWTH = float("inf")  # a sanitizer's own memory would count
HUGE = "x" * MEBI
# Makes the disk of temporary files seem small.
SMALL_DISK = BUILD / "tests/e2e/libsmall_disk.so"
ROOM = 66 * MEBI  # on that disk
ROOM_FOR_OTHERS = 64 * MEBI  # what the service leaves free there
# Markup, a format, a control character, a mark that reverses the writing direction, and a new line.
NASTY = "<b>&%s%n</b>\x1b[31m\u202eFDP\n.exe"
HARMLESS = "<b>&%s%n</b>\ufffd[31m\ufffdFDP\ufffd.exe"
SETTINGS = ("n-copies", "collate", "reverse", "page-set", "number-up", "number-up-layout", "page-ranges", "scale", "printer")
SETTINGS += ("output-basename", "output-uri", "output-dir", "output-file-format", "media-type", "cups-MVTopMargin", "")
PAGE_SETUP = ("PPDName", "DisplayName", "Name", "Orientation")


class HostileTest(PortalCase):
    def resident(self):
        """The service's memory in bytes."""
        status = pathlib.Path(f"/proc/{self.process.pid}/status").read_text()
        return int(status.split("VmRSS:")[1].split()[0]) * 1024

    def take_back(self, call):
        """Waits for the call's dialog, then withdraws the call."""
        until(self.windows, "a dialog")
        call.close()
        self.assertEqual(call.answer(), (FAILED, {}))
        until(lambda: not self.windows(), "the dialog to go")

    def assert_it_still_prints(self):
        _, _, token = self.chosen()
        self.assertEqual(self.client.print(token=token).answer(), (DONE, {}))
        self.assertEqual(self.job().sha256, digest(SAMPLE))

    def test_huge_arguments_are_answered_and_forgotten(self):
        self.start()
        self.take_back(self.client.prepare())
        before = self.resident()
        many = {f"key{number}": GLib.Variant("s", "value") for number in range(10_000)}
        formats = GLib.Variant("as", ["pdf"] * 100_000)
        in_application = Client(HUGE)
        self.addCleanup(in_application.leave)
        text = GLib.Variant("s", HUGE)
        for name, call in {
            "title": lambda: self.client.prepare(title=HUGE),
            "parent": lambda: self.client.prepare(parent="x11:" + HUGE),
            "handle": lambda: self.client.prepare(handle=f"{PLACE}/request/{HUGE}"),
            "application": in_application.prepare,
            "settings": lambda: self.client.prepare(dict.fromkeys(SETTINGS, text)),
            "page setup": lambda: self.client.prepare(page_setup=dict.fromkeys(PAGE_SETUP, text)),
            "keys": lambda: self.client.prepare({HUGE + str(number): text for number in range(3)}),
            "options": lambda: self.client.prepare(accept_label=text, supported_output_file_formats=formats),
            "many settings": lambda: self.client.prepare(many, many, **many),
            "many ranges": lambda: self.client.prepare(texts(print_pages="ranges", page_ranges="0-1," * 250_000 + "7")),
            "title of a document": lambda: self.client.print(title=HUGE, accept_label=text),
        }.items():
            with self.subTest(name):
                self.take_back(call())
        call = self.client.prepare(handle=f"{PLACE}/request/{HUGE}")
        self.assertEqual(self.client.prepare(handle=call.handle).answer(), (FAILED, {}))
        self.take_back(call)
        self.assertLess(self.resident() - before, MOST_GROWTH)
        # The journal must stay readable.
        self.assertLess(len(self.said.read_bytes()), len(HUGE) // 10)
        self.assert_it_still_prints()

    def test_markup_formats_and_direction_marks_in_texts_have_no_effect(self):
        self.start()
        call = self.client.prepare(texts(output_basename=NASTY), title=NASTY, accept_label=GLib.Variant("s", "<b>%s</b>"))
        dialog = self.shown(HARMLESS)
        dialog.press("<b>%s</b>")
        _, _, token = self.results_of(call)
        self.assertEqual(self.client.print(token=token, title=NASTY).answer(), (DONE, {}))
        self.assertEqual(self.job().title, HARMLESS)

    def test_a_documents_name_cannot_choose_another_folder(self):
        self.start()
        for name in ("..", "../../escaped", "%2e%2e%2fescaped", "~", "$HOME", "a\nb", "-rf"):
            with self.subTest(name):
                call = self.client.prepare(texts(output_basename=name, output_uri="file:///tmp/escaped.pdf", output_dir="/tmp"))
                dialog = self.shown()
                dialog.select_printer("Print to File")
                dialog.press("Print")
                _, _, token = self.results_of(call)
                self.assertEqual(self.client.print(token=token).answer(), (DONE, {}))
                home = pathlib.Path(self.cups.environment()["HOME"])
                (saved,) = home.rglob("*.pdf")
                self.assertEqual(saved.parent, home)
                saved.unlink()

    def test_a_hundred_requests_at_once_are_all_answered(self):
        for clients in (1, 100):
            with self.subTest(clients=clients):
                self.start()
                asking = [Client(f"org.example.Program{number}") for number in range(clients)]
                calls = [asking[number % clients].prepare() for number in range(100)]
                refused = until(lambda: self.answered(calls, 100 - MOST_SESSIONS), "the refusals")
                self.assertEqual([call.result for call in refused], [(FAILED, {})] * len(refused))
                open_calls = [call for call in calls if call not in refused]
                for call in open_calls:
                    call.close()
                    self.assertEqual(call.answer(), (FAILED, {}))
                until(lambda: not self.windows(), "the dialogs to go")
                for client in asking:
                    client.leave()
                self.assertIn("too many print dialogs", self.said.read_text())
                self.assert_it_still_prints()
                self.cups.forget()
                self.run_command("lpoptions", "-d", "Morva")
                self.end_backend()

    @staticmethod
    def answered(calls, number):
        """The answered calls, or false as long as there are fewer than `number`."""
        found = [call for call in calls if call.is_answered()]
        return len(found) >= number and found

    def test_only_the_program_that_made_a_request_can_withdraw_it_and_only_once(self):
        self.start()
        call = self.client.prepare()
        dialog = self.shown()
        other = Client()
        for client, handle in ((other, call.handle), (self.client, call.handle + "x"), (self.client, PLACE), (self.client, "/")):
            with self.assertRaisesRegex(GLib.Error, "UnknownObject"):
                client.ask(NAME, handle, REQUEST, "Close")
        other.leave()
        self.assertFalse(dialog.is_gone())
        self.assertFalse(call.is_answered())
        call.close()
        with self.assertRaisesRegex(GLib.Error, "UnknownObject"):
            call.close()
        self.assertEqual(call.answer(), (FAILED, {}))

    def test_a_call_with_wrong_arguments_is_an_error_at_once(self):
        self.start()
        other = GLib.Variant("(s)", ["x"])
        for path, interface, method, values in (
            (PLACE, PRINT, "PreparePrint", None),
            (PLACE, PRINT, "PreparePrint", other),
            (PLACE, PRINT, "Print", other),
            (PLACE, PRINT, "Print", GLib.Variant("(osssua{sv})", ("/a", "", "", "", 0, {}))),
            (PLACE, PRINT, "PrintAll", other),
            ("/", PRINT, "PreparePrint", None),
            (PLACE, "org.freedesktop.DBus.Properties", "Set", GLib.Variant("(ssv)", (PRINT, "version", GLib.Variant("u", 9)))),
            (PLACE, "org.freedesktop.DBus.Properties", "Get", GLib.Variant("(ss)", (PRINT, "none"))),
        ):
            with self.subTest(method, path=path), self.assertRaises(GLib.Error):
                self.client.ask(NAME, path, interface, method, values)
        self.assert_it_still_prints()

    def test_a_document_that_cannot_be_read_or_is_too_large_is_refused_with_a_message(self):
        sanitizer = os.environ.get("ASAN_OPTIONS", "") + ":verify_asan_link_order=0"
        # A backend that ignores the free space must not fill the real disk.
        bounded = "prlimit", f"--fsize={2 * ROOM}", SERVICE
        self.start_by(*bounded, LD_PRELOAD=str(SMALL_DISK), ASAN_OPTIONS=sanitizer)
        folder = self.temporary_folder()
        sparse = folder / "sparse"
        sparse.touch()
        os.truncate(sparse, 100 << 30)
        read_only, write_only = os.O_RDONLY, os.O_WRONLY
        stream, other_stream = socket.socketpair()
        self.addCleanup(stream.close)
        self.addCleanup(other_stream.close)
        no_document, not_kept = "neither a file nor a pipe", "No space left on device"
        before = self.resident()
        for name, opened, words in (
            ("folder", lambda: os.open(folder, read_only), no_document),
            ("socket", stream.fileno, no_document),
            ("zero", lambda: os.open("/dev/zero", read_only), no_document),
            ("full", lambda: os.open("/dev/full", os.O_RDWR), no_document),
            ("write only", lambda: os.open(folder / "new", write_only | os.O_CREAT), "cannot be read"),
            ("sparse", lambda: os.open(sparse, read_only), not_kept),
            ("endless", self.endless_pipe, not_kept),
        ):
            with self.subTest(name):
                file = opened()
                _, _, token = self.chosen()
                call = self.client.print(file, token)
                if file != stream.fileno():
                    os.close(file)
                dialog = Shown(self.process, "Print")
                dialog.says(words)
                dialog.press("Close")
                self.assertEqual(call.answer(), (FAILED, {}))
                until(dialog.is_gone, "the dialog to go")
        self.assertLess(self.resident() - before, MOST_GROWTH)
        self.assertLess(self.written, ROOM - ROOM_FOR_OTHERS + MEBI)
        self.assert_it_still_prints()

    def test_a_document_beyond_the_users_limit_of_file_sizes_is_refused_with_a_message(self):
        self.start_by("prlimit", f"--fsize={64 * MEBI}", SERVICE)
        document = self.temporary_folder() / "document"
        document.touch()
        os.truncate(document, 65 * MEBI)
        _, _, token = self.chosen()
        call = self.client.print(document, token)
        dialog = Shown(self.process, "Print")
        dialog.says("File too large")
        dialog.press("Close")
        self.assertEqual(call.answer(), (FAILED, {}))
        self.assert_it_still_prints()

    def endless_pipe(self):
        """The reading end of a pipe into which a thread writes forever; `written` counts the bytes."""
        reading, writing = os.pipe()
        self.written = 0

        def write():
            try:
                while True:
                    self.written += os.write(writing, b"x" * 65536)
            except BrokenPipeError:
                os.close(writing)

        writer = threading.Thread(target=write)
        writer.start()
        self.addCleanup(writer.join)
        return reading

    def test_a_call_without_its_descriptor_is_refused_with_a_message(self):
        self.start()
        for index in (0, 1, -1, 2**31 - 1):
            with self.subTest(index):
                call = self.client.call("Print", "sssha{sv}", ("", "", "Print", index, {}))
                dialog = Shown(self.process, "Print")
                dialog.says("the document cannot be read: Bad file descriptor")
                dialog.press("Close")
                self.assertEqual(call.answer(), (FAILED, {}))
                until(dialog.is_gone, "the dialog to go")


if __name__ == "__main__":
    unittest.main()
