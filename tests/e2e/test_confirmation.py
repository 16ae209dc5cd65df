"""The program says "confirmed" of a job that the server holds whole, and of no other."""

import os
import socket
import struct
import subprocess
import unittest

from patience import PATIENCE, until
from relay import Away, Cut, Pause
from terminal_case import PROGRAM, SAMPLE, TerminalCase, digest

TIMEOUT = 2  # seconds that the program waits for an answer
# Of a job that the server may have made, though its answer was lost.
NO_NUMBER = "did not answer the request for a job; nothing was printed, but an empty job may wait there"


class ConfirmationTest(TerminalCase):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.document = cls.cups.folder / "document.pdf"
        cls.document.write_bytes(SAMPLE.read_bytes() + os.urandom(100_000))

    def prints_over(self, relay, files, *arguments):
        """Prints the files over the relay; gives the program's result and the records of what reached the filter."""
        with relay:
            around = {"CUPS_SERVER": relay.address, "TANDEM_TRIM_TIMEOUT": str(TIMEOUT)}
            result = self.trim("-d", "Morva", *arguments, *files, **around)
        if NO_NUMBER in result.stderr:
            self.cups.cancel_all()
        self.cups.wait_for_jobs()
        return result, self.cups.records()

    def started(self, *arguments, stdin=subprocess.DEVNULL, **variables):
        """The program, which is ended with the test."""
        program = subprocess.Popen(
            [PROGRAM, *arguments], stdin=stdin, stdout=subprocess.PIPE, stderr=subprocess.PIPE, env=self.environment(**variables)
        )
        self.addCleanup(program.communicate)
        self.addCleanup(program.kill)
        return program

    def end_of(self, program):
        """Waits for the program; gives status, output and messages."""
        out, said = program.communicate(timeout=PATIENCE)
        return program.returncode, out.decode(), said.decode()

    def cuts(self, count, files, answers=False):
        """Cuts the connection at so many points of a job; gives the results."""
        whole = Cut(self.cups.address, answers=answers)
        self.assertEqual(self.prints_over(whole, files)[0].returncode, 0)
        for number in range(1, count + 1):
            after = whole.counted * number // (count + 1)
            with self.subTest(f"cut after {after} of {whole.counted} bytes"):
                self.cups.forget()
                yield self.prints_over(Cut(self.cups.address, after, answers), files)

    # Cut connections.

    def test_a_connection_that_breaks_inside_a_document_confirms_nothing_and_leaves_no_job_behind(self):
        for files in ([self.document], [self.document, SAMPLE]):
            for result, _ in self.cuts(12, files):
                self.assertEqual((result.returncode, result.stdout), (1, ""))
                self.assertRegex(result.stderr, r"(?s)the print server at 127.0.0.1:\d+ .*; job \d+ on Morva was cancelled")

    def test_a_connection_that_breaks_behind_a_document_confirms_what_the_server_says_it_holds(self):
        confirmed = 0
        for result, records in self.cuts(12, [SAMPLE], answers=True):
            if result.returncode == 0:
                confirmed += 1
                self.assertRegex(result.stdout, r"^job \d+ on Morva: 7 of 7 options confirmed\n$")
                self.assertEqual([record.sha256 for record in records], [digest(SAMPLE)])
            else:
                self.assertIn(NO_NUMBER, result.stderr)
                self.assertEqual(records, [])
        self.assertGreater(confirmed, 0)

    def test_a_server_that_is_away_for_a_moment_is_asked_again(self):
        behind = Cut(self.cups.address)
        self.prints_over(behind, [SAMPLE])
        for after, status in ((behind.counted - 10, 0), (behind.counted // 2, 1)):
            with self.subTest(after):
                self.cups.forget()
                result, records = self.prints_over(Away(self.cups.address, after, 0.5), [SAMPLE])
                self.assertEqual((result.returncode, len(records)), (status, 1 - status), result.stderr)

    # Documents that cannot be sent to their end.

    def test_a_document_that_shrinks_while_it_is_sent_is_not_printed(self):
        document = self.temporary_folder() / "shrinking.pdf"
        document.write_bytes(SAMPLE.read_bytes() + bytes(50_000_000))
        with Pause(self.cups.address, 100_000) as relay:
            program = self.started("-d", "Morva", document, CUPS_SERVER=relay.address)
            self.assertTrue(relay.reached.wait(PATIENCE))
            os.truncate(document, 200_000)
            relay.release()
            status, out, said = self.end_of(program)
        self.assertEqual((status, out), (1, ""))
        self.assertRegex(said, r"shrinking.pdf shrank while it was sent: \d+ of \d+ bytes were left; job \d+ on Morva was cancelled")
        self.cups.wait_for_jobs()
        self.assertEqual(self.cups.records(), [])

    def test_standard_input_that_breaks_is_not_printed(self):
        with socket.create_server(("127.0.0.1", 0)) as listener:
            reader = socket.create_connection(listener.getsockname())
            writer, _ = listener.accept()
        with reader, writer:
            program = self.started("-d", "Morva", "-", stdin=reader)
            writer.sendall(SAMPLE.read_bytes() + bytes(65536))
            until(lambda: self.cups.jobs("not-completed"), "the start of the job")
            writer.setsockopt(socket.SOL_SOCKET, socket.SO_LINGER, struct.pack("ii", 1, 0))
            writer.close()
            status, out, said = self.end_of(program)
        self.assertEqual((status, out), (1, ""))
        self.assertRegex(said, r"standard input cannot be read: Connection reset by peer; job \d+ on Morva was cancelled\n$")
        self.cups.wait_for_jobs()
        self.assertEqual(self.cups.records(), [])

    def test_a_document_that_the_server_has_no_room_for_is_not_printed(self):
        document = self.temporary_folder() / "large.pdf"
        document.write_bytes(SAMPLE.read_bytes() + bytes(3_000_000))
        self.cups.fill_disk()
        try:
            result = self.trim("-d", "Morva", document)
        finally:
            self.cups.empty_disk()
        self.assertEqual((result.returncode, result.stdout), (1, ""))
        self.assertRegex(result.stderr, r"; job \d+ on Morva was cancelled")
        self.cups.wait_for_jobs()
        self.assertEqual(self.cups.records(), [])


if __name__ == "__main__":
    unittest.main()
