"""A print server that wants a password gets it from the user at the terminal; without a terminal it gets none."""

import getpass
import subprocess
import time
import unittest

import fake_server
import ipp
from fake_server import FakeServer
from patience import PATIENCE
from terminal import INTERRUPT, Terminal
from terminal_case import PPD, PROGRAM, SAMPLE, TerminalCase

TIMEOUT = 1
QUESTION = "Password for "
# The operations that may be the first to want a password.
OPERATIONS = (ipp.GET_PRINTER, fake_server.PPD, ipp.CREATE_JOB, ipp.GET_JOB)
SENT = "job 1 on Morva: 7 of 7 options confirmed\n"


class PasswordsTest(TerminalCase):
    user = getpass.getuser()

    def server(self, *operations, login=None):
        return FakeServer(PPD.read_bytes(), logins=dict.fromkeys(operations, login or f"{self.user}:Secret"))

    def around(self, server, **more):
        return self.environment(CUPS_SERVER=server.address, TANDEM_TRIM_TIMEOUT=str(TIMEOUT), **more)

    def terminal(self, server, *words):
        return Terminal(words or [PROGRAM, "-d", "Morva", SAMPLE], self.around(server))

    def test_the_job_is_printed_after_one_question_for_the_password(self):
        for operation in OPERATIONS:
            with self.subTest(operation), self.server(operation) as server, self.terminal(server) as terminal:
                terminal.wait_for(f"{QUESTION}{self.user} on 127.0.0.1? ")
                self.assertFalse(terminal.echoes())
                terminal.type(b"Secret\n")
                self.assertEqual(terminal.end(), 0, terminal.shown())
                self.assertTrue(terminal.echoes())
                self.assertEqual(terminal.shown().count(QUESTION), 1)
                self.assertNotIn("Secret", terminal.shown())
                self.assertIn(SENT, terminal.shown())

    def test_the_third_password_may_be_the_right_one(self):
        with self.server(ipp.CREATE_JOB) as server, self.terminal(server) as terminal:
            for times, password in enumerate((b"One\n", b"Two\n", b"Secret\n"), 1):
                terminal.wait_for(QUESTION, times)
                terminal.type(password)
            self.assertEqual(terminal.end(), 0, terminal.shown())
            self.assertEqual(server.tried, [f"{self.user}:{word}" for word in ("One", "Two", "Secret")])

    def test_after_three_wrong_passwords_the_program_fails(self):
        for operation in (ipp.GET_PRINTER, ipp.CREATE_JOB):
            with self.subTest(operation), self.server(operation) as server, self.terminal(server) as terminal:
                for times in (1, 2, 3):
                    terminal.wait_for(QUESTION, times)
                    terminal.type(b"Wrong%d\n" % times)
                self.assertEqual(terminal.end(), 1)
                self.assertEqual(terminal.shown().count(QUESTION), 3)
                self.assertEqual(server.tried, [f"{self.user}:Wrong{times}" for times in (1, 2, 3)])
                self.assertIn(f"Unauthorized: the print server at {server.address} does not accept that password for {self.user}; try again with another", terminal.shown())
                self.assertNotIn("at a terminal", terminal.shown())

    def test_the_time_limit_for_servers_does_not_apply_to_the_user(self):
        with self.server(ipp.CREATE_JOB) as server, self.terminal(server) as terminal:
            terminal.wait_for(QUESTION)
            time.sleep(2.5 * TIMEOUT)
            terminal.type(b"Secret\n")
            self.assertEqual(terminal.end(), 0, terminal.shown())

    def test_a_job_whose_server_wants_the_password_only_with_the_document_is_cancelled(self):
        with self.server(ipp.SEND_DOCUMENT) as server, self.terminal(server) as terminal:
            terminal.wait_for(QUESTION)
            terminal.type(b"Secret\n")
            self.assertEqual(terminal.end(), 1)
            self.assertRegex(terminal.shown(), "Morva did not accept sample.pdf: Unauthorized: .*; job 1 on Morva was cancelled")

    def test_an_empty_password_ends_the_program(self):
        with self.server(ipp.CREATE_JOB) as server, self.terminal(server) as terminal:
            terminal.wait_for(QUESTION)
            terminal.type(b"\n")
            self.assertEqual(terminal.end(), 1)
            self.assertEqual((terminal.shown().count(QUESTION), server.tried), (1, []))
            self.assertIn("Morva refuses the job; nothing was printed: Unauthorized: ", terminal.shown())

    def test_a_user_who_declines_is_not_asked_again_when_the_job_is_cancelled(self):
        with self.server(ipp.SEND_DOCUMENT, ipp.CANCEL_JOB) as server, self.terminal(server) as terminal:
            terminal.wait_for(QUESTION)
            terminal.type(b"\n")
            self.assertEqual(terminal.end(), 1)
            self.assertEqual((terminal.shown().count(QUESTION), server.tried), (1, []))
            self.assertIn("job 1 on Morva could not be cancelled", terminal.shown())

    def test_an_interrupted_question_restores_the_terminal(self):
        for operation in (ipp.GET_PRINTER, ipp.CREATE_JOB, ipp.SEND_DOCUMENT):
            command = ["sh", "-c", 'trap : INT; "$@"; echo status $?', "sh", PROGRAM, "-d", "Morva", SAMPLE]
            with self.subTest(operation), self.server(operation) as server, self.terminal(server, *command) as terminal:
                terminal.wait_for(QUESTION)
                terminal.type(INTERRUPT)
                terminal.wait_for("status ")
                terminal.end()
                self.assertIn("status 130", terminal.shown())
                self.assertTrue(terminal.echoes())

    def test_a_question_is_asked_again_after_the_program_was_stopped(self):
        command = ["bash", "--norc", "-ic", 'set -m; "$@"; stty | grep -o -- "-echo "; fg; echo status $?', "bash", PROGRAM, "-d", "Morva", SAMPLE]
        with self.server(ipp.GET_PRINTER) as server, self.terminal(server, *command) as terminal:
            terminal.wait_for(QUESTION)
            terminal.type(b"\x1a")
            terminal.wait_for(QUESTION, 2)
            terminal.type(b"Secret\n")
            terminal.wait_for("status ")
            self.assertNotIn("-echo", terminal.shown())
            self.assertIn("status 0", terminal.shown())

    def test_without_a_terminal_the_program_fails_at_once_without_a_question(self):
        for operation in (ipp.GET_PRINTER, ipp.CREATE_JOB):
            with self.subTest(operation), self.server(operation) as server:
                command = ["setsid", "--wait", PROGRAM, "-d", "Morva", SAMPLE]
                around = self.around(server) | {"TANDEM_TRIM_TIMEOUT": str(PATIENCE * 10)}
                result = subprocess.run(command, stdin=subprocess.DEVNULL, capture_output=True, text=True, env=around, timeout=PATIENCE, check=False)
                self.assertEqual((result.returncode, result.stdout), (1, ""))
                self.assertIn(f"Unauthorized: the print server at {server.address} requires the password of {self.user} and received none; type it at a terminal", result.stderr)
                self.assertEqual(server.tried, [])


if __name__ == "__main__":
    unittest.main()
