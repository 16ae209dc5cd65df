"""Bash, zsh and fish complete the program's options, printers, settings and their choices, from where they are installed."""

import os
import shlex
import subprocess
import unittest

from terminal import Terminal
from terminal_case import BUILD, FOLDLINE_PPD, PPD, SAMPLE, TerminalCase

ODD = "Odd;touch${IFS}made"  # names a printer, and bash would run a part of it
SETTINGS = {"Valid=", "Direction=", "Position=", "Top=", "Bottom=", "Left=", "Right="}
# What is typed before Tab, and what stands on the command line behind it.
COMPLETED = {
    "-d Mor": "-d Morva ",
    "--set Val": "--set Valid=",
    "--set Valid=Of": "--set Valid=Off ",
    "-d Morva --set Position=Cen": "-d Morva --set Position=Center ",
    "--reset-d": "--reset-defaults ",
    "-d Morva sam": "-d Morva sample.pdf ",
    "-d Fold --set Fold=Z": "-d Fold --set Fold=Z",  # another family, without a folding by this name
}


class CompletionTest(TerminalCase):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.cups.add_queue("Fold", FOLDLINE_PPD)
        cls.cups.add_queue(ODD, PPD)

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
        return self.environment(CUPS_SERVER="{}:{}".format(*self.cups.address), LPDEST="Morva", **plain)

    def words(self, *words, **variables):
        result = self.trim("--complete", *words, **variables)
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        return result.stdout.splitlines()

    # The program's own answers.

    def test_printers_are_those_of_the_server(self):
        self.assertEqual(self.words("-d", ""), ["Fold", "Morva", ODD])
        self.assertEqual(self.words("--summary", "-d", "M"), ["Morva"])

    def test_settings_are_those_of_the_printers_panel(self):
        self.assertEqual(set(self.words("-d", "Morva", "--set", "")), SETTINGS)
        self.assertEqual(self.words("-d", "Morva", "--set", "Direction="), ["Direction=LongEdgeFeed", "Direction=ShortEdgeFeed"])
        self.assertEqual(self.words("-d", "Morva", "--set", "Top="), [])
        self.assertEqual(set(self.words("--ppd", str(PPD), "--set", "")), SETTINGS)
        around = {"TANDEM_TRIM_PLUGIN_PATH": f"{BUILD}:{BUILD}/tests/second_family"}
        of_other = set(self.words("-d", "Fold", "--set", "", **around))
        self.assertTrue(of_other and not of_other & SETTINGS, of_other)

    def test_options_are_those_of_the_help(self):
        helped = self.trim("--help").stdout
        options = self.words("-")
        self.assertIn("--restore-defaults", options)
        for option in options:
            self.assertIn(option, helped)

    def test_what_cannot_be_asked_has_no_words(self):
        for words in ([""], ["-d", "Nowhere", "--set", ""], ["--ppd", "nowhere.ppd", "--set", ""], ["-n", ""], []):
            with self.subTest(words):
                self.assertEqual(self.words(*words), [])
        self.assertEqual(self.words("-d", "", CUPS_SERVER="127.0.0.1:1"), [])

    def test_a_silent_server_holds_nobody_up_at_the_key(self):
        self.cups.freeze()
        try:
            took = self.seconds(lambda: self.assertEqual(self.words("-d", ""), []))
        finally:
            self.cups.thaw()
        self.assertLess(took, 10)

    # The shells.

    def completes(self, shell, start, more=()):
        """In this shell, which is set up so that the key ^O shows the command line, Tab completes each of them."""
        (self.work.parent / "start").write_text(f"{start}\ncd {shlex.quote(str(self.work))}\nPS1='ready''> '\n")
        for typed, expected in (*COMPLETED.items(), *more):
            with self.subTest(typed), Terminal(shell, self.around()) as terminal:
                terminal.type(f". {shlex.quote(str(self.work.parent))}/start\n".encode())
                terminal.wait_for("ready> ")
                terminal.type(f"tandem-trim {typed}\t\x0f".encode())
                terminal.wait_for("<end>")
                self.assertIn(f"<tandem-trim {expected}<end>", terminal.shown())

    def test_bash_completes(self):
        start = """. /usr/share/bash-completion/bash_completion
            bind -x '"\\C-o": printf "<%s<end>" "$READLINE_LINE"'"""
        quoted = [("-d Od", "-d Odd\\;touch\\$\\{IFS\\}made ")]
        self.completes(["bash", "--norc"], start, quoted)
        self.completes(["bash", "--norc"], "COMP_WORDBREAKS=' '; " + start)

    def test_zsh_completes(self):
        start = f"""fpath=({self.prefix}/share/zsh/site-functions $fpath)
            autoload -U compinit; compinit -D -u
            show() {{ print -rn -- "<$BUFFER<end>" }}; zle -N show; bindkey "^O" show"""
        self.completes(["zsh", "-f", "-V"], start)

    def test_fish_completes(self):
        for typed, expected in COMPLETED.items():
            with self.subTest(typed):
                command = ["fish", "--command", f'complete -C "tandem-trim {typed}"']
                found = subprocess.run(command, env=self.around(), cwd=self.work, capture_output=True, text=True, check=True).stdout.split()
                last = expected.strip().rpartition(" ")[2]
                self.assertEqual(found, [] if typed == expected else [last])


if __name__ == "__main__":
    unittest.main()
