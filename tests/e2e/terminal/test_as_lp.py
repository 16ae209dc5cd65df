"""The program compared with lp on the same server: the same command line makes the same job."""

import datetime
import itertools
import os
import random
import re
import subprocess
import unittest

import ipp
from fake_server import FakeServer
from patience import PATIENCE
from relay import Overhearing
from terminal_case import DEFAULTS, LARGEST, PPD, PROGRAM, PROJECT, REQUEST, SAMPLE, TerminalCase

LP = "/usr/bin/lp"
GET_SUBSCRIPTIONS = 0x0019
COMPARISON = PROJECT / "docs/lp.md"
# Values for the placeholders in lp --help.
VALUES = {
    "destination": "Plain", "server[:port]": "{server}", "HH:MM": "{later}", "id": "12", "num-copies": "2", "option[=value]": "landscape",
    "media=size": "media=A5", "number-up=N": "number-up=2", "orientation-requested=N": "orientation-requested=4",
    "print-quality=N": "print-quality=5", "page-list": "1-2", "priority": "7", "title": "Title", "username": "amy",
}  # fmt: skip
# The environment variables that affect lp, with some that its manual page omits: a value, and arguments and variables that show its effect.
VARIABLES = {
    "LPDEST": ("Plain", [], {}),
    "PRINTER": ("Plain", [], {}),
    "CUPS_SERVER": ("127.0.0.1:1", ["-d", "Plain"], {}),
    "CUPS_USER": ("carl", ["-d", "Plain"], {}),
    "CUPS_ENCRYPTION": ("Required", ["-d", "Plain"], {}),
    "IPP_PORT": ("1", ["-d", "Plain"], {"CUPS_SERVER": "127.0.0.1"}),
    "USER": ("nobody", ["-d", "Plain"], {}),
    "HOME": ("/nonexistent", ["-d", "Plain"], {}),
    "CUPS_SERVERROOT": ("/nonexistent", ["-d", "Plain"], {}),
}
# Attributes that differ between any two jobs, or by how the client names the printer.
OF_ONE_JOB = re.compile(r"job-(id|uri|uuid|more-info|printer-up-time)|(date-)?time-at-.*|number-of-intervening-jobs|(job-)?printer-uri|tandem-trim-request")

# Far from now, so that no job is released during a test.
LATER = (datetime.datetime.now(datetime.timezone.utc) + datetime.timedelta(hours=12)).strftime("%H:%M")

