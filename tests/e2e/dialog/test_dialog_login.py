"""A print server that wants a login: the dialog asks for it."""

import signal
import unittest

from dialog_case import DialogCase, until
from relay import WantsLogin
from terminal_case import DEFAULTS, of_panel

QUESTION = "requires a user name and a password"
AGAIN = "did not accept this user name and password"


class DialogLoginTest(DialogCase):
    def setUp(self):
        super().setUp()
        relay = WantsLogin(self.cups.address, "ann:Secret")
        self.server = self.enterContext(relay)
        self.asking = self.dialog("-d", "Morva", CUPS_SERVER=relay.address, CUPS_USER="ann", TANDEM_TRIM_TIMEOUT="5")
        self.asking.wait_for_tab("Tandem Trim")
        self.asking.press("Print")
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


if __name__ == "__main__":
    unittest.main()
