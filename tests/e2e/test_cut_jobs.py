"""A connection that is cut at any byte: a job is confirmed only if its filter got all of it, no job is left behind, and the program ends."""

import hashlib
import os
import random
import unittest

from relay import NEW_JOB, Cut
from terminal_case import DEFAULTS, REQUEST, SAMPLE, TerminalCase, digest, of_panel

SEED = int(os.environ.get("TANDEM_TRIM_SEED", random.SystemRandom().randrange(1 << 32)))
# The number of cuts at random bytes; or "3/16": every sixteenth byte after the first three.
CUTS = os.environ.get("TANDEM_TRIM_CUTS", "6")
LARGE_CUTS = os.environ.get("TANDEM_TRIM_LARGE_CUTS", "1")
SMALL, LARGE = 100_000, 20_000_000  # bytes of a document
ANY_REQUEST = b""


class CutJobsTest(TerminalCase):
    def document(self, size):
        document = self.temporary_folder() / "document.pdf"
        document.write_bytes(SAMPLE.read_bytes() + random.Random(SEED).randbytes(size - SAMPLE.stat().st_size))
        return document

    def prints_over(self, relay, document):
        """Prints the document over the relay; returns the program's result and the filter's records."""
        self.cups.forget()
        with relay:
            result = self.trim("-d", "Morva", document, CUPS_SERVER=relay.address)
        with self.subTest(result.stderr):
            self.cups.wait_for_jobs()
        return result, self.cups.records()

    def cuts(self, cuts, document, answers, since):
        """Cuts the connection at the bytes that `cuts` chooses, counted since a request with the words `since`: bytes of the requests or,
        with `answers`, of the answers."""
        whole = Cut(self.cups.address, answers=answers, since=since)
        result, (expected,) = self.prints_over(whole, document)
        self.assertEqual((result.returncode, expected.sha256), (0, digest(document)))
        content = document.read_bytes()
        every = range(1, whole.counted)
        first, slash, step = cuts.partition("/")
        points = every[int(first) :: int(step)] if slash else sorted(random.Random(SEED).sample(every, int(cuts)))
        print(f"{len(points)} cuts", flush=True)
        for after in points:
            with self.subTest(after=after, of=whole.counted, answers=answers, since=since, TANDEM_TRIM_SEED=SEED):
                result, records = self.prints_over(Cut(self.cups.address, after, answers, since), document)
                received = [(record.sha256, of_panel(record.options)) for record in records]
                if result.returncode == 0 or result.stdout:
                    self.assertRegex(result.stdout, rf"^{REQUEST}job \d+ on Morva: 7 of 7 options confirmed\n$")
                    self.assertEqual((result.returncode, received), (0, [(expected.sha256, DEFAULTS)]))
                else:
                    self.assertRegex(result.stderr, "^tandem-trim: .*the print server at 127.0.0.1:")
                    # CUPS considers a document complete when the connection breaks between two HTTP chunks, and prints that part.
                    for record in records:
                        self.assertIn("is incomplete: ", result.stderr)
                        self.assertEqual(record.sha256, hashlib.sha256(content[: record.size]).hexdigest())
                        self.assertLess(record.size, len(content))

    def test_a_job_with_a_cut_request_is_whole_or_not_confirmed(self):
        self.cuts(CUTS, self.document(SMALL), answers=False, since=ANY_REQUEST)

    def test_a_job_with_a_cut_answer_is_whole_or_not_confirmed(self):
        self.cuts(CUTS, self.document(SMALL), answers=True, since=NEW_JOB)

    def test_a_job_with_a_cut_large_document_is_whole_or_not_confirmed(self):
        self.cuts(LARGE_CUTS, self.document(LARGE), answers=False, since=NEW_JOB)


if __name__ == "__main__":
    unittest.main()
