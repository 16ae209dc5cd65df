"""Bash, zsh and fish complete the program's options, printers, settings and choices, with the installed scripts."""

import itertools
import os
import shlex
import subprocess
import unittest

import fake_server
import ipp
from fake_server import FakeServer
from relay import Overhearing, Slow
from terminal import Terminal
from terminal_case import BUILD, FOLDLINE, FOLDLINE_PPD, PPD, PROGRAM, SAMPLE, TerminalCase

ODD = "Odd;touch${IFS}made"  # a printer's name with a command that bash could run
PANELS = f"{BUILD}:{FOLDLINE.parent}"  # the folders of both families' panels
SETTINGS = {"Valid=", "Direction=", "Position=", "Top=", "Bottom=", "Left=", "Right="}
# What is typed before Tab, and the command line afterwards.
COMPLETED = {
    "-d Mor": "-d Morva ",
    "--set Val": "--set Valid=",
    "--set Valid=Of": "--set Valid=Off ",
    "--applications st": "--applications status ",
    "-dMor": "-dMorva ",
    "--set=Val": "--set=Valid=",
    "--set=Valid=Of": "--set=Valid=Off ",
    "-d Morva --set Position=Cen": "-d Morva --set Position=Center ",
    "--reset-d": "--reset-defaults ",
    "-d Morva sam": "-d Morva sample.pdf ",
    "-d Morva -- --sum": "-d Morva -- --sum",  # the beginning of a file's name
    # A printer of another family, whose setting has no choice Z.
    "-d Fold --set Fold=Ha": "-d Fold --set Fold=Half ",
    "-d Fold --set Fold=Z": "-d Fold --set Fold=Z",
}
# All differ in their first two letters.
ODD_NAMES = [
    "My Printer", "It's", 'Say"so"', "Cash$HOME", "Back\\slash", "Größe", "Tick`id`", "Semi;touch made", "Paren(x)", "Glob*", "Eq=a:b", "Quest~?", "Hash#1",
]  # fmt: skip
# Typed beginnings of names, each with the name's index: some examples, and the first two letters of every name with and without a quote.
TYPED = [('"My Pri', 0), ("'My Pri", 0), ("My\\ Pri", 0), ("'Cash$HO", 3), ('"Cash\\$HO', 3), ("Back\\\\sl", 4), ("Grö", 5), ("Eq=a", 10)]
TYPED += [(quote + name[:2], number) for number, name in enumerate(ODD_NAMES) for quote in ("", '"', "'")]
# Takes the program's place: passes on its completions, and prints the arguments that the shell makes of the command line.
STAND_IN = f"""#!/bin/sh
[ "$1" = --complete ] && exec {PROGRAM} "$@"
printf '<%s>' "$@"; echo '<end>'
"""


def named(names):
    """A server's answer with printers of these names."""
    printers = [ipp.group(ipp.PRINTER_GROUP, [(ipp.NAME, "printer-name", name)]) for name in names]
    return fake_server.answer(ipp.beginning(0) + b"".join(printers) + bytes([ipp.END]))


class CompletionCase(TerminalCase):
    """Completion at a print server with a printer of another family and one with an odd name."""

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.cups.add_queue("Fold", FOLDLINE_PPD)
        cls.cups.add_queue(ODD, PPD)


