"""For every status, a message about a server's refusal names the server, what it did and what to do about it."""

import itertools
import unittest

import fake_server
import ipp
from fake_server import FakeServer
from terminal_case import PPD, SAMPLE, TerminalCase

TIMEOUT = 1
# The statuses of IPP, with words of the fact and of the remedy.
STATUSES = {
    0x0400: ("does not understand the request", "options"),
    0x0401: ("does not allow that", "administrator"),
    0x0402: ("requires the password of", "administrator"),
    0x0403: ("does not allow that", "administrator"),
    0x0404: ("cannot do that at present", "try again later"),
    0x0405: ("waited too long", "try again"),
    0x0406: ("printer", "lpstat|choose one with -d"),
    0x0407: ("no longer has", "lpstat"),
    0x0408: ("does not accept a document of this size", "in parts"),
    0x0409: ("does not accept a value of this length", "-o"),
    0x040A: ("cannot print documents of this kind", "PDF"),
    0x040B: ("does not accept one of the options", "-o"),
    0x040C: ("client-error-uri-scheme-not-supported", "error log"),
    0x040E: ("cannot be combined", "-o"),
    0x0411: ("reports that the document is damaged", "PDF"),
    0x0412: ("cannot read the document", "PDF"),
    0x0418: ("needs the document's password", "without a password"),
    0x0419: ("not permitted to print", "protection"),
    0x041A: ("protection", "without that protection"),
    0x041B: ("cannot print the document", "PDF"),
    0x041C: ("which account", "administrator"),
    0x041D: ("closed the account", "administrator"),
    0x041E: ("limit of the account", "administrator"),
    0x041F: ("could not charge", "administrator"),
    0x0500: ("an internal error", "error log"),
    0x0501: ("cannot do that", "whether it is a print server"),
    0x0502: ("out of service", "try again later"),
    0x0503: ("this version of IPP", "whether it is a print server"),
    0x0504: ("device", "whether the printer is on"),
    0x0505: ("a temporary error", "try again"),
    0x0506: ("accepts no jobs", "cupsaccept"),
    0x0507: ("too busy", "try again"),
    0x0508: ("has cancelled the job", "administrator"),
    0x0509: ("several documents", "each file separately"),
    0x050A: ("deactivated the printer", "-d"),
    0x050B: ("accepts no more jobs", "lpstat -o"),
    0x050C: ("so many documents", "several jobs"),
    0x04FF: ("refuses the request (0x04ff)", "error log"),
}
HTTP_STATUSES = {
    400: ("does not understand the request", "options"),
    402: ("cannot do that", "whether it is a print server"),
    403: ("does not allow that", "administrator"),
    404: ("does not have what was requested", "lpstat"),
    405: ("cannot do that", "whether it is a print server"),
    408: ("waited too long", "try again"),
    410: ("no longer has", "lpstat"),
    413: ("does not accept a document of this size", "in parts"),
    415: ("cannot do that", "whether it is a print server"),
    500: ("an internal error", "error log"),
    501: ("cannot do that", "whether it is a print server"),
    502: ("out of service", "try again later"),
    503: ("out of service", "try again later"),
    504: ("out of service", "try again later"),
    505: ("cannot do that", "whether it is a print server"),
}
# Empty words of libcups and the C library, which help no user.
IDLE_WORDS = r"failed: |Success|successful-ok|Unauthorized(?!: the print server)|Internal Server Error|Unknown|\(null\)|No such file|: \n|\(\)"


def by_ipp(status, *attributes):
    """An answer of this status with these operation attributes."""
    return fake_server.answer(ipp.beginning(status, attributes) + bytes([ipp.END]))


def by_http(status):
    return f"HTTP/1.1 {status} Some Words\r\nContent-Length: 0\r\n\r\n".encode()


