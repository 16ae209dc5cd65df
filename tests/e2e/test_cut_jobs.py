"""A connection that is cut at any byte: no job is called confirmed that its filter has not got whole, none stays behind, and none keeps the program."""

import hashlib
import os
import random
import unittest

from relay import NEW_JOB, Cut
from terminal_case import DEFAULTS, REQUEST, SAMPLE, TerminalCase, digest, of_panel

SEED = int(os.environ.get("TANDEM_TRIM_SEED", random.SystemRandom().randrange(1 << 32)))
# At how many bytes, chosen at random, or "3/16": at every sixteenth from the third on.
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
        """Prints the document over the relay; gives the program's result and the records of what reached the filter."""
        self.cups.forget()
        with relay:
            result = self.trim("-d", "Morva", document, CUPS_SERVER=relay.address)
        with self.subTest(result.stderr):
            self.cups.wait_for_jobs()
        return result, self.cups.records()

    def cuts(self, cuts, document, answers, since):
        """Cuts the connection at so many bytes of the requests, or of the answers, since a request with these words."""
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
                    # CUPS takes a document for whole that breaks off between two chunks of HTTP, and prints its beginning.
                    for record in records:
                        self.assertIn("is incomplete: ", result.stderr)
                        self.assertEqual(record.sha256, hashlib.sha256(content[: record.size]).hexdigest())
                        self.assertLess(record.size, len(content))

    def test_a_request_that_is_cut(self):
        self.cuts(CUTS, self.document(SMALL), answers=False, since=ANY_REQUEST)

    def test_an_answer_that_is_cut(self):
        self.cuts(CUTS, self.document(SMALL), answers=True, since=NEW_JOB)

    def test_a_large_document_that_is_cut(self):
        self.cuts(LARGE_CUTS, self.document(LARGE), answers=False, since=NEW_JOB)


if __name__ == "__main__":
    unittest.main()