class AnswersTest(CompletionCase):
    """What the program prints for --complete."""

    def words(self, *words, **variables):
        result = self.trim("--complete", *words, **variables)
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        return result.stdout.splitlines()

    def test_the_servers_printers_are_offered(self):
        self.assertEqual(self.words("-d", ""), ["Fold", "Morva", ODD])
        self.assertEqual(self.words("--summary", "-d", "M"), ["Morva"])

    def test_the_settings_of_the_printers_panel_are_offered(self):
        self.assertEqual(set(self.words("-d", "Morva", "--set", "")), SETTINGS)
        self.assertEqual(self.words("-d", "Morva", "--set", "Direction="), ["Direction=LongEdgeFeed", "Direction=ShortEdgeFeed"])
        self.assertEqual(self.words("-d", "Morva", "--set", "Top="), [])
        self.assertEqual(set(self.words("--ppd", str(PPD), "--set", "")), SETTINGS)
        of_other = set(self.words("-d", "Fold", "--set", "", TANDEM_TRIM_PLUGIN_PATH=PANELS))
        self.assertTrue(of_other and not of_other & SETTINGS, of_other)

    def test_the_presets_of_the_printers_family_are_offered(self):
        for name in ("Booklet", "Two words"):
            self.assertEqual(self.trim("-d", "Morva", "--save-preset", name).returncode, 0)
        for option in ("--preset", "--save-preset", "--delete-preset"):
            self.assertEqual(self.words("-d", "Morva", option, ""), ["Booklet", "Two words"])
        self.assertEqual(self.words("--ppd", str(PPD), "--preset", "T"), ["Two words"])
        self.assertEqual(self.words("-d", "Fold", "--preset", ""), [])

    def test_completion_does_not_rename_a_damaged_preset(self):
        folder = self.temporary_folder()
        damaged = folder / "tandem-trim/presets/TandemTrim/Damaged.json"
        damaged.parent.mkdir(parents=True)
        damaged.write_text("{")
        self.assertEqual(self.words("-d", "Morva", "--preset", "", XDG_CONFIG_HOME=str(folder)), [])
        self.assertTrue(damaged.exists())

    def test_only_options_in_the_help_are_offered(self):
        helped = self.trim("--help").stdout
        options = self.words("-")
        self.assertIn("--restore-defaults", options)
        for option in options:
            self.assertIn(option, helped)

    def test_nothing_is_offered_for_an_unknown_printer_ppd_or_server_or_a_free_text(self):
        for words in ([""], ["-d", "Nowhere", "--set", ""], ["--ppd", "nowhere.ppd", "--set", ""], ["-n", ""], []):
            with self.subTest(words):
                self.assertEqual(self.words(*words), [])
        self.assertEqual(self.words("-d", "", CUPS_SERVER="127.0.0.1:1"), [])

    def test_a_value_in_one_word_with_its_option_is_completed(self):
        self.assertEqual(self.words("-dMor"), ["-dMorva"])
        self.assertEqual(self.words("-csdMor"), ["-csdMorva"])
        self.assertEqual(self.words("-dMorva", "--set=Position="), [f"--set=Position={choice}" for choice in ("Left", "Center", "Right")])
        self.assertEqual(set(self.words(f"--ppd={PPD}", "--set=")), {f"--set={name}" for name in SETTINGS})

    def test_after_two_dashes_nothing_but_files_is_offered(self):
        for words in (["--", "--su"], ["--", "-d", "Mor"], ["-d", "Morva", "--", "-"]):
            with self.subTest(words):
                self.assertEqual(self.words(*words), [])
        self.assertEqual(self.words("-t", "--", "--su"), ["--summary"])

    def test_completion_takes_server_encryption_and_user_from_the_command_line_as_a_job_does(self):
        server = "{}:{}".format(*self.cups.address)
        for words in (["-h", server], [f"-h{server}"]):
            self.assertEqual(self.words(*words, "-d", "M", CUPS_SERVER="127.0.0.1:1"), ["Morva"])
        self.trim("-E", "--list")  # makes the server create its key
        for options, is_plain in (([], True), (["-E"], False)):
            with self.subTest(options), Overhearing(self.cups.address) as relay:
                self.assertEqual(set(self.words(*options, "-U", "amy", "-d", "Morva", "--set", "", CUPS_SERVER=relay.address)), SETTINGS)
                self.assertEqual((b"printer-uri" in relay.heard, b"amy" in relay.heard), (is_plain, is_plain))

    def test_a_frozen_or_slow_server_does_not_block_the_tab_key(self):
        around = {"TANDEM_TRIM_TIMEOUT": "60"}
        for words in (["-d", ""], ["-d", "Morva", "--set", ""]):
            with self.subTest(words):
                self.cups.freeze()
                try:
                    took = self.seconds(lambda words=words: self.assertEqual(self.words(*words, **around), []))
                finally:
                    self.cups.thaw()
                self.assertLess(took, 3)
                with Slow(self.cups.address, 100) as relay:
                    took = self.seconds(lambda words=words: self.assertEqual(self.words(*words, CUPS_SERVER=relay.address, **around), []))
                self.assertLess(took, 3)


