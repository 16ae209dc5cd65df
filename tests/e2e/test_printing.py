"""From the command line to the printer's filter: options and documents."""

import os
import re
import subprocess
import time
import unittest

from patience import until
from terminal_case import (
    ACTS_THAT_CHANGE,
    CHANGED,
    DEFAULTS,
    MARGINS,
    PROGRAM,
    REQUEST,
    SAMPLE,
    TerminalCase,
    digest,
    each,
    of_panel,
    option_text,
)

FOREIGN = {
    "x-blank": "two words",
    "x-double": 'say "trim"',
    "x-single": "it's 5 o'clock",
    "x-backslash": "C:\\trim\\",
    "x-text": "Größe 日本 قص 🖨",
    "x-list": "1,2,3",
    "x-equals": "a=b",
    "x-braces": "a{b}c",
    "x-shell": "$HOME `id` ;|&<>*?",
    "x-number": "2.5",
    "x-tab": "left\tright",
    "x-lines": "one\ntwo",
    "x-long": "y" * 1000,
}


class PrintingTest(TerminalCase):
    def test_a_job_without_options_has_the_panels_seven_defaults(self):
        self.assertEqual(of_panel(self.options_of()), DEFAULTS)

    def test_settings_of_the_panel_reach_the_filter(self):
        self.assertEqual(of_panel(self.options_of(*each("--set", ACTS_THAT_CHANGE))), CHANGED)

    def test_the_panels_options_can_be_given_as_for_lp(self):
        options = [f"{keyword}={value}" for keyword, value in CHANGED.items()]
        for arguments in (each("-o", options), ["-o", " ".join(options)]):
            with self.subTest(arguments):
                self.assertEqual(of_panel(self.options_of(*arguments)), CHANGED)

    def test_the_panel_starts_from_the_options_given(self):
        options = self.options_of("-o", "MVTandemTrim=On MVTopMargin=7 MVLeftMargin=8", "--set", "Left=9")
        expected = DEFAULTS | {"MVTandemTrim": "On", "MVTopMargin": "7", "MVLeftMargin": "9"}
        self.assertEqual(of_panel(options), expected)

    def test_other_options_arrive_untouched(self):
        options = self.options_of(*each("-o", [option_text(*option) for option in FOREIGN.items()]))
        self.assertEqual({keyword: options.get(keyword) for keyword in FOREIGN}, FOREIGN)
        self.assertEqual(of_panel(options), DEFAULTS)

    def test_switches_and_several_options_in_one_argument_are_read_as_lp_reads_them(self):
        options = self.options_of("-o", "landscape", "-o", "noMirror PageSize=A5 sides=two-sided-long-edge")
        expected = {"landscape": "true", "Mirror": "false", "PageSize": "A5", "sides": "two-sided-long-edge"}
        self.assertEqual({keyword: options.get(keyword) for keyword in expected}, expected)

    def test_the_server_confirms_every_option(self):
        result, (record,) = self.prints("-d", "Morva", SAMPLE)
        said = f"request id is Morva-{record.job} (1 file(s))\njob {record.job} on Morva: 7 of 7 options confirmed\n"
        self.assertEqual(result.stdout, said)
        self.assertEqual(result.stderr, "")
        result, (record,) = self.prints("-d", "Morva", "-o", "landscape PageSize=A5", SAMPLE)
        self.assertIn(f"\njob {record.job} on Morva: 9 of 9 options confirmed\n", result.stdout)

    def test_a_connection_is_encrypted_if_the_user_requires_it(self):
        _, (record,) = self.prints("-d", "Morva", SAMPLE, CUPS_ENCRYPTION="Required")
        self.assertEqual(of_panel(record.options), DEFAULTS)
        # The server makes its key for the first such connection.
        self.assertTrue(list((self.cups.folder / "keys").glob("*.key")))

    def test_an_option_that_the_server_drops_is_named(self):
        # CUPS counts the printed sheets itself and ignores this option.
        result = self.trim("-d", "Morva", "-o", "job-media-sheets-completed=5 landscape", SAMPLE)
        self.assertEqual(result.returncode, 1)
        self.assertRegex(result.stdout, rf"^{REQUEST}$")
        lost = r'job \d+ on Morva: 8 of 9 options confirmed; lost: job-media-sheets-completed \(sent "5", the server has "0"\)\n'
        self.assertRegex(result.stderr, lost)

    def test_names_of_enumeration_values_reach_the_filter_as_numbers(self):
        given = {"orientation-requested": "landscape", "print-quality": "high", "finishings": "staple"}
        options = self.options_of(*each("-o", [option_text(*option) for option in given.items()]))
        expected = {"orientation-requested": "4", "print-quality": "5", "finishings": "4"}
        self.assertEqual({keyword: options.get(keyword) for keyword in expected}, expected)

    def test_the_longest_value_that_cups_carries_arrives(self):
        longest = "z" * 32767
        self.assertEqual(self.options_of("-o", f"x-longest={longest}").get("x-longest"), longest)

    def test_the_job_has_the_given_copies_and_title(self):
        _, (record,) = self.prints("-d", "Morva", "-n", "3", "-t", "Drei Größen", SAMPLE)
        self.assertEqual((record.copies, record.title), (3, "Drei Größen"))
        _, (record,) = self.prints("-d", "Morva", SAMPLE)
        self.assertEqual((record.copies, record.title), (1, "sample.pdf"))

    def test_a_document_arrives_byte_for_byte(self):
        folder = self.temporary_folder()
        document = folder / "ten megabytes – größer.pdf"
        document.write_bytes(SAMPLE.read_bytes() + os.urandom(10_000_000))
        for file in (SAMPLE, document):
            with self.subTest(file=file.name):
                _, (record,) = self.prints("-d", "Morva", file)
                self.assertEqual(record.sha256, digest(file))
                self.assertEqual(record.title, file.name)

    def test_documents_of_every_kind_that_the_printer_takes_arrive_unchanged(self):
        for document in self.documents_of_many_kinds():
            with self.subTest(document.name):
                _, (record,) = self.prints("-d", "Any", document)
                self.assertEqual(record.sha256, digest(document))

    def test_standard_input_is_printed_for_a_hyphen_and_without_a_file(self):
        for arguments in (["-"], [], ["--set", "Valid=On"]):
            with self.subTest(arguments):
                _, (record,) = self.prints("-d", "Morva", *arguments, stdin=SAMPLE.read_bytes())
                self.assertEqual((record.sha256, record.title), (digest(SAMPLE), "(stdin)"))

    def test_several_files_make_one_job_in_their_order(self):
        other = self.temporary_folder() / "other.pdf"
        other.write_bytes(SAMPLE.read_bytes() + b"% the other one\n")
        arguments = ["-d", "Morva", "--set", "Valid=On", "--set", "Top=12", other, "-", SAMPLE]
        _, records = self.prints(*arguments, stdin=b"%PDF-1.4\n% the one between\n")
        self.assertEqual([record.sha256 for record in records][::2], [digest(other), digest(SAMPLE)])
        self.assertEqual(len(records), 3)
        for record in records:
            self.assertEqual(record.options[MARGINS["Top"]], "12")

    def test_the_environment_may_name_the_printer_and_the_command_line_the_server(self):
        server = f"{self.cups.address[0]}:{self.cups.address[1]}"
        _, (record,) = self.prints("-h", server, SAMPLE, LPDEST="Morva", CUPS_SERVER="127.0.0.1:1")
        self.assertEqual(record.queue, "Morva")

    def test_a_stopped_printer_takes_the_job_and_the_program_says_that_it_waits(self):
        self.cups.add_queue("Resting", enabled=False)
        result = self.trim("-d", "Resting", SAMPLE)
        self.cups.remove("Resting")
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertRegex(result.stderr, "Resting is stopped.*cupsenable Resting")

    def test_a_long_upload_shows_its_progress_on_a_terminal(self):
        terminal, seen_by_program = os.openpty()
        self.addCleanup(os.close, terminal)
        os.set_blocking(terminal, False)
        command = [PROGRAM, "-d", "Morva", "-"]
        with subprocess.Popen(
            command, stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=seen_by_program, env=self.environment()
        ) as program:
            os.close(seen_by_program)
            shown = bytearray()

            def progress_is_shown():
                program.stdin.write(bytes(65536))
                try:
                    shown.extend(os.read(terminal, 4096))
                except BlockingIOError:
                    pass
                return re.search(rb"\(stdin\): [1-9]\d* MB sent", shown)

            program.stdin.write(b"%PDF-1.4\n")
            until(progress_is_shown, "the progress of the upload")
            program.communicate()
            self.assertEqual(program.returncode, 0)
            shown.extend(os.read(terminal, 65536))
        clear = "\r\x1b[K"
        self.assertRegex(shown.decode(), r"\(stdin\): \d+ MB sent")
        self.assertTrue(shown.decode().endswith(clear), "the line is left behind")

    def test_a_title_that_would_be_lost_is_refused(self):
        for title in ("tab\there", "line\nbreak", "y" * 256):
            with self.subTest(title[:12]):
                self.refuses("-d", "Morva", "-t", title, SAMPLE, words=["title", "-t"])

    def test_options_that_the_server_does_not_store_with_the_job_are_not_counted(self):
        result, (record,) = self.prints("-d", "Morva", "-o", "notify-events=job-completed job-name=Report", SAMPLE)
        self.assertIn("7 of 7 options confirmed", result.stdout)
        self.assertEqual(of_panel(record.options), DEFAULTS)

    def test_standard_input_is_printed_from_its_current_position(self):
        document = self.temporary_folder() / "document.pdf"
        document.write_bytes(b"read already\n" + SAMPLE.read_bytes())
        with open(document, "rb", buffering=0) as stdin:
            stdin.readline()
            result = subprocess.run([PROGRAM, "-d", "Morva", "-"], stdin=stdin, capture_output=True, env=self.environment(), check=False)
        self.assertEqual((result.returncode, result.stderr), (0, b""))
        self.cups.wait_for_jobs()
        self.assertEqual([record.sha256 for record in self.cups.records()], [digest(SAMPLE)])

    def test_progress_is_shown_only_on_a_terminal(self):
        with subprocess.Popen(
            [PROGRAM, "-d", "Morva", "-"],
            stdin=subprocess.PIPE,
            stdout=subprocess.PIPE,
            stderr=subprocess.PIPE,
            env=self.environment(),
        ) as program:
            program.stdin.write(b"%PDF-1.4\n" + bytes(65536))
            program.stdin.flush()
            until(lambda: self.cups.jobs("not-completed"), "the start of the job")
            # By this time, a terminal would show the progress.
            end = time.monotonic() + 1
            until(lambda: program.stdin.write(bytes(65536)) and time.monotonic() > end, "a long upload")
            _, said = program.communicate()
        self.assertEqual((program.returncode, said), (0, b""))


if __name__ == "__main__":
    unittest.main()
