"""The program trusts nothing from the network: answers that are cut off, of a wrong type, endless or slow."""

import gzip
import itertools
import os
import subprocess
import unittest
import zlib

import fake_server
import ipp
import surroundings
from fake_server import JOB, FakeServer, TlsWithoutEnd
from patience import PATIENCE
from relay import AlwaysCut, Altered, Babbling, Cut, Slow
from terminal_case import BUILD, PPD, PROGRAM, REQUEST, SAMPLE, TerminalCase, digest

TIMEOUT = 1  # seconds that the program waits for an answer
MEMORY = 2 << 30  # bytes that the program may allocate; without its own limits it would need more
PPD_REQUEST = b".ppd HTTP"
ENDLESS_LOOKUP = BUILD / "tests/e2e/libendless_lookup.so"
# The operations whose answers are needed to confirm a job. Sending its document is not among them: the server can be asked what it has.
REQUESTS = (ipp.GET_PRINTER, ipp.CREATE_JOB, ipp.GET_JOB)
# Values of several types. Each attribute gets each of them, whatever its own type is.
ODD_VALUES = {"no value": (ipp.NO_VALUE, ""), "a number": (ipp.INTEGER, 7), "a boolean": (ipp.BOOLEAN, 1), "a text": (ipp.TEXT, "odd")}


def endless_compressed_answer():
    """The pieces of an endless compressed answer about a job; unpacked, it is endless, too."""
    packer = zlib.compressobj(9, wbits=31)
    attribute = ipp.group(ipp.JOB_GROUP, [(ipp.TEXT, "x", "y" * 1000)])[1:] * 20_000
    packed = packer.compress(ipp.beginning(0) + bytes([ipp.JOB_GROUP])) + packer.flush(zlib.Z_FULL_FLUSH)
    again = packer.compress(attribute) + packer.flush(zlib.Z_FULL_FLUSH)
    start = fake_server.head("Content-Length: 2000000000", "Content-Encoding: gzip") + packed
    return itertools.chain([start], itertools.repeat(again))


