"""The program reports a job as confirmed only when the server has all of it."""

import itertools
import json
import os
import pathlib
import re
import signal
import socket
import struct
import subprocess
import unittest

import fake_server
import ipp
from patience import PATIENCE, until
from relay import GONE, Away, Cut, Holdup, Pause, Relay
from terminal_case import PPD, PROGRAM, REQUEST, SAMPLE, TerminalCase, digest

TIMEOUT = 2  # seconds that the program waits for an answer
NO_NUMBER = "Morva did not answer the request for a job; nothing was printed: the print server at "
CANCELLED = "processing-to-stop-point"  # CUPS's reason for a job that was cancelled while it waited, or aborted
QUESTION = b"job-k-octets"  # in the request that asks what the server has of the job
REQUESTS = 5  # of a job; the last one contains QUESTION
SLOW_FILTER = """#!/bin/sh
echo "PAGE: 1 1" >&2
echo "INFO: cutting" >&2
until [ -e "$TANDEM_TRIM_RECORDS/go" ]; do sleep 0.05; done
exit $(cat "$TANDEM_TRIM_RECORDS/go")
"""


def has_handler(process, number):
    """Whether the process handles the signal itself."""
    status = pathlib.Path(f"/proc/{process}/status").read_text()
    return int(re.search(r"^SigCgt:\s*(\w+)", status, re.MULTILINE)[1], 16) >> (number - 1) & 1


