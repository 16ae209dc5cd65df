"""Many programs that request dialogs and die at random moments: nothing is printed by mistake, and nothing is left behind."""

import os
import pathlib
import random
import unittest

from dialog_case import until
from gi.repository import GLib
from portal_client import FAILED, Client, PortalCase

REQUESTS = int(os.environ.get("TANDEM_TRIM_REQUESTS", "100"))
CLIENTS = 12
# Descriptors that may still be open: threads that have read a printer's details are about to end.
SPARE = 10
# The number of dialogs after which the toolkit loads nothing more.
WARM = 10
DIALOGS = 30
# KiB for each dialog: the toolkit leaves 70 behind for an empty dialog, and a leaked dialog is more than ten times as large.
MOST_GROWTH = 160
# KiB for each request, once the toolkit has allocated memory for many dialogs at a time.
MOST_LEFT = 40
# A sanitizer's memory would hide the dialogs'.
IS_MEASURED = not os.environ.get("TANDEM_TRIM_SANITIZE")


class ClientsThatDieTest(PortalCase):
    def own_memory(self):
        """The service's private dirty memory, in KiB."""
        memory = pathlib.Path(f"/proc/{self.process.pid}/smaps_rollup").read_text()
        return int(memory.split("Private_Dirty:")[1].split()[0])

    def descriptors(self):
        return len(os.listdir(f"/proc/{self.process.pid}/fd"))

    @unittest.skipUnless(IS_MEASURED, "with a sanitizer")
    def test_dialogs_one_after_the_other_leave_little_memory_behind(self):
        self.start()
        before = 0
        for number in range(DIALOGS):
            if number == WARM:
                before = self.own_memory()
            call = self.client.prepare()
            dialog = self.shown()
            call.close()
            self.assertEqual(call.answer(), (FAILED, {}))
            until(dialog.is_gone, "the dialog to go")
        self.assertLess(self.own_memory() - before, MOST_GROWTH * (DIALOGS - WARM))

    def test_programs_that_die_leave_no_job_no_descriptor_and_little_memory_behind(self):
        self.start()
        chance = random.Random(20261122)
        clients = [Client(f"org.example.Program{number}") for number in range(CLIENTS)]
        calls = [(client, client.prepare()) for client in clients]
        # The toolkit keeps the memory of this many open dialogs; later ones reuse it.
        until(lambda: len(self.windows()) == CLIENTS, "a dialog of each program")
        self.settle(calls)
        descriptors, memory = self.descriptors(), self.own_memory()
        for number in range(REQUESTS):
            index = chance.randrange(CLIENTS)
            ask = chance.choice([Client.prepare, Client.print])
            calls.append((clients[index], ask(clients[index])))
            for _ in range(chance.randrange(200)):
                GLib.MainContext.default().iteration(False)
            fate = chance.random()
            if fate < 0.5:
                clients[index].leave()
                calls = [(client, call) for client, call in calls if client is not clients[index]]
                clients[index] = Client(f"org.example.Program{index}")
            elif fate < 0.9:
                _, call = calls.pop(chance.randrange(len(calls)))
                call.close()
                self.assertEqual(call.answer(), (FAILED, {}))
        print(f"{REQUESTS} requests")
        self.settle(calls)
        self.assertLessEqual(self.descriptors(), descriptors + SPARE)
        if IS_MEASURED:
            self.assertLess(self.own_memory() - memory, MOST_LEFT * REQUESTS)
        self.assert_nothing_was_sent()

    def settle(self, calls):
        """Withdraws all open requests and waits until the backend has handled them."""
        while calls:
            _, call = calls.pop()
            call.close()
            self.assertEqual(call.answer(), (FAILED, {}))
        self.quiet_call()

    def quiet_call(self):
        """Makes a call and withdraws it: once it is answered, all earlier calls have been handled."""
        call = self.client.prepare()
        call.close()
        self.assertEqual(call.answer(), (FAILED, {}))


if __name__ == "__main__":
    unittest.main()