# Options with their values, from which the random test chooses.
DRAWN = [
    ["-n", "3"], ["-n2"], ["-o", "copies=4"],
    ["-t", "Two words"], ["-t", "-x"], ["-t", "Größe [1,2]"], ["-t", ""],
    ["-q", "77"], ["-q1"], ["-o", "job-priority=10"],
    ["-H", "hold"], ["-H", "immediate"], ["-H", LATER], ["-H", f"{LATER}:20"], ["-o", f"job-hold-until={LATER}"],
    ["-P", "1,3-5"], ["-P", "2-"], ["-P", "-4"], ["-P", "1, 7"], ["-o", "page-ranges=1-2"],
    ["-o", "landscape"], ["-o", "nolandscape"], ["-o", "sides=two-sided-long-edge number-up=2"], ["-o", "media=A5"],
    ["-o", "PageSize=A5"], ["-o", "orientation-requested=4"], ["-o", "print-quality=5"], ["-o", "job-sheets=standard"],
    ["-o", "job-sheets=none,confidential"], ["-o", 'x-note="two words" x-more=\'it "is"\''], ["-o", "x-list=1,2,3"],
    ["-o", "fit-to-page scaling=50"], ["-o", "finishings=4"], ["-o", "raw"], ["-o", "document-format=application/pdf"],
    ["-c"], ["-s"], ["-cs"], ["-m"], ["-E"], ["-U", "amy"], ["-Ubob"],
    ["-o", "MVTandemTrim=On MVTopMargin=7"], ["-o", "MVPrintPosition=Left"],
]  # fmt: skip
# With these, both programs send nothing and fail. They come last, since the last of several values counts.
WRONG = [["-n", "0"], ["-q", "0"], ["-q", "101"], ["-P", "banana"], ["-P", "5-3"]]
# Where a job goes: arguments and variables. "draft" is an instance of Plain and of Morva, with its own saved options.
PLACES = [
    (["-d", "Plain"], {}),
    (["-dPlain/draft"], {}),
    (["-d", "plain"], {}),
    (["-d", "Morva"], {}),
    (["-d", "Morva/draft"], {}),
    (["-d", "Morva/unknown"], {}),
    ([], {"LPDEST": "Plain/draft"}),
    ([], {"LPDEST": "Morva", "PRINTER": "Plain"}),
    ([], {"PRINTER": "Plain"}),
    (["-d", "Plain"], {"CUPS_USER": "carl"}),
    (["-d", "Plain"], {"USER": "nobody", "IPP_PORT": "1", "CUPS_ENCRYPTION": "IfRequested"}),
    (["-d", "Closed"], {}),
    (["-d", "Nowhere"], {}),
    ([], {"LPDEST": "Nowhere", "PRINTER": "Plain"}),
    ([], {}),
]
COMBINATIONS = 56
# The user's file of saved options, and the system's.
SAVED = {
    "nothing": ("", ""),
    "both files": ("Dest Plain x-a=user x-b=user\n", "Dest Plain x-b=system x-c=system\nDest Plain/draft x-d=1\n"),
    "instances": ("Dest Plain/draft x-a=draft\nDest Plain x-a=plain\nDest Plain/draughts x-b=1\n", ""),
    "comments": ("# mine\nDest Plain x-a=1 # why\n  #\nDest Plain/draft x-a=\\#1 x-b=2#3\n", "#Dest Plain x-c=1\n"),
    "odd quoting": ("Dest Plain x-a='two words' x-b=\"it\\'s\" x-c=a\\ b x-d=',' x-f=end\\ \n", "Dest Plain {x-g=1 x-h=2}\n"),
    "a brace after two blanks": ("Dest Plain  {x-a=1 x-b=2}\n", ""),
    "an open quote": ("Dest Plain x-a='one x-b=2\nDest Plain/draft x-a=\"\n", ""),
    "an empty keyword": ("Dest Plain x-a=1 =2 x-b=3\n", ""),
    "lines as on DOS": ("Dest Plain x-a=1\r\nDest Plain/draft x-a=2\r\n", "Dest Plain x-b=1\rDest Plain/draft x-b=2\r"),
    "a long line": ("Dest Plain x-a=1 " + "x" * 8160 + " x-b=2 x-c=3 x-d=4\n", "Dest Plain x-e=" + "y" * 8170 + " Dest Plain x-f=1\n"),
    "a printer twice": ("Dest Plain x-a=1\nDest Plain x-a=2 x-b=2\n", "Dest plain x-c=1\nDest PLAIN x-c=2\n"),
    "no last newline": ("Dest Plain x-a=1\nDest Plain/draft x-a=2", "Dest Plain x-b=1"),
    "long keywords": ("Dest Plain " + " ".join("x" * length + "=1" for length in (246, 247, 248, 255)) + "\n", ""),
    "an empty instance": ("Dest Plain/ x-a=1\nDest Plain x-b=2\n", "Dest plain/ x-c=1\n"),
    "keywords without a value": ("Dest Plain x-a nox-b no x-c= x-d\n", ""),
    "other letter case": ("DEST plain X-A=1 Copies=2\ndest PLAIN/DRAFT x-a=3 SIDES=two-sided-long-edge\n", "Dest Plain x-a=0\n"),
    "what the server says": ("Dest Plain printer-info=mine job-sheets=none,none x-a=1 printer-state=5\n", ""),
    "print quality twice": ("Dest Plain cupsPrintQuality=High\n", "Dest Plain print-quality=3\n"),
    "blanks": ("  Dest\tPlain \t x-a=1\v x-b=2  \n\n \nDest\nDest \nOther Plain x-c=1\n", ""),
    "a default": ("Default Plain x-a=1\n", "Default Morva x-b=1\nDest Plain x-c=1\n"),
    "an instance as the default": ("Dest Plain/draft x-a=1\nDefault Plain/draft x-a=2\nDefault Plain x-a=3\n", ""),
    "a default of the system": ("Dest Plain x-a=1\n", "Default Plain x-b=1\n"),
    "a default that is gone": ("Default Nowhere x-a=1\n", "Default Plain x-b=1\n"),
    "a zero byte": ("Dest Plain x-a=1\0 x-b=2\nDest Plain/draft x-a=2\n", ""),
}
# Names that find and xargs pass on unchanged.
NAMES = ["a.pdf", "[b,c].pdf", "größe=%%{}.pdf"]
# Records each exit status, since xargs returns only one.
PIPELINE = """find . -name '*.pdf' | sort | xargs -n1 sh -c '"$@"; echo $? >>"$0"' "$0" "$@" """