class ConfirmationTest(TerminalCase):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.cups.add_queue("Resting", PPD, enabled=False)
        cls.add_slow_queues()
        cls.document = cls.cups.folder / "document.pdf"
        cls.document.write_bytes(SAMPLE.read_bytes() + os.urandom(100_000))

    @classmethod
    def add_slow_queues(cls):
        """Adds the printers Slow, whose filter waits for end_filter(), and Unreliable, whose backend does."""
        for kind in ("filter", "backend"):
            program = cls.cups.folder / f"programs/{kind}/slow"
            program.write_text(SLOW_FILTER)
            program.chmod(0o755)
        ppd = cls.cups.folder / "slow.ppd"
        ppd.write_text(PPD.read_text().replace("0 morvatandem", "0 slow"))
        cls.cups.add_queue("Slow", ppd)
        cls.cups.add_queue("Unreliable", PPD, device="slow:/nowhere")
        abort = ["lpadmin", "-p", "Unreliable", "-o", "printer-error-policy=abort-job"]
        subprocess.run(abort, env=cls.cups.environment(), capture_output=True, check=True)

    def end_filter(self, status):
        """Makes the waiting filter or backend exit with this status."""
        unfinished = self.cups.folder / "records/unfinished"
        unfinished.write_text(str(status))
        unfinished.rename(unfinished.with_name("go"))

    def prints_over(self, relay, files, *arguments):
        """Prints the files over the relay; returns the program's result and the filter's records."""
        with relay:
            result = self.trim("-d", "Morva", *arguments, *files, CUPS_SERVER=relay.address)
        self.cups.wait_for_jobs()
        return result, self.cups.records()

    def started(self, *arguments, program=(PROGRAM,), stdin=subprocess.DEVNULL, **variables):
        """Starts the program, which is killed at the end of the test."""
        program = subprocess.Popen(
            [*program, *arguments], stdin=stdin, stdout=subprocess.PIPE, stderr=subprocess.PIPE, env=self.environment(**variables)
        )
        self.addCleanup(program.communicate)
        self.addCleanup(program.kill)
        return program

    def end_of(self, program):
        """Waits for the program; returns its status, output and messages."""
        out, said = program.communicate(timeout=PATIENCE)
        return program.returncode, out.decode(), said.decode()

    def cuts(self, count, files, look, answers=False):
        """Cuts the connection at `count` points of a job and calls `look` with each result and its records."""
        whole = Cut(self.cups.address, answers=answers)
        self.assertEqual(self.prints_over(whole, files)[0].returncode, 0)
        for number in range(1, count + 1):
            after = whole.counted * number // (count + 1)
            with self.subTest(f"cut after {after} of {whole.counted} bytes"):
                self.cups.forget()
                look(*self.prints_over(Cut(self.cups.address, after, answers), files))

    # Cut connections.

    def test_a_job_whose_connection_breaks_inside_a_document_is_cancelled_and_not_confirmed(self):
        def look(result, _):
            self.assertEqual((result.returncode, result.stdout), (1, ""))
            self.assertRegex(result.stderr, r"the print server at 127.0.0.1:\d+ .*; job \d+ on Morva was cancelled")

        for files in ([self.document], [self.document, SAMPLE]):
            self.cuts(6, files, look)

    def test_a_job_whose_connection_breaks_inside_an_answer_is_confirmed_only_if_the_server_has_all_of_it(self):
        confirmed = []

        def look(result, records):
            confirmed.append(result.returncode == 0)
            if confirmed[-1]:
                self.assertRegex(result.stdout, rf"^{REQUEST}job \d+ on Morva: 7 of 7 options confirmed\n$")
                self.assertEqual([record.sha256 for record in records], [digest(SAMPLE)])
            else:
                self.assertRegex(result.stderr, rf"{NO_NUMBER}|; job \d+ on Morva was cancelled")
                self.assertEqual(records, [])

        self.cuts(6, [SAMPLE], look, answers=True)
        self.assertIn(True, confirmed)

    def test_a_server_that_is_unreachable_for_a_moment_is_asked_again(self):
        behind = Cut(self.cups.address)
        self.prints_over(behind, [SAMPLE])
        for after, status in ((behind.counted - 10, 0), (behind.counted // 2, 1)):
            with self.subTest(after):
                self.cups.forget()
                result, records = self.prints_over(Away(self.cups.address, after, 0.5), [SAMPLE])
                self.assertEqual((result.returncode, len(records)), (status, 1 - status), result.stderr)

    def test_a_server_that_is_still_receiving_the_document_is_asked_again(self):
        whole = Cut(self.cups.address)
        self.prints_over(whole, [SAMPLE])

        def questions():
            return sum("Get-Job-Attributes" in line for line in self.cups.requests())

        before = questions()
        in_the_document = whole.counted - 1500  # the question follows, and is shorter
        with Pause(self.cups.address, in_the_document) as relay:
            program = self.started("-d", "Morva", SAMPLE, CUPS_SERVER=relay.address, TANDEM_TRIM_TIMEOUT=str(TIMEOUT))
            until(lambda: questions() > before, "the question")
            relay.release()
            status, out, said = self.end_of(program)
        self.assertEqual(status, 0, said)
        self.assertRegex(out, r"7 of 7 options confirmed\n$")

    def test_a_job_whose_number_is_lost_is_cancelled_and_no_other_job_is(self):
        self.assertEqual(self.trim("-d", "Resting", SAMPLE).returncode, 0)
        # Another program's job, which the server lists last.
        subprocess.run(["lp", "-d", "Resting", "-q", "1", SAMPLE], env=self.environment(), capture_output=True, check=True)
        others, before = self.cups.jobs("not-completed"), self.cups.jobs()
        in_its_header = 40  # bytes: the answer breaks off inside its HTTP header
        with Cut(self.cups.address, in_its_header, answers=True) as relay:
            result = self.trim("-d", "Resting", SAMPLE, CUPS_SERVER=relay.address)
        self.assertEqual(result.returncode, 1)
        self.assertIn(NO_NUMBER.replace("Morva", "Resting"), result.stderr)
        self.assertEqual(self.cups.jobs("not-completed"), others)
        self.assertEqual(len(self.cups.jobs()), len(before) + 1)

    # Documents that cannot be sent completely.

    def test_a_document_that_shrinks_while_being_sent_is_not_printed(self):
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

    # Jobs that others or the server change.

    def cancelled_before_confirmation(self, *arguments):
        """Prints a job that is cancelled before the program asks what the server has of it; returns status, output and messages."""
        with Holdup(self.cups.address, QUESTION) as relay:
            program = self.started("-d", "Resting", *arguments, SAMPLE, CUPS_SERVER=relay.address)
            self.assertTrue(relay.reached.wait(PATIENCE))
            self.cups.cancel_all()
            relay.release()
            return self.end_of(program)

    def test_a_job_that_is_cancelled_before_its_confirmation_is_not_confirmed(self):
        status, out, said = self.cancelled_before_confirmation()
        self.assertEqual((status, out), (1, ""))
        self.assertRegex(said, rf"job \d+ on Resting was cancelled at the print server at \S+ \({CANCELLED}\)\n$")

    def test_a_job_on_hold_is_confirmed_as_held(self):
        result = self.trim("-d", "Morva", "-o", "job-hold-until=indefinite", SAMPLE)
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertRegex(result.stdout, r"8 of 8 options confirmed; it is held \(job-hold-until-specified\)\n$")

    def followed(self, printer, end):
        """Prints with --wait on a slow printer and calls `end` once the job is processing; returns status, output and messages."""
        program = self.started("-d", printer, "--wait", SAMPLE)
        said = b""
        while b"cutting" not in said:
            line = program.stderr.readline()
            self.assertTrue(line, said)
            said += line
        end()
        status, out, rest = self.end_of(program)
        return status, out, said.decode() + rest

    def test_waiting_for_a_job_ends_with_a_status_that_says_how_the_job_ended(self):
        ends = {
            "completed": ("Slow", lambda: self.end_filter(0), 0, f"^{REQUEST}" + "{}: 7 of 7 options confirmed\n$", r"{}: completed \("),
            "cancelled": ("Slow", self.cups.cancel_all, 1, f"^{REQUEST}$", rf"{{}} was cancelled at .* \((job-canceled-by-user|{CANCELLED})\)\n$"),
            "stopped": ("Slow", lambda: self.end_filter(1), 1, f"^{REQUEST}$", r"{} was stopped at .* \(job-completed-with-errors\)\n$"),
            "aborted": ("Unreliable", lambda: self.end_filter(1), 1, f"^{REQUEST}$", rf"{{}} was aborted at .* \({CANCELLED}\)\n$"),
        }
        for end, (printer, act, expected, shown, words) in ends.items():
            with self.subTest(end):
                self.cups.forget()
                status, out, said = self.followed(printer, act)
                self.assertEqual(status, expected, said)
                job = rf"job \d+ on {printer}"
                self.assertRegex(out, shown.format(job))
                self.assertRegex(said, rf"{job}: processing \(job-printing\): cutting; 1 sheet printed\n")
                self.assertRegex(said, words.format(job))

    def test_each_change_of_a_job_that_the_program_waits_for_is_reported_once(self):
        def described(state, reasons, message, sheets):
            changes = [(ipp.ENUM, "job-state", state), (ipp.KEYWORD, "job-state-reasons", reasons)]
            changes += [(ipp.TEXT, "job-printer-state-message", message), (ipp.INTEGER, "job-media-sheets-completed", sheets)]
            return [fake_server.described(ipp.JOB_GROUP, fake_server.JOB, changes)]

        plain = b"".join(line for line in PPD.read_bytes().splitlines(True) if b"APDialogExtension" not in line)
        states = [(3, "none", "", 0), (5, "job-printing", "cutting", 1), (5, "job-printing", "cutting", 1), (5, "job-printing", "", 2), (9, "none", "", 2)]
        answers = iter([described(*state) for state in states])
        with fake_server.FakeServer(plain, {ipp.GET_JOB: lambda: next(answers)}) as server:
            result = self.trim("-d", "Morva", "--wait", SAMPLE, CUPS_SERVER=server.address)
        changes = ["pending", "processing (job-printing): cutting; 1 sheet printed", "processing (job-printing); 2 sheets printed", "completed; 2 sheets printed"]
        self.assertEqual(result.stderr, "".join(f"tandem-trim: job 1 on Morva: {change}\n" for change in changes))
        self.assertEqual((result.returncode, result.stdout), (0, "request id is Morva-1 (1 file(s))\njob 1 on Morva: 0 of 0 options confirmed\n"))

    def test_a_job_whose_end_the_server_does_not_tell_is_not_confirmed(self):
        processing = [(ipp.ENUM, "job-state", ipp.PROCESSING), (ipp.INTEGER, "number-of-documents", 1)]
        plain = b"".join(line for line in PPD.read_bytes().splitlines(True) if b"APDialogExtension" not in line)
        for content, words in (
            (b"", "broke the connection; see whether it is still running"),
            (fake_server.answer(ipp.beginning(ipp.NOT_FOUND) + bytes([ipp.END])), "does not report the job; see lpstat -W all -o Morva"),
        ):
            answers = itertools.chain([fake_server.described(ipp.JOB_GROUP, fake_server.JOB, processing)], itertools.repeat(content))
            odd = {ipp.GET_JOB: lambda answers=answers: [next(answers)]}
            with self.subTest(words), fake_server.FakeServer(plain, odd) as server:
                result = self.trim("-d", "Morva", "--wait", "--save-as-default", SAMPLE, CUPS_SERVER=server.address, TANDEM_TRIM_TIMEOUT="1")
                self.assertNotIn(ipp.CANCEL_JOB, server.asked)
            self.assertEqual((result.returncode, result.stdout), (1, "request id is Morva-1 (1 file(s))\n"))
            said = f"the end of job 1 on Morva is not known: the print server at {server.address} {words}"
            self.assertTrue(result.stderr.endswith(f"tandem-trim: {said}\n"), result.stderr)

    def test_waiting_for_a_job_needs_a_file(self):
        self.refuses("-d", "Morva", "--wait", status=2, words=["--wait", "file"])

    def test_json_describes_a_job_that_is_not_confirmed(self):
        status, out, said = self.cancelled_before_confirmation("--json")
        job = json.loads(out)["job"]
        self.assertEqual((status, job["state"], job["reasons"]), (1, "canceled", CANCELLED))
        self.assertIn(job["id"], self.cups.jobs())
        self.assertIn(job["problem"], said)
        with Relay(self.cups.address, REQUESTS, GONE) as relay:
            result = self.trim("-d", "Morva", "--json", SAMPLE, CUPS_SERVER=relay.address, TANDEM_TRIM_TIMEOUT="1")
        job = json.loads(result.stdout)["job"]
        self.assertEqual((result.returncode, job["id"], job["confirmed"]), (1, self.cups.jobs()[-1], None))
        self.assertIn(job["problem"], result.stderr)

    # Signals.

    def sends_a_part(self, **around):
        """Starts the program, which prints standard input, and waits until it has made a job; the end of the document is missing."""
        program = self.started("-d", "Morva", "-", stdin=subprocess.PIPE, **around)
        program.stdin.write(SAMPLE.read_bytes() + bytes(65536))
        program.stdin.flush()
        until(lambda: self.cups.jobs("not-completed"), "the start of the job")
        return program

    def test_a_signal_cancels_the_job(self):
        for number, word in ((signal.SIGINT, "interrupted"), (signal.SIGTERM, "terminated")):
            with self.subTest(number):
                program = self.sends_a_part()
                program.send_signal(number)
                said = program.stderr.readline().decode()
                self.assertRegex(said, rf"^tandem-trim: {word}; job \d+ on Morva was cancelled\n$")
                self.assertEqual(program.wait(PATIENCE), 128 + number)
                self.cups.wait_for_jobs()
                self.assertEqual(self.cups.records(), [])

    def test_a_signal_while_the_server_does_not_answer_cancels_the_job(self):
        document = self.temporary_folder() / "large.pdf"
        document.write_bytes(SAMPLE.read_bytes() + bytes(50_000_000))
        points = {
            "in the document": ((100_000,), r"job \d+ on Morva was cancelled\n"),
            "before the job's number": ((1, True), f"{NO_NUMBER}.* did not answer within {TIMEOUT} s;"),
        }
        for name, (point, words) in points.items():
            with self.subTest(name), Pause(self.cups.address, *point) as relay:
                program = self.started("-d", "Morva", document, CUPS_SERVER=relay.address, TANDEM_TRIM_TIMEOUT=str(TIMEOUT))
                self.assertTrue(relay.reached.wait(PATIENCE))
                program.send_signal(signal.SIGINT)
                status, out, said = self.end_of(program)
                self.assertEqual((status, out), (128 + signal.SIGINT, ""), said)
                self.assertRegex(said, f"^tandem-trim: interrupted; {words}")
                self.cups.wait_for_jobs()
                self.assertEqual(self.cups.records(), [])

    def test_a_signal_that_is_ignored_from_the_start_stays_ignored(self):
        program = self.sends_a_part(program=("env", "--ignore-signal=INT", PROGRAM))
        program.send_signal(signal.SIGINT)
        status, out, said = self.end_of(program)
        self.assertEqual((status, said), (0, ""))
        self.assertRegex(out, rf"^{REQUEST}job \d+ on Morva: 7 of 7 options confirmed\n$")

    def test_an_ignored_signal_does_not_end_the_program_while_it_cancels_the_job(self):
        program = self.sends_a_part(program=("env", "--ignore-signal=INT", PROGRAM), TANDEM_TRIM_TIMEOUT=str(10 * PATIENCE))
        self.cups.freeze()
        try:
            program.send_signal(signal.SIGTERM)
            until(lambda: not has_handler(program.pid, signal.SIGTERM), "the first signal")
            program.send_signal(signal.SIGINT)
        finally:
            self.cups.thaw()
        self.assertRegex(program.stderr.readline().decode(), r"^tandem-trim: terminated; job \d+ on Morva was cancelled\n$")
        self.assertEqual(program.wait(PATIENCE), 128 + signal.SIGTERM)

    def test_a_signal_while_the_program_waits_for_the_job_does_not_cancel_it(self):
        program = self.started("-d", "Slow", "--wait", SAMPLE)
        while b"cutting" not in program.stderr.readline():
            self.assertIsNone(program.poll())
        program.send_signal(signal.SIGINT)
        self.assertEqual(program.wait(PATIENCE), -signal.SIGINT)
        jobs = self.cups.jobs("not-completed")
        self.assertEqual(len(jobs), 1)
        self.end_filter(0)
        self.cups.wait_for_jobs()
        self.assertLessEqual(set(jobs), set(self.cups.jobs("completed")))

    def test_a_second_signal_ends_the_program_at_once(self):
        program = self.sends_a_part(TANDEM_TRIM_TIMEOUT=str(10 * PATIENCE))
        self.cups.freeze()
        try:
            program.send_signal(signal.SIGINT)
            with self.assertRaises(subprocess.TimeoutExpired):
                program.wait(2)
            program.send_signal(signal.SIGTERM)
            self.assertEqual(program.wait(PATIENCE), -signal.SIGTERM)
        finally:
            self.cups.thaw()
        self.cups.cancel_all()


if __name__ == "__main__":
    unittest.main()
