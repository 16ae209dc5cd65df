"""A program, backend, bus or server that dies or freezes at any moment: nothing hangs or is left behind, and the next print works."""

import contextlib
import os
import select
import subprocess
import unittest

import patience
from dialog_case import until
from gi.repository import GLib
from portal_client import CANCELLED, DONE, FAILED, Client, PortalCase, Shown, own_bus
from relay import NEW_JOB, Holdup
from screen_reader import bus_address
from terminal_case import SAMPLE, digest

# The requests to the print server, each with bytes that only it contains: those before the user can choose, and those after Print.
TO_CHOOSE = {"list of printers": b"queued-job-count", "details": b"GET /printers/Morva.ppd"}
TO_PRINT = {"new job": NEW_JOB, "document": b"%PDF-", "confirmation": b"job-k-octets"}
# The requests at which the server already has the whole document.
WHOLE = ("confirmation",)
LARGE = 50_000_000  # bytes
SECONDS = "3600"  # the service's timeout for the server: longer than a test


def at_each(*moments):
    """Marks a test to run at each of these moments."""

    def note(test):
        test.moments = moments
        return test

    return note


def spread(case):
    """Replaces each test that at_each() marks by one test for each of its moments."""

    def at(test, moment):
        return lambda self: test(self, moment)

    for name, test in list(vars(case).items()):
        for moment in getattr(test, "moments", ()):
            setattr(case, f"{name}_at_the_{moment.replace(' ', '_')}", at(test, moment))
        if hasattr(test, "moments"):
            delattr(case, name)
    return case


@spread
class DeathsTest(PortalCase):
    def setUp(self):
        super().setUp()
        self.temporary = self.temporary_folder()
        self.addCleanup(lambda: self.assertEqual(list(self.temporary.iterdir()), []))

    def start_behind(self, relay, **variables):
        """Starts the backend with the test's folder for temporary files; it reaches the server through the relay."""
        self.start(CUPS_SERVER=relay.address, TANDEM_TRIM_TIMEOUT=SECONDS, TMPDIR=str(self.temporary), **variables)

    @contextlib.contextmanager
    def stopped_at(self, moment, document=SAMPLE, **variables):
        """Prints this document and blocks the request of this moment; yields the relay and the program's call."""
        words = (TO_CHOOSE | TO_PRINT)[moment]
        with Holdup(self.cups.address, words) as relay:
            self.start_behind(relay, **variables)
            if moment in TO_CHOOSE:
                call = self.client.prepare()
                self.assertTrue(relay.reached.wait(patience.PATIENCE), moment)
                Shown(self.process, "Print")
            else:
                _, _, token = self.chosen()
                call = self.client.print(document, token)
                self.assertTrue(relay.reached.wait(patience.PATIENCE), moment)
            yield relay, call

    def large_document(self):
        """A document that is larger than a connection's buffers."""
        document = self.temporary_folder() / "large.pdf"
        with open(document, "wb") as file:
            file.write(b"%PDF-1.4\n")
            file.truncate(LARGE)
        return document

    def assert_it_prints(self, after=0):
        """Asserts that the sample is printed, and that the queue, which prints in order, has printed only `after` copies of it before."""
        _, _, token = self.chosen()
        self.assertEqual(self.client.print(token=token).answer(), (DONE, {}))
        number = max(self.cups.jobs())
        # Not wait_for_jobs(): CUPS keeps a job that still lacks its document for a long time.
        until(lambda: any(record.job == number for record in self.cups.records()), "the record of the job")
        self.assertEqual([record.sha256 for record in self.cups.records()], [digest(SAMPLE)] * (after + 1))

    @at_each(*TO_CHOOSE, *TO_PRINT)
    def test_a_withdrawn_request_is_answered_at_once_though_the_server_does_not_answer(self, moment):
        with self.stopped_at(moment) as (relay, call):
            call.close()
            self.assertEqual(call.answer(), (FAILED, {}))
            relay.release()
            if moment in TO_PRINT:
                # The user has pressed Print, so the document is printed.
                until(self.cups.records, "the job")
                self.assertEqual(self.job().sha256, digest(SAMPLE))
            self.assert_it_prints(after=1 if moment in TO_PRINT else 0)

    @at_each(*TO_CHOOSE)
    def test_a_user_can_cancel_though_the_server_does_not_answer(self, moment):
        with self.stopped_at(moment) as (relay, call):
            dialog = Shown(self.process, "Print")
            dialog.press("Cancel")
            self.assertEqual(call.answer(), (CANCELLED, {}))
            relay.release()
            self.assert_it_prints()

    @at_each(*TO_CHOOSE, *TO_PRINT)
    def test_a_backend_that_is_killed_leaves_no_file_and_no_half_job(self, moment):
        # The system buffers a small document completely, and sends it even after the program's end.
        document = self.large_document() if moment == "document" else SAMPLE
        with self.stopped_at(moment, document) as (relay, call):
            self.process.kill()
            self.process.wait()
            self.assertIsInstance(call.answer(), GLib.Error)
            self.assertEqual(list(self.temporary.iterdir()), [])
            relay.release()
        if moment in WHOLE:
            self.assertEqual(self.job().sha256, digest(SAMPLE))
        self.start()
        self.assert_it_prints(after=1 if moment in WHOLE else 0)

    @at_each(*TO_CHOOSE, "token", "copy", *TO_PRINT)
    def test_without_the_bus_the_backend_prints_what_users_have_sent_and_ends(self, moment):
        address, bus = self.enterContext(own_bus())
        self.client = Client(address=address)
        places = {"DBUS_SESSION_BUS_ADDRESS": address, "AT_SPI_BUS_ADDRESS": bus_address()}
        with contextlib.ExitStack() as ends:
            relay = None
            if moment in TO_CHOOSE | TO_PRINT:
                relay, _ = ends.enter_context(self.stopped_at(moment, **places))
            else:
                self.start(TMPDIR=str(self.temporary), **places)
                _, _, token = self.chosen()
                if moment == "copy":
                    self.print_half(token)
            bus.kill()
            if moment in TO_PRINT:
                with self.assertRaises(subprocess.TimeoutExpired):
                    self.process.wait(1)
                relay.release()
            self.assertEqual(self.process.wait(patience.PATIENCE), 1)
        if moment in TO_PRINT:
            self.assertEqual(self.job().sha256, digest(SAMPLE))
        self.client = Client()
        self.start()
        self.assert_it_prints(after=1 if moment in TO_PRINT else 0)

    def print_half(self, token):
        """Prints from a pipe, and waits until the backend has read its beginning; the end is missing."""
        reading, writing = os.pipe()
        self.addCleanup(os.close, reading)
        self.addCleanup(os.close, writing)
        self.client.print(reading, token)
        os.write(writing, b"%PDF-1.4\n")
        until(lambda: not select.select([reading], [], [], 0)[0], "the beginning of the document to be read")


if __name__ == "__main__":
    unittest.main()