class AsLpTest(TerminalCase):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        plain = cls.cups.folder / "plain.ppd"
        lines = PPD.read_text().splitlines(keepends=True)
        plain.write_text("".join(line for line in lines if not line.startswith("*APDialogExtension")))
        # Stopped printers, whose jobs stay as they arrive.
        cls.cups.add_queue("Plain", plain, enabled=False)
        cls.cups.add_queue("Morva", PPD, enabled=False)
        cls.cups.add_queue("Closed", plain, accepting=False)
        printer = [(ipp.URI, "printer-uri", "ipp://localhost/printers/Plain")]
        (facts,) = ipp.ask(cls.cups.address, ipp.GET_PRINTER, printer, path="/printers/Plain")
        cls.defaults = {name.removesuffix("-default"): values for name, values in facts.items() if name.endswith("-default")}

    def setUp(self):
        super().setUp()
        for printer in ("Plain", "Morva"):
            for name, options in ((printer, "x-saved=yes"), (f"{printer}/draft", "x-saved=draft print-quality=3 job-sheets=standard")):
                subprocess.run(["lpoptions", "-p", name, "-o", options], env=self.environment(), check=True)

    def program(self, program, *arguments, stdin=subprocess.DEVNULL, **variables):
        return subprocess.run(
            [program, *arguments], stdin=stdin, capture_output=True, text=True, env=self.environment(**variables), timeout=PATIENCE, check=False
        )

    def job(self, number):
        """The job's attributes without those in OF_ONE_JOB, plus the printer's defaults that it lacks, since lp adds these to each job."""
        attributes = [(ipp.URI, "job-uri", f"ipp://localhost/jobs/{number}"), (ipp.NAME, "requesting-user-name", "root")]
        (job,) = ipp.ask(self.cups.address, ipp.GET_JOB, attributes, path="/jobs/")
        return self.defaults | {name: values for name, values in job.items() if not OF_ONE_JOB.fullmatch(name)}

    def jobs_of(self, act):
        """Returns the result of `act` and the jobs that it makes."""
        before = self.cups.jobs()
        result = act()
        return result, [self.job(number) for number in self.cups.jobs() if number not in before]

    def assert_same(self, ours, lps):
        """Asserts that the jobs are the same, except that ours has all of the panel's options or none, and a name for standard input."""
        self.assertEqual(len(ours), len(lps))
        for our, lp in zip(ours, lps):
            if our["job-name"] == ["(stdin)"]:
                self.assertEqual(our.pop("document-name-supplied"), ["(stdin)"])
            if "MVTandemTrim" in our:
                lp = {keyword: [value] for keyword, value in DEFAULTS.items()} | lp
            else:
                lp = {keyword: values for keyword, values in lp.items() if keyword not in DEFAULTS}
            self.assertEqual(our, lp)

    def beside(self, *arguments, stdin=None, **variables):
        """Runs both programs with these arguments, asserts that their jobs are the same, and returns both results."""

        def run(program):
            with open(stdin or os.devnull, "rb") as file:
                return self.program(program, *arguments, stdin=file, **variables)

        lp, lps = self.jobs_of(lambda: run(LP))
        our, ours = self.jobs_of(lambda: run(PROGRAM))
        self.assert_same(ours, lps)
        return our, lp

    # Options.

    def rows(self):
        """What docs/lp.md says about each option and variable. Asserts that each has only one row."""
        rows = re.findall(r"^\| (`.*?`) \| (.+) \|$", COMPARISON.read_text(), re.MULTILINE)
        cells = [(cell, here) for cells, here in rows for cell in re.findall(r"`([^`]+)`", cells)]
        self.assertEqual(len(dict(cells)), len(cells), "something has two rows")
        return dict(cells)

    def test_every_option_of_lp_is_documented_and_accepted_or_refused_as_documented(self):
        values = {"{server}": "{}:{}".format(*self.cups.address), "{later}": LATER}
        text = self.program(LP, "--help").stdout
        options = [re.split(r" {2,}", line)[0] for line in text.splitlines() if line.startswith("-")]
        self.assertGreater(len(options), 20, text)
        rows, help_text = self.rows(), self.program(PROGRAM, "--help").stdout
        self.assertEqual({row for row in rows if row.startswith("-")} - {"-", "--"}, set(options))
        for option in options:
            name, *form = option.split(" ", 1)
            arguments = [name, *(values.get(VALUES.get(word, word), VALUES.get(word, word)) for word in form)]
            with self.subTest(arguments):
                self.assertRegex(help_text, rf"(?m)^ +{name}\b")
                self.assertRegex(rows[option], "^(the same|refused with the command that does it)")
                if rows[option].startswith("the same"):
                    our, lp = self.beside("-d", "Plain", *arguments, SAMPLE)
                    self.assertEqual((our.returncode, lp.returncode), (0, 0), our.stderr)
                else:
                    self.refuses("-d", "Plain", *arguments, SAMPLE, status=2)
            # The values in backquotes, in the part of the row that says "are refused".
            refused = [part.split(" refused")[0] for part in rows[option].split(";") if "are refused" in part]
            for value in re.findall(r"`([^`]+)`", " ".join(refused)):
                with self.subTest([name, value]):
                    self.refuses("-d", "Plain", name, value.replace('""', ""), SAMPLE, status=2)

    def test_every_variable_of_lp_is_documented_and_has_the_same_effect(self):
        rows = self.rows()
        self.assertEqual({row for row in rows if re.fullmatch("[A-Z_]+", row)}, set(VARIABLES))
        self.trim("-E", "--list")  # makes the server create its key
        for variable, (value, arguments, around) in VARIABLES.items():
            with self.subTest(variable):
                self.assertRegex(rows[variable], "^the same")
                our, lp = self.beside(*arguments, SAMPLE, **around, **{variable: value})
                self.assertEqual(our.returncode, lp.returncode, our.stderr + lp.stderr)
                self.assertEqual(our.returncode, 1 if value.endswith("1") else 0)

    def test_every_option_of_lp_makes_the_same_job(self):
        for options in DRAWN + WRONG:
            with self.subTest(options):
                our, lp = self.beside("-d", "Plain", *options, SAMPLE)
                self.assertEqual((our.returncode == 0, lp.returncode == 0), (options in DRAWN,) * 2, our.stderr + lp.stderr)

    def test_options_may_come_before_and_after_files_until_two_dashes(self):
        folder = self.temporary_folder()
        for name in ("-n", "--", "[a.pdf,b.pdf]", "a.pdf", "b.pdf", "{}", "%%", '"a"', "a b"):
            (folder / name).write_bytes(SAMPLE.read_bytes())
        self.addCleanup(os.chdir, os.getcwd())
        os.chdir(folder)
        for arguments in (
            ["[a.pdf,b.pdf]"],
            ["{}", "%%", '"a"', "a b"],
            ["a.pdf", "-n", "2", "b.pdf", "-t", "Title"],
            ["-n2", "--", "-n", "--", "a.pdf"],
            ["-t", "--", "a.pdf"],
        ):
            with self.subTest(arguments):
                our, lp = self.beside("-d", "Plain", *arguments)
                self.assertEqual((our.returncode, lp.returncode), (0, 0), our.stderr)

    def test_a_connection_is_encrypted_with_the_option_for_it(self):
        for program, option in itertools.product((LP, PROGRAM), ([], ["-E"])):
            with self.subTest(program=program, option=option), Overhearing(self.cups.address) as relay:
                result = self.program(program, *option, "-d", "Plain", SAMPLE, CUPS_SERVER=relay.address)
                self.assertEqual(result.returncode, 0, result.stderr)
                self.assertEqual(b"%PDF" in relay.heard, not option)

    def test_both_programs_request_the_same_mail(self):
        mails = []
        for program in (LP, PROGRAM):
            before = self.cups.jobs()
            self.program(program, "-d", "Plain", "-U", "amy", "-m", SAMPLE)
            (job,) = set(self.cups.jobs()) - set(before)
            asked = ipp.ask(self.cups.address, GET_SUBSCRIPTIONS, [(ipp.URI, "printer-uri", "ipp://localhost/")])
            (mail,) = [mail for mail in asked if mail["notify-job-id"] == [job]]
            mails.append({name: mail[name] for name in ("notify-events", "notify-subscriber-user-name", "notify-recipient-uri")})
        self.assertEqual(*mails)
        self.assertTrue(mails[0]["notify-recipient-uri"][0].startswith("mailto:amy@"))

    # Saved options.

    def save(self, user, system):
        for file, text in ((".cups/lpoptions", user), ("lpoptions", system)):
            path = self.cups.folder / "home" / file
            path.parent.mkdir(exist_ok=True)
            path.write_bytes(text.encode())

    def test_saved_options_make_the_same_job(self):
        for what, files in SAVED.items():
            self.save(*files)
            for place in (["-d", "Plain"], ["-d", "plain/draft"], []):
                with self.subTest(what, place=place):
                    our, lp = self.beside(*place, SAMPLE)
                    self.assertEqual(our.returncode, lp.returncode, our.stderr + lp.stderr)

    def test_saved_options_of_the_servers_default_printer_make_the_same_job(self):
        self.cups.add_queue("Usual", PPD, enabled=False)
        self.addCleanup(self.cups.remove, "Usual")
        for option in (["-d", "Usual"], ["-p", "Usual", "-o", "x-own-default=text", "-o", "copies-default=3"]):
            subprocess.run(["lpadmin", *option], env=self.environment(), check=True)
        for files in (("", ""), *SAVED.values()):
            self.save(*(text.replace("Plain", "Usual").replace("Default", "Dest") for text in files))
            our, lp = self.beside(SAMPLE)
            self.assertEqual((our.returncode, lp.returncode), (0, 0), our.stderr + lp.stderr)

    def test_a_job_takes_no_more_requests_than_lps_and_is_made_before_its_document_is_sent(self):
        def requests(program):
            before = len(self.cups.requests())
            self.assertEqual(self.program(program, *place, SAMPLE).returncode, 0)
            return self.cups.requests()[before:]

        for files in (("", ""), ("Default Morva x-a=1\nDest Morva/draft x-a=1 sides=one-sided", "Dest Morva x-b=1 x-c=1")):
            self.save(*files)
            for place in (["-d", "Morva"], ["-d", "Morva/draft"], *([[]] if files[0] else [])):
                with self.subTest(files, place=place):
                    ours, lps = requests(PROGRAM), requests(LP)
                    self.assertLessEqual(len(ours), len(lps), ours)
                    self.assertEqual([line.split()[-2] for line in ours if "Job" in line or "Document" in line], ["Create-Job", "Send-Document", "Get-Job-Attributes"])

    # The printers.

    def test_the_instance_follows_the_last_slash(self):
        for name in ("Plain/draft/x", "Plain//draft"):
            with self.subTest(name):
                our, lp = self.beside("-d", name, SAMPLE)
                self.assertEqual((our.returncode, lp.returncode), (1, 1))
                self.assertIn(f'there is no printer "{name.rpartition("/")[0]}"; choose one with -d: Closed, Morva, Plain', our.stderr)

    def test_a_printers_name_with_a_question_mark_or_hash_sign_is_taken_as_a_whole(self):
        for name, ppd in (("Morva?x", None), ("Plain?x", PPD)):
            self.cups.add_queue(name, ppd, enabled=False)
            self.addCleanup(self.cups.remove, name)
        with self.subTest("with a PPD"):
            result = self.trim("-d", "Plain?x", "--summary", "--set", "Valid=On", "--set", "Top=99")
            self.assertIn(f"Top Margin: {LARGEST['Top']}\n", result.stdout, result.stderr)
        with self.subTest("without a PPD"):
            self.assertIn("Morva?x has no PPD", self.trim("-d", "Morva?x", "--summary").stderr)
        for program in (LP, PROGRAM):
            result = self.program(program, "-d", "Morva?x", SAMPLE)
            self.assertRegex(result.stdout, r"^request id is Morva\?x-\d+ ", result.stderr)
        with FakeServer(PPD.read_bytes()) as server:
            for name in ("Morva#x", "#"):
                with self.subTest(name):
                    result = self.trim("-d", name, "--summary", CUPS_SERVER=server.address)
                    self.assertEqual((result.returncode, result.stdout), (1, ""))
                    self.assertIn(f'there is no printer "{name}"; choose one with -d: Morva', result.stderr)

    def test_lp_in_the_variable_printer_names_no_printer_and_in_lpdest_it_names_one(self):
        self.save("Default Plain\n", "")
        for variable, status in (("PRINTER", 0), ("LPDEST", 1)):
            with self.subTest(variable):
                our, lp = self.beside(SAMPLE, **{variable: "lp"})
                self.assertEqual((our.returncode, lp.returncode), (status, status), our.stderr + lp.stderr)

    def test_the_list_names_each_printer_its_panel_and_the_default(self):
        printers = ["Closed  no panel", "Morva   panel", "Plain   no panel"]
        self.assertEqual(self.trim("--list").stdout.splitlines(), printers)
        for variables in ({"LPDEST": "Morva"}, {"PRINTER": "morva/draft"}):
            with self.subTest(variables):
                self.assertEqual(self.trim("--list", **variables).stdout.splitlines(), [printers[0], printers[1] + "  default", printers[2]])
        subprocess.run(["lpoptions", "-d", "Plain"], env=self.environment(), check=True, stdout=subprocess.DEVNULL)
        self.assertEqual(self.trim("--list").stdout.splitlines(), [*printers[:2], printers[2] + "  default"])
        names = {name.partition("/")[0] for name in self.program("lpstat", "-e").stdout.split()}
        self.assertEqual(names, {line.split()[0] for line in printers})

    def test_the_list_says_why_a_panel_is_missing(self):
        empty = self.temporary_folder()
        listed = self.trim("--list", "--plugin", empty)
        self.assertEqual(listed.returncode, 0, listed.stderr)
        self.assertRegex(listed.stdout, rf"(?m)^Morva   no panel: the plug-in \S+\.bundle is not in {empty}$")

    def test_the_list_is_refused_with_a_file_and_without_a_server(self):
        self.refuses("--list", SAMPLE, status=2, words=["--list", "leave files out"])
        self.refuses("--list", "-h", "127.0.0.1:1", words=["no print server answers at 127.0.0.1:1"])

    # Standard output.

    def test_a_sent_job_is_reported_as_by_lp(self):
        for arguments, stdin in (([SAMPLE], None), ([SAMPLE, SAMPLE], None), (["-"], SAMPLE), ([], SAMPLE)):
            with self.subTest(arguments):
                our, lp = self.beside("-d", "Plain", *arguments, stdin=stdin)
                said, confirmation = our.stdout.splitlines()
                self.assertEqual(re.sub(r"-\d+ ", "-N ", said), re.sub(r"-\d+ ", "-N ", lp.stdout.strip()))
                self.assertRegex(confirmation, r"^job \d+ on Plain: \d of \d options confirmed$")
                number = re.match(r"request id is Plain-(\d+) ", said)[1]
                self.assertEqual(number, str(self.cups.jobs()[-1]))

    def test_a_silent_job_writes_nothing_to_standard_output(self):
        our, lp = self.beside("-d", "Plain", "-s", SAMPLE)
        self.assertEqual((our.stdout, lp.stdout), ("", ""))
        self.assertIn("Plain is stopped", our.stderr)
        result = self.trim("-d", "Plain", "-s", "--summary", "--json", SAMPLE)
        self.assertTrue(result.stdout.startswith("{"))

    def test_json_is_the_only_output(self):
        self.assertNotRegex(self.trim("-d", "Plain", "--json", SAMPLE).stdout, REQUEST)

    # Standard input.

    def test_standard_input_is_printed_if_no_file_is_named(self):
        pipe = ["sh", "-c", 'cat "$0" | "$@"', SAMPLE]
        for arguments in ([], ["-"], ["-n", "2"]):
            with self.subTest(arguments):
                results = [self.jobs_of(lambda: self.program(*pipe, program, "-d", "Plain", *arguments)) for program in (PROGRAM, LP)]
                (our, ours), (_, lps) = results
                self.assertEqual((our.returncode, len(ours)), (0, 1), our.stderr)
                self.assert_same(ours, lps)

    def test_a_screen_makes_no_difference_to_standard_input(self):
        for arguments in ([], ["-"], ["-s"], ["-q", "80"], ["-H", "immediate"], ["-P", "1-4"], ["-m"], ["-t", "Title"], ["-n", "2"]):
            with self.subTest(arguments):
                screen = {"DISPLAY": ":none"}
                result = self.trim("-d", "Plain", *arguments, stdin=SAMPLE.read_bytes(), **screen)
                self.assertEqual(result.returncode, 0, result.stderr)
                self.assertNotIn("screen", result.stderr)

    def test_a_silent_job_opens_no_dialog(self):
        self.assertIn("screen", self.trim("-d", "Plain", SAMPLE, DISPLAY=":none").stderr)
        self.assertNotIn("screen", self.trim("-d", "Plain", "-s", SAMPLE, DISPLAY=":none").stderr)

    def test_empty_standard_input_makes_no_job(self):
        self.refuses("-d", "Plain", stdin=b"", words=["standard input is empty", "nothing was sent"])
        self.refuses("-d", "Plain", "-", stdin=b"", words=["standard input is empty"])

    def test_options_that_print_nothing_leave_standard_input_unread(self):
        reader, writer = os.pipe()
        os.write(writer, SAMPLE.read_bytes())
        os.close(writer)
        for options in (["--summary"], ["--json"], ["--save-as-default"], ["--reset-defaults"], ["--list"]):
            with self.subTest(options):
                result, jobs = self.jobs_of(lambda: self.program(PROGRAM, *options, stdin=reader, LPDEST="Plain"))
                self.assertEqual((result.returncode, jobs), (0, []), result.stderr)
        with os.fdopen(reader, "rb") as pipe:
            self.assertEqual(pipe.read(), SAMPLE.read_bytes())

    def test_without_files_and_standard_input_the_options_are_shown(self):
        terminal, seen_by_program = os.openpty()
        self.addCleanup(os.close, terminal)
        self.addCleanup(os.close, seen_by_program)
        closed = ["sh", "-c", 'exec "$@" <&-', "sh", PROGRAM]
        for what, program, stdin in (
            ("/dev/null", [PROGRAM], subprocess.DEVNULL),
            ("a terminal", [PROGRAM], seen_by_program),
            ("closed", closed, None),
        ):
            with self.subTest(what):
                result, jobs = self.jobs_of(lambda: self.program(*program, "-d", "Morva", stdin=stdin))
                self.assertEqual((result.returncode, jobs), (0, []), result.stderr)
                self.assertIn("-o MVTandemTrim=Off\n", result.stdout)

    # Random combinations.

    def test_random_command_lines_make_the_same_jobs_and_exit_statuses(self):
        seed = int(os.environ.get("TANDEM_TRIM_SEED", 0)) or random.SystemRandom().randrange(1, 1 << 32)
        draw = random.Random(seed)
        folder = self.temporary_folder()
        for name in NAMES:
            (folder / name).write_bytes(SAMPLE.read_bytes() + name.encode())
        for number in range(COMBINATIONS):
            place, variables = PLACES[number % len(PLACES)]
            options = [place, *draw.sample(DRAWN, draw.randrange(1, 6))]
            draw.shuffle(options)
            options += draw.sample(WRONG, 1) if draw.random() < 0.1 else []
            if draw.random() < 0.2:
                options.insert(0, ["-h", f"{self.cups.address[0]}:{self.cups.address[1]}"])
                variables = variables | {"CUPS_SERVER": "127.0.0.1:1"}
            words = list(itertools.chain.from_iterable(options))
            with self.subTest(words, seed=seed, **variables):

                def statuses(program):
                    statuses_file = self.temporary_folder() / "statuses"
                    command = ["sh", "-c", PIPELINE, statuses_file, program, *words, "--"]
                    subprocess.run(command, cwd=folder, capture_output=True, env=self.environment(**variables), timeout=PATIENCE, check=True)
                    return statuses_file.read_text().split()

                lp, lps = self.jobs_of(lambda: statuses(LP))
                our, ours = self.jobs_of(lambda: statuses(PROGRAM))
                self.assertEqual(len(lp), len(NAMES))
                # The program reports a wrong command line by a special status.
                is_wrong = any(option in WRONG for option in options)
                self.assertEqual(our, ["2"] * len(NAMES) if is_wrong else lp)
                self.assertTrue(not is_wrong or "0" not in lp, lp)
                self.assert_same(ours, lps)


if __name__ == "__main__":
    unittest.main()