class MessagesTest(TerminalCase):
    def refused(self, operation, content):
        """The program's message when the server answers this operation with `content`; "<server>" replaces the print server's name."""
        with FakeServer(PPD.read_bytes(), {operation: lambda: [content]}) as server:
            around = {"CUPS_SERVER": server.address, "TANDEM_TRIM_TIMEOUT": str(TIMEOUT)}
            result = self.trim("-d", "Morva", SAMPLE, **around)
        self.assertEqual((result.returncode, result.stdout), (1, ""), result.stderr)
        self.assertNotRegex(result.stderr, IDLE_WORDS)
        return result.stderr.replace(f"the print server at {server.address}", "<server>")

    def check(self, said, words):
        """Asserts that the message is one line: the thing, what happened, and after a semicolon what to do."""
        fact, remedy = words
        self.assertRegex(said, r"^tandem-trim: [^\n]+; [^\n]+\n$")
        self.assertIn(fact, said)
        self.assertRegex(said.rpartition("; ")[2], remedy)

    def test_each_status_of_a_printer_says_what_it_means(self):
        for status, words in STATUSES.items():
            with self.subTest(f"{status:#06x}"):
                said = self.refused(ipp.GET_PRINTER, by_ipp(status))
                self.check(said, words)
                self.assertRegex(said, '<server>|there is no printer "Morva"')

    def test_each_status_of_a_new_job_says_what_it_means_and_that_nothing_was_printed(self):
        for status, words in STATUSES.items():
            with self.subTest(f"{status:#06x}"):
                said = self.refused(ipp.CREATE_JOB, by_ipp(status))
                self.check(said, words)
                self.assertRegex(said, "^tandem-trim: Morva refuses the job; nothing was printed: (Unauthorized: )?<server> ")

    def test_a_status_of_a_document_says_what_it_means_and_that_the_job_was_cancelled(self):
        # A sample: the tests above check the words of every status.
        for status, words in itertools.islice(STATUSES.items(), 0, None, 4):
            with self.subTest(f"{status:#06x}"):
                said = self.refused(ipp.SEND_DOCUMENT, by_ipp(status))
                self.check(said, words)
                self.assertRegex(said, "^tandem-trim: Morva did not accept .*<server> .*; job 1 on Morva was cancelled")

    def test_each_status_of_http_says_what_it_means(self):
        for operation, begins in ((ipp.GET_PRINTER, "<server> "), (ipp.CREATE_JOB, "Morva "), (fake_server.PPD, "<server> ")):
            for status, words in HTTP_STATUSES.items():
                if (operation, status) == (fake_server.PPD, 404):
                    continue  # a printer without a PPD
                with self.subTest(f"{operation} {status}"):
                    said = self.refused(operation, by_http(status))
                    self.assertRegex(said, f"^tandem-trim: {begins}")
                    self.assertIn("<server>", said)
                    self.check(said, words)
                    self.assertIn(f"(HTTP status {status})", said)

    def test_the_servers_own_words_are_shown(self):
        said = self.refused(ipp.CREATE_JOB, by_ipp(0x0403, (ipp.TEXT, "status-message", "Only on Mondays.")))
        self.check(said, ("does not allow that (Only on Mondays.)", "administrator"))

    def test_a_job_that_the_server_refuses_is_not_requested_again(self):
        for status in (401, 403, 404, 413):
            with self.subTest(status):
                odd = {ipp.CREATE_JOB: lambda status=status: [by_http(status)]}
                with FakeServer(PPD.read_bytes(), odd) as server:
                    result = self.trim("-d", "Morva", SAMPLE, CUPS_SERVER=server.address, TANDEM_TRIM_TIMEOUT="60")
                self.assertIn("Morva refuses the job; nothing was printed: ", result.stderr)
                self.assertEqual((server.asked.count(ipp.CREATE_JOB), server.asked.count(ipp.GET_JOBS)), (1, 0))

    def test_a_job_without_a_number_is_refused(self):
        said = self.refused(ipp.CREATE_JOB, by_ipp(0))
        self.check(said, ("nothing was printed: <server> did not give it a number", "print server"))

    def test_a_job_whose_number_is_lost_may_wait_at_a_server_that_does_not_list_its_jobs(self):
        for content in (b"", by_ipp(ipp.INTERNAL_ERROR)):
            odd = {ipp.CREATE_JOB: lambda: [b""], ipp.GET_JOBS: lambda content=content: [content]}
            with self.subTest(content), FakeServer(PPD.read_bytes(), odd) as server:
                result = self.trim("-d", "Morva", SAMPLE, CUPS_SERVER=server.address, TANDEM_TRIM_TIMEOUT=str(TIMEOUT))
            said = (
                f"tandem-trim: Morva did not answer the request for a job; nothing was printed: the print server at {server.address} broke the "
                "connection; an empty job may be left there (see lpstat -o Morva)\n"
            )
            self.assertEqual((result.returncode, result.stdout, result.stderr), (1, "", said))

    def test_a_job_whose_number_is_lost_is_cancelled_by_its_own_number_alone(self):
        another, ours = [(ipp.INTEGER, "job-id", 7)], [(ipp.INTEGER, "job-id", 8)]
        for before, number, cancels in (
            ([], ours, 1), ([another], ours, 1), ([another], [], 0), ([], [], 0), ([], [(ipp.INTEGER, "job-id", 0)], 0), ([], [(ipp.INTEGER, "job-id", -1)], 0)
        ):  # fmt: skip
            listed = b"".join(ipp.group(ipp.JOB_GROUP, job) for job in (*before, number))
            odd = {ipp.CREATE_JOB: lambda: [b""], ipp.GET_JOBS: lambda listed=listed: [fake_server.answer(ipp.beginning(0) + listed + server.job)]}
            with self.subTest(before=before, number=number), FakeServer(PPD.read_bytes(), odd) as server:
                result = self.trim("-d", "Morva", SAMPLE, CUPS_SERVER=server.address, TANDEM_TRIM_TIMEOUT=str(TIMEOUT))
                self.assertEqual(server.asked.count(ipp.CANCEL_JOB), cancels)
            self.assertEqual((result.returncode, result.stdout), (1, ""))
            self.assertIn("Morva did not answer the request for a job; nothing was printed", result.stderr)

    def test_a_missing_printer_is_reported_with_what_the_server_says_of_its_printers(self):
        missing = 'tandem-trim: there is no printer "Morva"; '
        unknown = fake_server.answer(ipp.beginning(ipp.NOT_FOUND) + bytes([ipp.END]), "Connection: close")
        for status, remedy, listed in (
            (ipp.NOT_FOUND, "the server has no printer; add one with lpadmin\n", (0, "the server has no printer; add one with lpadmin")),
            (ipp.INTERNAL_ERROR, "choose one that lpstat -e lists, with -d\n", (1, "{} has an internal error; the server's error log has the reason")),
        ):
            odd = {ipp.GET_PRINTER: lambda: [unknown], ipp.GET_PRINTERS: lambda status=status: [by_ipp(status)]}
            with self.subTest(status), FakeServer(PPD.read_bytes(), odd) as server:
                result = self.trim("-d", "Morva", SAMPLE, CUPS_SERVER=server.address)
                self.assertEqual((result.returncode, result.stdout, result.stderr), (1, "", missing + remedy))
                result = self.trim("--list", CUPS_SERVER=server.address)
                words = listed[1].format(f"the print server at {server.address}")
                self.assertEqual((result.returncode, result.stdout, result.stderr), (listed[0], "", f"tandem-trim: {words}\n"))

    def test_a_server_that_falls_silent_when_a_printer_is_missing_is_named(self):
        unknown = fake_server.answer(ipp.beginning(ipp.NOT_FOUND) + bytes([ipp.END]), "Connection: close")

        def silence():
            server.ended.wait()
            yield b""

        with FakeServer(PPD.read_bytes(), {ipp.GET_PRINTER: lambda: [unknown], ipp.GET_PRINTERS: silence}) as server:
            result = self.trim("-d", "Morva", SAMPLE, CUPS_SERVER=server.address, TANDEM_TRIM_TIMEOUT=str(TIMEOUT))
        self.assertEqual((result.returncode, result.stdout), (1, ""))
        self.assertIn(f"the print server at {server.address} did not answer within {TIMEOUT} s; ", result.stderr)

    def test_a_connection_that_breaks_is_reported_without_the_word_success(self):
        for operation in (ipp.GET_PRINTER, ipp.CREATE_JOB):
            with self.subTest(operation):
                said = self.refused(operation, b"")
                self.check(said, ("broke the connection", "^see whether it is still running\n"))


if __name__ == "__main__":
    unittest.main()
