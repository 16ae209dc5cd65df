"""The program does not wait forever for a print server that stops answering."""

import subprocess
import threading
import unittest

from patience import PATIENCE, until
from relay import BUSY, GONE, SILENT, Relay
from terminal_case import PROGRAM, REQUEST, SAMPLE, TerminalCase

TIMEOUT = 1  # seconds that the program waits for an answer
# The requests of a job, in order.
REQUESTS = ["the printer's state", "the PPD", "a new job", "the document", "the job's options"]


class FrozenServerTest(TerminalCase):
    def thaw(self):
        """Lets the server work again and cancels its jobs."""
        self.cups.thaw()
        self.cups.cancel_all()
        self.cups.wait_for_jobs()

    def test_a_server_that_is_frozen_from_the_start_is_named(self):
        for arguments in (["-d", "Morva", SAMPLE], ["-d", "Morva"], [SAMPLE], ["-d", "Nowhere", SAMPLE]):
            with self.subTest(arguments):
                self.cups.freeze()
                try:
                    result = self.trim(*arguments, TANDEM_TRIM_TIMEOUT=str(TIMEOUT))
                finally:
                    self.thaw()
                self.assertEqual((result.returncode, result.stdout), (1, ""))
                self.assertRegex(result.stderr, rf"127\.0\.0\.1:{self.cups.address[1]} did not answer within 1 s;")
                self.assertEqual(self.cups.records(), [])

    def freezes_during_a_job(self, rest):
        """Freezes the server once a job has begun, then passes the rest of its document; returns the program's messages."""
        with subprocess.Popen(
            [PROGRAM, "-d", "Morva", "-"],
            stdin=subprocess.PIPE,
            stdout=subprocess.PIPE,
            stderr=subprocess.PIPE,
            env=self.environment(TANDEM_TRIM_TIMEOUT=str(TIMEOUT)),
        ) as program:
            # As much as the program reads at once; then it waits for more.
            program.stdin.write(SAMPLE.read_bytes() + bytes(65536))
            program.stdin.flush()
            until(lambda: self.cups.jobs("not-completed"), "the start of the job")
            self.cups.freeze()
            hung = threading.Timer(PATIENCE, program.kill)
            hung.start()
            try:
                said = program.communicate(bytes(rest))[1].decode()
            finally:
                hung.cancel()
                self.thaw()
        self.assertEqual(program.returncode, 1, said)
        return said

    def test_a_document_that_is_half_sent_when_the_server_freezes_is_not_printed(self):
        said = self.freezes_during_a_job(50_000_000)  # more than the system's buffers
        self.assertRegex(said, r"Morva did not accept .* did not answer within 1 s; job \d+ on Morva could not be cancelled")
        self.assertEqual(self.cups.records(), [])

    def test_the_program_warns_that_a_job_may_still_be_printed_when_the_server_freezes_after_its_document(self):
        said = self.freezes_during_a_job(100_000)
        self.assertRegex(said, r"Morva did not confirm .* did not answer within 1 s; job \d+ on Morva .* may still be printed \(see lpstat -o Morva\)")

    def in_trouble_at(self, what, trouble, shown="^$"):
        """Prints on a server that fails at this request; returns the program's messages and the server's address."""
        with Relay(self.cups.address, REQUESTS.index(what) + 1, trouble) as relay:
            result = self.trim(
                "-d", "Morva", SAMPLE, CUPS_SERVER=relay.address, TANDEM_TRIM_TIMEOUT=str(TIMEOUT)
            )
        self.assertEqual(result.returncode, 1)
        self.assertRegex(result.stdout, shown)
        return result.stderr, relay.address

    def test_a_server_that_fails_before_it_has_the_job_is_named_and_no_job_is_sent(self):
        for what in REQUESTS[: REQUESTS.index("the document")]:
            for trouble, words in ((SILENT, "did not answer within 1 s"), (GONE, "broke the connection")):
                with self.subTest(what, trouble=trouble):
                    before = self.cups.jobs()
                    said, server = self.in_trouble_at(what, trouble)
                    self.assertRegex(said, f"the print server at {server} {words}")
                    self.assertEqual(self.cups.jobs(), before)

    def test_each_failure_names_the_server_of_the_option_h(self):
        for what in REQUESTS[: REQUESTS.index("the document")]:
            with self.subTest(what), Relay(self.cups.address, REQUESTS.index(what) + 1, GONE) as relay:
                result = self.trim("-h", relay.address, "-d", "Morva", SAMPLE, CUPS_SERVER="127.0.0.1:1", TANDEM_TRIM_TIMEOUT=str(TIMEOUT))
                self.assertEqual((result.returncode, result.stdout), (1, ""))
                self.assertRegex(result.stderr, f"the print server at {relay.address} broke the connection")

    def test_a_job_whose_server_fails_after_getting_it_is_not_confirmed(self):
        for trouble, words in ((SILENT, "did not answer within 1 s"), (GONE, "broke the connection and does not accept a new one")):
            with self.subTest(trouble):
                said, server = self.in_trouble_at("the job's options", trouble, f"^{REQUEST}$")
                pattern = rf"job \d+ on Morva was sent, but its options could not be confirmed: the print server at {server} {words}"
                self.assertRegex(said, pattern)
                self.cups.wait_for_jobs()
                self.assertEqual(len(self.cups.records()), 1)
                self.cups.forget()

    def saves_settings_until(self, request, trouble):
        """Saves settings on a server that fails at request number `request`; returns the program's result and the server's address."""
        with Relay(self.cups.address, request, trouble) as relay:
            around = {"CUPS_SERVER": relay.address, "TANDEM_TRIM_TIMEOUT": str(TIMEOUT)}
            return self.trim("-d", "Morva", "--save-as-default", **around), relay.address

    def test_a_server_that_fails_while_settings_are_saved_is_named_and_other_saved_settings_stay(self):
        def lpoptions(*arguments):
            return subprocess.run(["lpoptions", *arguments], env=self.environment(), capture_output=True, check=True, text=True).stdout

        lpoptions("-p", "Morva/Other", "-o", "x-note=mine")
        for trouble, words in ((SILENT, "did not answer within 1 s"), (GONE, "broke the connection"), (BUSY, "is out of service at present")):
            failures = 0
            # At the last request the server fails too late, and the settings are saved.
            for request in range(REQUESTS.index("the PPD") + 2, REQUESTS.index("the PPD") + 9):
                with self.subTest(trouble, request=request):
                    result, server = self.saves_settings_until(request, trouble)
                    self.assertIn("x-note=mine", lpoptions("-p", "Morva/Other"))
                    self.assertEqual(result.stdout, "")
                    if result.returncode != 0:
                        failures += 1
                        self.assertRegex(result.stderr, f"the print server at {server} {words}")
            self.assertGreater(failures, 0)
            self.assertEqual(result.returncode, 0, "saving takes more requests than this loop tries")

    def test_saved_options_cost_no_request(self):
        save = ["lpoptions", "-p", "Morva", "-o", "x-note=mine"]
        subprocess.run(save, env=self.environment(), capture_output=True, check=True)
        with Relay(self.cups.address, len(REQUESTS) + 1, SILENT) as relay:
            result, (record,) = self.prints("-d", "Morva", SAMPLE, CUPS_SERVER=relay.address)
        self.assertEqual(record.options["x-note"], "mine")


if __name__ == "__main__":
    unittest.main()