class ShellsTest(CompletionCase):
    """Completion in shells, with the installed files."""

    def setUp(self):
        super().setUp()
        folder = self.temporary_folder()
        self.prefix = folder / "usr"
        subprocess.run(["cmake", "--install", BUILD, "--prefix", self.prefix], check=True, capture_output=True)
        self.work = folder / "work"
        self.work.mkdir()
        (self.work / "sample.pdf").symlink_to(SAMPLE)

    def around(self):
        plain = {"TERM": "dumb", "PATH": f"{self.prefix}/bin:{os.defpath}", "XDG_DATA_DIRS": f"{self.prefix}/share:/usr/share"}
        return self.environment(CUPS_SERVER="{}:{}".format(*self.cups.address), LPDEST="Morva", TANDEM_TRIM_PLUGIN_PATH=PANELS, **plain)

    def completes(self, shell, start, more=()):
        """Asserts that Tab completes each text in this shell. `start` sets the shell up to show the command line at ^O."""
        (self.work.parent / "start").write_text(f"{start}\ncd {shlex.quote(str(self.work))}\nPS1='ready''> '\n")
        for typed, expected in (*COMPLETED.items(), *more):
            with self.subTest(typed), Terminal(shell, self.around()) as terminal:
                terminal.type(f". {shlex.quote(str(self.work.parent))}/start\n".encode())
                terminal.wait_for("ready> ")
                terminal.type(f"tandem-trim {typed}\t\x0f".encode())
                terminal.wait_for("<end>")
                self.assertIn(f"<tandem-trim {expected}<end>", terminal.shown())

    def completes_odd_names(self, shell, start):
        """Asserts that Tab in this shell completes each name to a word that the shell passes to the program as that name."""
        program = self.work.parent / "stand-in/tandem-trim"
        program.parent.mkdir()
        program.write_text(STAND_IN)
        program.chmod(0o755)
        script = self.work.parent / "start"
        script.write_text(f"{start}\ncd {shlex.quote(str(self.work))}\n")
        with FakeServer(odd={ipp.GET_PRINTERS: lambda: [named(ODD_NAMES)]}) as server:
            around = self.around() | {"CUPS_SERVER": server.address, "PATH": f"{program.parent}:{os.defpath}"}
            with Terminal(shell, around) as terminal:
                terminal.type(f". {shlex.quote(str(script))}; echo rea''dy\n".encode())
                terminal.wait_for("ready")
                for times, (option, (typed, number)) in enumerate(itertools.product(("-d ", "-d"), TYPED), 1):
                    with self.subTest(option + typed):
                        terminal.type(f"tandem-trim {option}{typed}\t\n".encode())
                        terminal.wait_for("<end>", times)
                        arguments = option.replace(" ", "><") + ODD_NAMES[number]
                        self.assertTrue(terminal.shown().rpartition("<end>")[0].endswith(f"<{arguments}>"), terminal.shown()[-300:])
        self.assertFalse((self.work / "made").exists())

    bash = """. /usr/share/bash-completion/bash_completion
        bind -x '"\\C-o": printf "<%s<end>" "$READLINE_LINE"'"""

    def zsh(self):
        return f"""fpath=({self.prefix}/share/zsh/site-functions $fpath)
            autoload -U compinit; compinit -D -u
            show() {{ print -rn -- "<$BUFFER<end>" }}; zle -N show; bindkey "^O" show"""

    def test_bash_completes(self):
        self.completes(["bash", "--norc"], self.bash, [("-d Od", "-d Odd\\;touch\\$\\{IFS\\}made ")])
        self.completes(["bash", "--norc"], "COMP_WORDBREAKS=' '; " + self.bash)

    def test_bash_completes_odd_names(self):
        self.completes_odd_names(["bash", "--norc"], self.bash)

    def test_zsh_completes(self):
        self.completes(["zsh", "-f", "-V"], self.zsh())

    def test_zsh_completes_odd_names(self):
        self.completes_odd_names(["zsh", "-f", "-V"], self.zsh())

    def test_fish_completes(self):
        for typed, expected in COMPLETED.items():
            with self.subTest(typed):
                command = ["fish", "--command", f'complete -C "tandem-trim {typed}"']
                found = subprocess.run(command, env=self.around(), cwd=self.work, capture_output=True, text=True, check=True).stdout.split()
                last = expected.strip().rpartition(" ")[2]
                self.assertEqual(found, [] if typed == expected else [last])

    def test_fish_completes_odd_names(self):
        self.completes_odd_names(["fish"], "")


if __name__ == "__main__":
    unittest.main()
