"""The print backend as a service, on its own bus and without a screen."""

import contextlib
import pathlib
import shutil
import subprocess
import tempfile
import unittest

import patience
from gi.repository import GLib
from portal_client import BUS, FAILED, NAME, PLACE, PRINT, SERVICE, Client, own_bus
from surroundings import SHARED, of_this_test
from terminal_case import BUILD

NEWER_TOOLKIT = BUILD / "tests/e2e/libtandemtrim_newer_toolkit.so"
WRONG = (
    ["print"],
    ["--help"],
    ["--ask-again-after"],
    ["--ask-again-after", ""],
    ["--ask-again-after", "soon"],
    ["--ask-again-after", "5s"],
    ["--ask-again-after", "-1"],
    ["--ask-again-after", "99999999999"],
    ["--ask-again-after", "5", "6"],
    ["--ask-again", "5"],
)


class ServiceTest(unittest.TestCase):
    def environment(self, **variables):
        return of_this_test(SHARED) | {"PATH": "/usr/bin:/bin", "LANG": "C.UTF-8"} | variables

    def run_service(self, *words, **variables):
        """Runs the service, which must end at once; returns its exit status and messages."""
        result = subprocess.run(
            [SERVICE, *words], env=self.environment(**variables), stdin=subprocess.DEVNULL, capture_output=True, text=True, timeout=patience.PATIENCE, check=False
        )
        self.assertEqual(result.stdout, "")
        return result.returncode, result.stderr

    @contextlib.contextmanager
    def running(self, client, address, service=SERVICE, **variables):
        """Runs the service for the duration of a `with` statement; yields its process once it has its name."""
        environment = self.environment(DBUS_SESSION_BUS_ADDRESS=address, **variables)
        with subprocess.Popen([service], env=environment, stdin=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True) as process:
            patience.until(lambda: client.ask(*BUS, "NameHasOwner", GLib.Variant("(s)", [NAME]))[0], "the name on the bus")
            yield process
            process.kill()

    def test_a_wrong_command_line_is_reported_in_one_line(self):
        for words in WRONG:
            with self.subTest(words):
                status, said = self.run_service(*words, DBUS_SESSION_BUS_ADDRESS="unix:path=/nonexistent")
                self.assertEqual(status, 2)
                self.assertRegex(said, r"\Atandem-trim-portal: usage: tandem-trim-portal \[--ask-again-after SECONDS\]; [^\n]*\n\Z")

    def test_without_a_bus_the_service_ends_with_a_message(self):
        status, said = self.run_service(DBUS_SESSION_BUS_ADDRESS="unix:path=/nonexistent")
        self.assertEqual((status, said), (1, "tandem-trim-portal: there is no session bus; programs print without this dialog\n"))

    def test_a_second_service_ends_with_a_message(self):
        with own_bus() as (address, _):
            client = Client(address=address)
            with self.running(client, address):
                status, said = self.run_service(DBUS_SESSION_BUS_ADDRESS=address)
                self.assertEqual((status, said), (1, f"tandem-trim-portal: another program serves {NAME}\n"))

    def test_without_a_screen_each_request_is_answered_and_the_service_ends_when_idle(self):
        with own_bus() as (address, _):
            client = Client(address=address)
            with self.running(client, address) as process:
                self.assertEqual(client.ask(NAME, PLACE, "org.freedesktop.DBus.Properties", "Get", GLib.Variant("(ss)", (PRINT, "version"))), (4,))
                for call in (client.prepare(), client.print(), client.print("/"), client.print(token=1), client.prepare(handle="/")):
                    self.assertEqual(call.answer(), (FAILED, {}))
                self.assertEqual(process.wait(patience.PATIENCE), 0)
                self.assertIn("there is no screen to show the print dialog on", process.stderr.read())

    def test_the_service_disables_portals_in_a_toolkit_that_uses_them_by_default(self):
        with own_bus() as (address, _), tempfile.TemporaryDirectory() as folder:
            service = pathlib.Path(shutil.copy(SERVICE, folder))
            (service.parent / "dialog").mkdir()
            shutil.copy(NEWER_TOOLKIT, service.parent / "dialog/tandem-trim-toolkit")
            client = Client(address=address)
            with self.running(client, address, service) as process:
                self.assertEqual(client.prepare().answer(), (FAILED, {}))
                process.terminate()
                self.assertRegex(process.stderr.read(), r"\Aportals disabled\ntoolkit started\n")


if __name__ == "__main__":
    unittest.main()
