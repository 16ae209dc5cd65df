"""A print server that wants a login: the dialog asks for it."""

import signal
import unittest

from dialog_case import DialogCase, until
from relay import NEW_JOB, Holdup, WantsLogin
from terminal_case import DEFAULTS, of_panel

QUESTION = "requires a user name and a password"
AGAIN = "did not accept this user name and password"


class LoginCase(DialogCase):
    def setUp(self):
        super().setUp()
        self.server = self.enterContext(WantsLogin(self.cups.address, "ann:Secret"))

    def press_print(self, address):
        dialog = self.dialog("-d", "Morva", CUPS_SERVER=address, CUPS_USER="ann", TANDEM_TRIM_TIMEOUT="5")
        dialog.wait_for_tab("Tandem Trim")
        dialog.press("Print")
        return dialog


class DialogLoginTest(LoginCase):
    def setUp(self):
        super().setUp()
        self.asking = self.press_print(self.server.address)
        self.asking.says(QUESTION)

    def enter(self, user, password):
        """Answers the question."""
        self.asking.type("User name", user)
        self.asking.type("Password", password)
        self.asking.answer("Continue")

    def test_the_job_is_sent_with_the_users_login(self):
        self.enter("ann", "Secret")
        self.assertEqual(of_panel(self.printed(self.asking).options), DEFAULTS)

    def test_the_dialog_asks_up_to_three_times_for_the_right_login(self):
        self.enter("ann", "One")
        self.asking.says(AGAIN)
        self.enter("ann", "Two")
        until(lambda: len(self.server.tried) == 2, "the second try")
        self.asking.says(AGAIN)
        self.enter("ann", "Three")
        self.asking.says("Unauthorized")
        self.assertEqual(self.server.tried, ["ann:One", "ann:Two", "ann:Three"])
        self.assert_nothing_was_sent()
        self.asking.press("Close")
        until(lambda: self.asking.is_live("push button", "Print"), "Print to be ready again")

    def test_the_question_names_server_and_user_and_is_answered_by_enter(self):
        self.assertIn("127.0.0.1", self.asking.says(QUESTION))
        self.assertEqual(self.asking.text("User name"), "ann")
        self.asking.type("Password", "Secret")
        self.asking.keys("Return")
        self.printed(self.asking)

    def test_without_a_login_the_job_is_not_sent_and_the_dialog_stays_open(self):
        self.without_login(lambda: self.asking.answer("Cancel"))

    def test_escape_means_no_login(self):
        self.without_login(lambda: self.asking.keys("Escape"))

    def without_login(self, cancel):
        cancel()
        self.asking.says("nothing was printed: Unauthorized")
        self.asking.press("Close")
        until(lambda: self.asking.is_live("push button", "Print"), "Print to be ready again")
        self.assertEqual(self.server.tried, [])
        self.assert_nothing_was_sent()

    def test_a_signal_ends_the_question(self):
        self.asking.process.send_signal(signal.SIGINT)
        status, out, _ = self.asking.ends()
        self.assertEqual((status, out), (130, ""))
        self.assert_nothing_was_sent()


class CancelledBeforeTheQuestionTest(LoginCase):
    """The job is cancelled before the server asks for a login."""

    def setUp(self):
        super().setUp()
        host, port = self.server.address.split(":")
        self.late = self.enterContext(Holdup((host, int(port)), NEW_JOB))
        self.sending = self.press_print(self.late.address)
        until(self.late.reached.is_set, "the request for a job")

    def ends_without_a_question(self):
        until(lambda: not self.sending.program.windows(), "the dialog to be hidden")
        self.late.release()
        status, out, said = self.sending.ends()
        self.assertEqual(out, "", said)
        self.assert_nothing_was_sent()
        return status

    def test_a_cancelled_dialog_does_not_ask(self):
        self.sending.press("Cancel the job")
        self.assertEqual(self.ends_without_a_question(), 0)

    def test_a_dialog_that_a_signal_ends_does_not_ask(self):
        self.sending.process.send_signal(signal.SIGTERM)
        self.assertEqual(self.ends_without_a_question(), 128 + signal.SIGTERM)


if __name__ == "__main__":
    unittest.main()
