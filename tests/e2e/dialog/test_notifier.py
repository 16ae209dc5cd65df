"""The program that shows a job's outcome by the desktop's notifications, with invalid orders and servers that fail, too."""

import json
import os
import subprocess
import time
import unittest

from fake_server import UNAUTHORIZED
from notifications import Desktop
from patience import PATIENCE
from relay import Relay
from terminal_case import BUILD, SAMPLE, TerminalCase

NOTIFIER = BUILD / "host/tandem-trim-notifier"
FIRST = {"heading": "first", "body": "body"}
LONG = 600  # seconds; longer than any test waits
USAGE = "only the print dialog starts this program"


class WantsLoginForAll(Relay):
    """Answers every request with 401, as if a password were missing, and counts them."""

    def __init__(self, server):
        super().__init__(server, float("inf"), None)
        self.asked = 0

    def _requests_from(self, client, server):
        def may_pass(_piece):
            self.asked += 1
            client.sendall(UNAUTHORIZED)
            return False

        self._pass_on_while(may_pass, client, server)


class BreaksOnce(Relay):
    """Closes the first connection at once and passes all others on."""

    def __init__(self, server):
        super().__init__(server, float("inf"), None)
        self.broken = 0

    def _requests_from(self, client, server):
        if not self.broken:
            self.broken += 1
            self._end(client)
            self._end(server)
        else:
            super()._requests_from(client, server)


class NotifierTest(TerminalCase):
    def setUp(self):
        super().setUp()
        self.desktop = self.enterContext(Desktop(self.temporary_folder()))
        self.job = self.sent_job()

    def sent_job(self):
        """Sends a job on hold and returns its number."""
        result = self.trim("-d", "Morva", "-H", "hold", SAMPLE)
        return int(result.stdout.split()[3].removeprefix("Morva-"))

    def order(self, **entries):
        texts = {"sent": FIRST, "cancelled": {"heading": "cancelled", "body": ""}, "failed": {"heading": "failed", "body": ""}}
        return {"printer": "Morva", "job": self.job, "watched": LONG} | texts | entries

    def run_notifier(self, order, *words, **variables):
        """Runs the notifier with this order; returns its exit status and error output."""
        around = {name: os.environ[name] for name in ("DBUS_SESSION_BUS_ADDRESS", "XDG_RUNTIME_DIR")}
        text = order if isinstance(order, str) else json.dumps(order)
        result = subprocess.run(
            [NOTIFIER, *words], input=text, env=self.environment(**around) | variables, capture_output=True, text=True, timeout=PATIENCE, check=False
        )
        self.assertEqual(result.stdout, "")
        return result.returncode, result.stderr

    def headings(self):
        return [shown["heading"] for shown in self.desktop.shown()]

    def test_the_notifier_ends_after_its_time_even_if_the_job_still_waits(self):
        self.assertEqual(self.run_notifier(self.order(watched=1)), (0, ""))
        self.assertEqual(self.headings(), ["first"])

    def test_the_notifier_ends_at_once_if_the_job_has_ended(self):
        self.release_job()
        self.cups.wait_for_jobs()
        self.assertEqual(self.run_notifier(self.order()), (0, ""))
        self.assertEqual(self.headings(), ["first"])

    def release_job(self):
        subprocess.run(["lp", "-i", f"Morva-{self.job}", "-H", "resume"], env=self.cups.environment(), check=True, capture_output=True)

    def test_the_notifier_ends_if_the_server_does_not_know_the_job(self):
        self.assertEqual(self.run_notifier(self.order(job=self.job + 1000)), (0, ""))
        self.assertEqual(self.headings(), ["first"])

    def test_the_notifier_waits_for_a_frozen_server_no_longer_than_the_timeout(self):
        self.cups.freeze()
        self.addCleanup(self.cups.thaw)
        start = time.monotonic()
        self.assertEqual(self.run_notifier(self.order(watched=2), TANDEM_TRIM_TIMEOUT="1"), (0, ""))
        self.assertLess(time.monotonic() - start, 30)
        self.assertEqual(self.headings(), ["first"])

    def test_the_notifier_ends_after_its_time_even_if_the_timeout_is_longer(self):
        self.cups.freeze()
        self.addCleanup(self.cups.thaw)
        start = time.monotonic()
        status, _ = self.run_notifier(self.order(watched=1), TANDEM_TRIM_TIMEOUT="3600")
        self.assertLess(status, 0)
        self.assertLess(time.monotonic() - start, PATIENCE)

    def test_the_notifier_does_not_ask_for_a_password(self):
        with WantsLoginForAll(self.cups.address) as server:
            self.assertEqual(self.run_notifier(self.order(server=server.address)), (0, ""))
            self.assertEqual(server.asked, 1)
        self.assertEqual(self.headings(), ["first"])

    def test_the_notifier_asks_the_server_that_its_order_names(self):
        self.cups.cancel_all()
        server = "{}:{}".format(*self.cups.address)
        self.assertEqual(self.run_notifier(self.order(server=server), CUPS_SERVER="localhost:1"), (0, ""))
        self.assertEqual(self.headings(), ["first", "cancelled"])

    def test_the_notifier_asks_again_when_a_connection_breaks(self):
        self.cups.cancel_all()
        with BreaksOnce(self.cups.address) as server:
            self.assertEqual(self.run_notifier(self.order(server=server.address)), (0, ""))
            self.assertEqual(server.broken, 1)
        self.assertEqual(self.headings(), ["first", "cancelled"])

    def test_texts_with_any_characters_are_shown(self):
        odd = {"heading": "%s\u0000 \ud83d\udda8 \u202e", "body": "\ufffe\n\n"}
        self.assertEqual(self.run_notifier(self.order(sent=odd, watched=0)), (0, ""))
        self.assertEqual(len(self.headings()), 1)

    def test_an_invalid_order_is_refused(self):
        wrong = ["", "{", "[]", "null", self.order(job="1"), self.order(watched=-1), self.order(watched=10**9), self.order(sent="text")]
        for order in wrong:
            with self.subTest(order):
                status, said = self.run_notifier(order)
                self.assertEqual(status, 2)
                self.assertTrue(said.startswith("tandem-trim-notifier: "), said)
        status, said = self.run_notifier(self.order(), "--help")
        self.assertEqual(status, 2)
        self.assertIn(USAGE, said)
        self.assertEqual(self.headings(), [])


if __name__ == "__main__":
    unittest.main()
