"""A print server that wants an encrypted connection gets one, and a changed certificate is reported."""

import itertools
import unittest

import fake_server
import ipp
from fake_server import FakeServer
from patience import PATIENCE
from private_cups import PrivateCups
from relay import Rerouted, Usurped, WantsEncryption
from terminal_case import PPD, REQUEST, SAMPLE, SMALLER, TerminalCase

CONFIRMED = rf"^{REQUEST}job \d+ on Morva: 7 of 7 options confirmed\n$"
REQUIRED = {"CUPS_ENCRYPTION": "Required"}


class EncryptionTest(TerminalCase):
    def certificate(self, host="127.0.0.1"):
        """The file of the server's saved certificate."""
        return self.cups.folder / f"home/.cups/ssl/{host}.crt"

    def prints_encrypted(self, **around):
        """Prints on a server that accepts only encrypted connections; returns how many requests it turned away."""
        with WantsEncryption(self.cups.address) as relay:
            result = self.trim("-d", "Morva", SAMPLE, CUPS_SERVER=relay.address, **around)
        self.assertRegex(result.stdout, CONFIRMED, result.stderr)
        self.assertNotIn("certificate", result.stderr)
        self.cups.wait_for_jobs()
        return relay.turned_away

    def test_encryption_that_the_user_requires_is_used_from_the_start(self):
        self.assertEqual(self.prints_encrypted(**REQUIRED), 0)

    def test_encryption_that_the_server_requires_is_used_from_then_on(self):
        self.assertGreater(self.prints_encrypted(), 0)

    def test_the_first_certificate_is_saved_where_only_the_user_can_read_it(self):
        self.prints_encrypted(**REQUIRED)
        self.assertEqual(self.certificate().parent.stat().st_mode & 0o777, 0o700)
        first = self.certificate().read_bytes()
        self.assertIn(b"BEGIN CERTIFICATE", first)
        self.prints_encrypted(**REQUIRED)
        self.assertEqual(self.certificate().read_bytes(), first)

    def test_a_changed_certificate_is_reported_before_anything_is_sent(self):
        self.prints_encrypted(**REQUIRED)
        with PrivateCups() as other:
            other.add_queue("Morva", PPD)
            address = "{}:{}".format(*other.address)
            before = other.requests()
            result = self.trim("-d", "Morva", SAMPLE, CUPS_SERVER=address, **REQUIRED)
            self.assertEqual(other.requests(), before)
            self.assertEqual((result.returncode, result.stdout), (1, ""))
            words = f"the print server at {address} presents a different certificate than before, so it may be another server; .*remove {self.certificate()} "
            self.assertRegex(result.stderr, words)
            with WantsEncryption(other.address) as relay:
                # The program reports this at once, however long the time limit for answers is.
                result = self.trim("-d", "Morva", SAMPLE, CUPS_SERVER=relay.address, TANDEM_TRIM_TIMEOUT=str(10 * PATIENCE))
            self.assertEqual((result.returncode, result.stdout), (1, ""))
            self.assertIn("a different certificate", result.stderr)
            self.assertEqual(other.jobs(), [])
            self.certificate().unlink()
            result = self.trim("-d", "Morva", SAMPLE, CUPS_SERVER=address, **REQUIRED)
            self.assertRegex(result.stdout, CONFIRMED, result.stderr)

    def test_another_server_that_takes_a_connection_over_gets_no_job_and_is_reported(self):
        self.prints_encrypted(**REQUIRED)
        reports = 0
        with PrivateCups() as other:
            other.add_queue("Morva", PPD)
            for piece in itertools.count(1):
                with self.subTest(piece), Usurped(self.cups.address, other.address, piece) as relay:
                    result = self.trim("-d", "Morva", SAMPLE, CUPS_SERVER=relay.address, **REQUIRED)
                    self.assertEqual(other.jobs(), [], result.stderr)
                    self.assertEqual("confirmed" in result.stdout, result.returncode == 0, result.stderr)
                    reports += "presents a different certificate than before" in result.stderr
                if not relay.is_cut:
                    break
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertGreater(reports, 0)

    def test_no_ppd_of_another_server_that_takes_a_later_connection_is_believed(self):
        ppd = self.temporary_folder() / "smaller.ppd"
        ppd.write_text(PPD.read_text().replace(*SMALLER))
        arguments = ("-d", "Morva", "--set", "Valid=On", "--set", "Top=99", "--summary")
        self.prints_encrypted(**REQUIRED)
        named = fake_server.described(ipp.PRINTER_GROUP, fake_server.PRINTER).replace(b"\r\n", b"\r\nConnection: close\r\n", 1)
        server = FakeServer(PPD.read_bytes(), {ipp.GET_PRINTER: lambda: [named]}, keys=self.cups.keys())
        with PrivateCups() as other, server:
            other.add_queue("Morva", ppd)
            result = self.trim(*arguments, CUPS_SERVER=server.address, CUPS_ENCRYPTION="Always")
            self.assertIn("Top Margin: 20", result.stdout, result.stderr)
            before = other.requests()
            with Rerouted(server.place, other.address, 1) as relay:
                result = self.trim(*arguments, CUPS_SERVER=relay.address, CUPS_ENCRYPTION="Always")
            self.assertTrue(relay.is_rerouted)
            self.assertEqual((result.returncode, result.stdout), (1, ""))
            self.assertIn("presents a different certificate than before", result.stderr)
            self.assertEqual(other.requests(), before)

    def test_a_certificate_that_cannot_be_saved_is_reported_and_the_job_is_printed(self):
        blocked = self.certificate().parent
        blocked.parent.mkdir(parents=True)
        blocked.write_text("no folder")
        result = self.trim("-d", "Morva", SAMPLE, **REQUIRED)
        self.assertRegex(result.stdout, CONFIRMED, result.stderr)
        self.assertIn(f"the certificate of the print server at {self.cups.address[0]}:{self.cups.address[1]} cannot be saved as {self.certificate()}", result.stderr)

    def test_another_certificate_that_is_valid_for_the_same_host_is_reported_too(self):
        # The second server's certificate expires later than the first one's.
        first = "localhost:{}".format(self.cups.address[1])
        self.assertRegex(self.trim("-d", "Morva", SAMPLE, CUPS_SERVER=first, **REQUIRED).stdout, CONFIRMED)
        with PrivateCups() as other:
            other.add_queue("Morva", PPD)
            result = self.trim("-d", "Morva", SAMPLE, CUPS_SERVER=f"localhost:{other.address[1]}", **REQUIRED)
            self.assertEqual(other.jobs(), [])
        self.assertEqual(result.returncode, 1)
        self.assertIn("a different certificate than before", result.stderr)
        self.assertRegex(self.trim("-d", "Morva", SAMPLE, CUPS_SERVER=first, **REQUIRED).stdout, CONFIRMED)

    def test_a_saved_certificate_that_cannot_be_read_is_reported(self):
        self.certificate().parent.mkdir(parents=True)
        self.certificate().write_text("junk")
        result = self.refuses("-d", "Morva", SAMPLE, **REQUIRED)
        self.assertRegex(result.stderr, f"certificate of .* cannot be read; repair or remove {self.certificate()}")

    def test_a_certificate_that_the_users_settings_do_not_accept_is_reported(self):
        settings = self.cups.folder / "home/client.conf"
        for text, words in (("TrustOnFirstUse No\n", "Trust on first use"), ("ValidateCerts Yes\n", "not valid for name")):
            settings.write_text(text)
            with self.subTest(text):
                result = self.refuses("-d", "Morva", SAMPLE, **REQUIRED)
                self.assertRegex(result.stderr, f"presents a certificate that is not trusted .*{words}.*; .*{self.certificate()}.* client.conf")

    def test_a_server_that_cannot_encrypt_is_reported(self):
        with FakeServer(PPD.read_bytes()) as server:
            result = self.trim("-d", "Morva", SAMPLE, CUPS_SERVER=server.address, TANDEM_TRIM_TIMEOUT="5", **REQUIRED)
        self.assertEqual(result.returncode, 1)
        self.assertRegex(result.stderr, f"the print server at {server.address} .*encrypted connection.*; ")


if __name__ == "__main__":
    unittest.main()