class HostileServerTest(TerminalCase):
    def trim_at(self, server, *arguments, timeout=TIMEOUT, **more):
        """Runs the program, with bounded memory, against the server at this address."""
        around = {"CUPS_SERVER": server, "TANDEM_TRIM_TIMEOUT": str(timeout), **more}
        # The limit would also count the memory that sanitizers reserve.
        is_sanitized = any(name.startswith(surroundings.SANITIZERS) for name in os.environ)
        bounded = [] if is_sanitized else [f"--as={MEMORY}"]
        return self.trim(*bounded, PROGRAM, *arguments, program="prlimit", **around)

    # Incomplete PPDs.

    def test_a_ppd_that_breaks_off_once_is_fetched_again(self):
        whole = Cut(self.cups.address, answers=True, since=PPD_REQUEST)
        with whole:
            expected = self.trim_at(whole.address, "-d", "Morva", "--json").stdout
        for number in range(1, 8):
            after = whole.counted * number // 8
            with self.subTest(f"after {after} of {whole.counted} bytes"):
                with Cut(self.cups.address, after, answers=True, since=PPD_REQUEST) as relay:
                    result = self.trim_at(relay.address, "-d", "Morva", "--json")
                self.assertEqual((result.returncode, result.stdout), (0, expected), result.stderr)

    def test_a_ppd_that_breaks_off_again_is_refused(self):
        before = self.cups.jobs()
        for after in (400, 1000, 2000, 4000):
            with self.subTest(after), AlwaysCut(self.cups.address, after, True, PPD_REQUEST) as relay:
                result = self.trim_at(relay.address, "-d", "Morva", SAMPLE)
                self.assertEqual((result.returncode, result.stdout), (1, ""))
                self.assertIn(f"the print server at {relay.address} sent only part of the PPD of Morva", result.stderr)
        self.assertEqual(self.cups.jobs(), before)

    def test_a_ppd_in_chunks_is_refused_without_its_last_chunk(self):
        ppd = PPD.read_bytes()
        pieces = [fake_server.head("Transfer-Encoding: chunked"), fake_server.chunk(ppd[:2000]), fake_server.chunk(ppd[2000:]), b"0\r\n\r\n"]
        sent = b"".join(pieces)
        last = len(pieces[-1])
        for cut in (0, last, last + 2, last + 100, len(pieces[2]) + last, len(pieces[2]) + last + 50):
            with self.subTest(cut=cut), FakeServer(odd={fake_server.PPD: lambda cut=cut: [sent[: len(sent) - cut]]}) as server:
                result = self.trim_at(server.address, "-d", "Morva", "--json")
                if cut == 0:
                    self.assertEqual((result.returncode, '"max": 20' in result.stdout), (0, True), result.stderr)
                else:
                    self.assertEqual((result.returncode, result.stdout), (1, ""))
                    self.assertIn(f"{server.address} sent only part of the PPD of Morva", result.stderr)
                    self.assertEqual(server.asked.count(fake_server.PPD), 2)

    def test_a_compressed_ppd_is_refused_if_gzip_finds_it_damaged(self):
        packed = gzip.compress(PPD.read_bytes())
        damaged = packed[:-8] + bytes(4) + packed[-4:]
        file = self.temporary_folder() / "packed.ppd.gz"
        for content, is_whole in ((packed, True), (packed[:-1], False), (packed[: len(packed) // 2], False), (damaged, False)):
            file.write_bytes(content)
            with self.subTest(size=len(content), whole=is_whole), FakeServer(content) as server:
                for place, arguments in ((server.address, ["-d", "Morva"]), (str(file), ["--ppd", file])):
                    result = self.trim_at(server.address, *arguments, "--json")
                    if is_whole:
                        self.assertEqual((result.returncode, '"max": 20' in result.stdout), (0, True), result.stderr)
                    else:
                        self.assertEqual((result.returncode, result.stdout), (1, ""))
                        self.assertRegex(result.stderr, rf"the PPD file .*{place} is damaged: [a-z ]+; correct it or name another with --ppd")
                self.assertEqual(server.asked.count(fake_server.PPD), 1 if is_whole else 2)

    def test_a_compressed_ppd_that_is_damaged_once_is_fetched_again(self):
        packed = gzip.compress(PPD.read_bytes())
        answers = iter([fake_server.answer(packed[:-1]), fake_server.answer(packed)])
        with FakeServer(odd={fake_server.PPD: lambda: [next(answers)]}) as server:
            result = self.trim_at(server.address, "-d", "Morva", "--json")
        self.assertEqual((result.returncode, '"max": 20' in result.stdout), (0, True), result.stderr)

    # Values of other types.

    def test_attributes_without_a_value_count_as_missing(self):
        old = b"\x41\x00\x15printer-state-message\x00\x00"
        with Altered(self.cups.address, old, old.replace(b"\x41", bytes([ipp.NO_VALUE]))) as relay:
            result = self.trim_at(relay.address, "-d", "Morva", SAMPLE, timeout=PATIENCE)
        self.assertRegex(result.stdout, rf"^{REQUEST}job \d+ on Morva: 7 of 7 options confirmed\n$")

    def test_a_printer_that_does_not_say_whether_it_accepts_jobs_is_tried(self):
        name = b"printer-is-accepting-jobs"
        with Altered(self.cups.address, name, name.replace(b"jobs", b"work")) as relay:
            result = self.trim_at(relay.address, "-d", "Morva", SAMPLE, timeout=PATIENCE)
        self.assertRegex(result.stdout, rf"^{REQUEST}job \d+ on Morva: 7 of 7 options confirmed\n$", result.stderr)

    def test_an_odd_value_of_any_attribute_does_not_crash_the_program(self):
        described = {ipp.GET_PRINTER: (ipp.PRINTER_GROUP, fake_server.PRINTER), ipp.CREATE_JOB: (ipp.JOB_GROUP, fake_server.JOB)}
        described[ipp.GET_JOB] = described[ipp.CREATE_JOB]
        more = {ipp.GET_JOB: ["number-of-documents", "job-k-octets", "document-format-supplied", "job-printer-state-message", "MVTopMargin", "copies"]}
        for operation, (tag, attributes) in described.items():
            for name in [name for _, name, _ in attributes] + more.get(operation, []):
                for what, (kind, value) in ODD_VALUES.items():
                    odd = fake_server.described(tag, attributes, [(kind, name, value)])
                    with self.subTest(f"{what} as {name}"), FakeServer(PPD.read_bytes(), {operation: lambda odd=odd: [odd]}) as server:
                        arguments = ["-o", "document-format=application/pdf", "-n", "2", SAMPLE]
                        result = self.trim_at(server.address, "-d", "Morva", *arguments, timeout=PATIENCE)
                        self.assertIn(result.returncode, (0, 1), result.stderr)

    def test_only_an_answer_about_the_job_confirms_it(self):
        plain = b"".join(line for line in PPD.read_bytes().splitlines(True) if b"APDialogExtension" not in line)
        number, state = JOB[:2]
        odd = {
            "another job": [(ipp.INTEGER, "job-id", 2), state],
            "no job": [state],
            "no state": [number],
            "no such state": [number, (ipp.ENUM, "job-state", 0)],
            "nothing": [],
        }
        for what, attributes in odd.items():
            pieces = [fake_server.described(ipp.JOB_GROUP, attributes)]
            with self.subTest(what), FakeServer(plain, {ipp.GET_JOB: lambda pieces=pieces: pieces}) as server:
                result = self.trim_at(server.address, "-d", "Morva", SAMPLE)
                self.assertEqual(result.returncode, 1)
                self.assertRegex(result.stdout, f"^{REQUEST}$")
                self.assertIn(f"could not be confirmed: the print server at {server.address} does not report the job", result.stderr)

    def test_a_job_that_the_server_no_longer_knows_is_not_confirmed(self):
        unknown = fake_server.answer(ipp.beginning(ipp.NOT_FOUND) + bytes([ipp.END]))
        with FakeServer(PPD.read_bytes(), {ipp.GET_JOB: lambda: [unknown]}) as server:
            result = self.trim_at(server.address, "-d", "Morva", "--wait", "--save-as-default", SAMPLE)
            words = f"job 1 on Morva was sent, but its options could not be confirmed: the print server at {server.address} does not report the job; see lpstat -W all -o Morva\n"
            self.assertEqual((result.returncode, result.stdout), (1, "request id is Morva-1 (1 file(s))\n"))
            self.assertEqual(result.stderr, f"tandem-trim: {words}")
            self.assertNotIn(ipp.CANCEL_JOB, server.asked)

    def test_a_job_that_the_server_fails_to_describe_is_not_confirmed(self):
        failed = fake_server.answer(ipp.beginning(ipp.INTERNAL_ERROR) + bytes([ipp.END]))
        with FakeServer(PPD.read_bytes(), {ipp.GET_JOB: lambda: [failed]}) as server:
            result = self.trim_at(server.address, "-d", "Morva", SAMPLE)
        self.assertEqual((result.returncode, result.stdout), (1, "request id is Morva-1 (1 file(s))\n"))
        self.assertIn(f"could not be confirmed: the print server at {server.address} has an internal error", result.stderr)

    def test_a_job_with_an_impossible_number_counts_as_refused(self):
        for number in (0, -1):
            job = fake_server.described(ipp.JOB_GROUP, JOB, [(ipp.INTEGER, "job-id", number)])
            with self.subTest(number), FakeServer(PPD.read_bytes(), {ipp.CREATE_JOB: lambda job=job: [job]}) as server:
                result = self.trim_at(server.address, "-d", "Morva", SAMPLE)
                self.assertEqual(result.returncode, 1)
                self.assertIn("Morva refuses the job; nothing was printed", result.stderr)
                self.assertEqual(server.asked[-1], ipp.CREATE_JOB)

    # Endless answers.

    def test_an_endless_answer_in_the_middle_of_a_document_is_not_waited_for(self):
        document = self.temporary_folder() / "large.pdf"
        document.write_bytes(SAMPLE.read_bytes() + bytes(50_000_000))
        with Babbling(self.cups.address, 100_000) as relay:
            result = self.trim_at(relay.address, "-d", "Morva", document)
        self.assertEqual((result.returncode, result.stdout), (1, ""))
        self.assertRegex(result.stderr, rf"the print server at {relay.address} did not answer within 1 s; job \d+ on Morva was cancelled")
        self.cups.wait_for_jobs()
        self.assertEqual(self.cups.records(), [])

    def ends_at(self, what, pieces, words, *arguments, timeout=TIMEOUT):
        """Asserts that the program ends in time and with these words when the server answers a request with these pieces."""
        with FakeServer(PPD.read_bytes(), {what: pieces}) as server:
            result = self.trim_at(server.address, "-d", "Morva", *(arguments or [SAMPLE]), timeout=timeout)
            self.assertEqual(result.returncode, 1, result.stderr)
            self.assertRegex(result.stdout, f"^{REQUEST}$" if what == ipp.GET_JOB else "^$")
            self.assertRegex(result.stderr, words.format(f"the print server at {server.address}"))

    def test_an_answer_of_three_bytes_a_second_is_not_waited_for(self):
        content = fake_server.answer(bytes(1000))
        for what in (*REQUESTS, fake_server.PPD):
            with self.subTest(what):

                def slowly():
                    for byte in content:
                        yield bytes([byte])
                        server.ended.wait(0.3)

                with FakeServer(PPD.read_bytes(), {what: slowly}) as server:
                    result = self.trim_at(server.address, "-d", "Morva", SAMPLE)
                self.assertEqual(result.returncode, 1)
                self.assertRegex(result.stderr, rf"the print server at {server.address} (did not answer within 1 s|broke the connection)")

    def test_a_server_that_falls_silent_in_the_middle_of_an_answer_is_named(self):
        answers = {
            fake_server.PPD: fake_server.answer(PPD.read_bytes()),
            ipp.GET_PRINTER: fake_server.described(ipp.PRINTER_GROUP, fake_server.PRINTER),
            ipp.CREATE_JOB: fake_server.described(ipp.JOB_GROUP, JOB),
            ipp.GET_JOB: fake_server.described(ipp.JOB_GROUP, JOB),
        }
        for what, content in answers.items():
            with self.subTest(what):

                def half(content=content):
                    yield content[: len(content) // 2]
                    server.ended.wait()

                with FakeServer(PPD.read_bytes(), {what: half}) as server:
                    result = self.trim_at(server.address, "-d", "Morva", SAMPLE)
                self.assertEqual(result.returncode, 1)
                self.assertRegex(result.stdout, f"^{REQUEST}$" if what == ipp.GET_JOB else "^$")
                self.assertIn(f"the print server at {server.address} did not answer within 1 s", result.stderr)

    def test_an_endless_start_of_encryption_is_not_waited_for(self):
        for encryption, is_silent in itertools.product(("Always", "Required"), (True, False)):
            with self.subTest(encryption=encryption, is_silent=is_silent), TlsWithoutEnd(is_silent) as server:
                result = self.trim_at(server.address, "-d", "Morva", SAMPLE, CUPS_ENCRYPTION=encryption)
                self.assertEqual(result.returncode, 1)
                self.assertIn(f"the print server at {server.address} did not answer within 1 s", result.stderr)

    def test_an_endless_look_up_of_the_servers_name_is_not_waited_for(self):
        # Turns off AddressSanitizer's check that it is the first library loaded.
        sanitizer = os.environ.get("ASAN_OPTIONS", "") + ":verify_asan_link_order=0"
        around = {"CUPS_SERVER": "a-server", "TANDEM_TRIM_TIMEOUT": "1", "ASAN_OPTIONS": sanitizer}
        result = self.trim("-d", "Morva", SAMPLE, LD_PRELOAD=ENDLESS_LOOKUP, **around)
        self.assertEqual(result.returncode, 1)
        self.assertIn("no print server answers at a-server:", result.stderr)

    def test_an_endless_answer_is_refused(self):
        attribute = ipp.group(ipp.JOB_GROUP, [(ipp.TEXT, "x", "endless")])[1:] * 1000
        start = fake_server.head("Content-Length: 2000000000") + ipp.beginning(0) + bytes([ipp.JOB_GROUP])
        for what in REQUESTS:
            with self.subTest(what):
                self.ends_at(what, lambda: itertools.chain([start], itertools.repeat(attribute)), "{} (sent an answer that is too large|did not answer within 1 s)")

    def test_a_request_with_too_large_an_answer_is_not_repeated(self):
        # The time limit would leave time to repeat it.
        self.ends_at(ipp.GET_JOB, endless_compressed_answer, "{} sent an answer that is too large", timeout=10 * PATIENCE)

    def test_an_endless_compressed_answer_is_refused(self):
        self.ends_at(ipp.GET_JOB, endless_compressed_answer, "{} (sent an answer that is too large|did not answer within 1 s)")

    def test_endless_http_header_fields_are_not_waited_for(self):
        for what in (ipp.GET_PRINTER, ipp.GET_JOB, fake_server.PPD):
            with self.subTest(what):
                fields = itertools.chain([b"HTTP/1.1 200 OK\r\n"], itertools.repeat(b"X-More: and more\r\n" * 1000))
                self.ends_at(what, lambda fields=fields: fields, "{} did not answer within 1 s")

    def test_an_endless_ppd_is_refused(self):
        line = b"*% and more\n" * 1000
        for start, piece in (
            (fake_server.head("Content-Length: 8000000000"), line),
            (fake_server.head("Transfer-Encoding: chunked"), fake_server.chunk(line)),
        ):
            self.ends_at(fake_server.PPD, lambda: itertools.chain([start], itertools.repeat(piece)), "the PPD of Morva that {} sends is larger than 32 MB")

    def test_a_ppd_that_unpacks_to_gigabytes_is_refused(self):
        packer = zlib.compressobj(9, wbits=31)
        packed = packer.compress(PPD.read_bytes()) + packer.flush(zlib.Z_FULL_FLUSH)
        more = packer.compress(bytes(1 << 20)) + packer.flush(zlib.Z_FULL_FLUSH)
        bomb = fake_server.answer(packed + more * 4096)
        self.ends_at(fake_server.PPD, lambda: [bomb], "the PPD file of Morva at {} is larger than 32 MB")

    def test_a_server_that_redirects_requests_is_named(self):
        for what in REQUESTS:
            with self.subTest(what):
                elsewhere = b"HTTP/1.1 301 Moved Permanently\r\nLocation: /\r\nContent-Length: 0\r\n\r\n"
                with FakeServer(PPD.read_bytes(), {what: lambda: [elsewhere]}) as server:
                    result = self.trim_at(server.address, "-d", "Morva", SAMPLE)
                    self.assertEqual(result.returncode, 1)
                    self.assertIn(f"the print server at {server.address}", result.stderr)
                    self.assertLess(server.asked.count(what), 20)

    def test_a_document_without_a_valid_answer_is_confirmed_if_the_server_has_it(self):
        elsewhere = b"HTTP/1.1 301 Moved Permanently\r\nLocation: /\r\nContent-Length: 0\r\n\r\n"
        endless = itertools.chain([fake_server.head("Content-Length: 2000000000")], itertools.repeat(bytes(1000)))
        for pieces in ([elsewhere], endless, [fake_server.head()]):
            with FakeServer(PPD.read_bytes(), {ipp.SEND_DOCUMENT: lambda pieces=pieces: pieces}) as server:
                result = self.trim_at(server.address, "-d", "Morva", SAMPLE)
            self.assertEqual((result.returncode, result.stdout), (0, "request id is Morva-1 (1 file(s))\njob 1 on Morva: 7 of 7 options confirmed\n"), result.stderr)

    def test_an_incomplete_document_that_the_server_considers_complete_is_cancelled_at_once(self):
        # CUPS considers a document complete when the connection breaks between two HTTP chunks.
        for state, is_cancelled in ((ipp.PROCESSING, True), (ipp.COMPLETED, False)):
            attributes = [(ipp.ENUM, "job-state", state), (ipp.INTEGER, "number-of-documents", 1), (ipp.INTEGER, "job-k-octets", 1)]
            answers = {
                ipp.SEND_DOCUMENT: lambda: [fake_server.head()],
                ipp.GET_JOB: lambda attributes=attributes: [fake_server.described(ipp.JOB_GROUP, fake_server.JOB, attributes)],
            }
            with self.subTest(state), FakeServer(PPD.read_bytes(), answers) as server:
                result = self.trim_at(server.address, "-d", "Morva", SAMPLE, timeout=PATIENCE)
            self.assertEqual((result.returncode, result.stdout), (1, ""))
            end = "; job 1 on Morva was cancelled" if is_cancelled else ""
            self.assertIn(f"job 1 on Morva is incomplete: the print server at {server.address} has 1 of 18 KB of it{end}; print it again", result.stderr)
            self.assertEqual(server.asked.count(ipp.GET_JOB), 1)
            self.assertEqual(ipp.CANCEL_JOB in server.asked, is_cancelled)

    def test_a_job_is_incomplete_if_the_server_has_the_bytes_of_one_document_alone(self):
        one, both = (-(-count * SAMPLE.stat().st_size // 1024) for count in (1, 2))
        attributes = [(ipp.INTEGER, "number-of-documents", 2), (ipp.INTEGER, "job-k-octets", one)]
        odd = {ipp.GET_JOB: lambda: [fake_server.described(ipp.JOB_GROUP, fake_server.JOB, attributes)]}
        with FakeServer(PPD.read_bytes(), odd) as server:
            result = self.trim_at(server.address, "-d", "Morva", SAMPLE, SAMPLE)
        self.assertEqual((result.returncode, result.stdout), (1, ""))
        self.assertIn(f"job 1 on Morva is incomplete: the print server at {server.address} has {one} of {both} KB of it; print it again", result.stderr)

    # Slow connections.

    def test_a_document_may_take_as_long_as_the_connection_needs(self):
        # The system keeps the whole of the first document until the server takes it; the second one fills the system's buffers, so that the
        # program waits for more than a second in the middle of it.
        for size, speed, slow in ((400_000, 250_000, float("inf")), (4_000_000, 40_000, 80_000)):
            document = self.temporary_folder() / "long.pdf"
            document.write_bytes(SAMPLE.read_bytes() + os.urandom(size))
            with self.subTest(size), Slow(self.cups.address, speed, slow) as relay:
                result, (record,) = self.prints("-d", "Morva", document, CUPS_SERVER=relay.address, TANDEM_TRIM_TIMEOUT=str(TIMEOUT))
                self.assertRegex(result.stdout, rf"^{REQUEST}job \d+ on Morva: 7 of 7 options confirmed\n$", result.stderr)
                self.assertEqual((result.stderr, record.sha256), ("", digest(document)))

    # Standard descriptors.

    def test_closed_standard_descriptors_lose_no_job(self):
        self.cups.add_queue("Resting", PPD, enabled=False)
        for closed in itertools.chain.from_iterable(itertools.combinations(("<&-", ">&-", "2>&-"), count) for count in range(4)):
            with self.subTest(closed=closed):
                before = self.cups.jobs()
                command = f'exec "$@" {" ".join(closed)}'
                status = subprocess.run(
                    ["sh", "-c", command, "sh", PROGRAM, "-d", "Resting", "--set", "Valid=On", "--set", "Top=99", SAMPLE],
                    env=self.environment(),
                    capture_output=True,
                    timeout=PATIENCE,
                    check=False,
                )
                self.assertEqual((status.returncode, len(self.cups.jobs())), (0, len(before) + 1), status.stderr)


if __name__ == "__main__":
    unittest.main()
