"""The server that the other tests rely on, tested with CUPS's own programs only."""

import json
import os
import pathlib
import shutil
import socket
import subprocess
import sys
import tempfile
import unittest
import unittest.mock

import cups_daemon
import private_cups
from patience import PATIENCE, until
from records import parse_options
from terminal_case import PPD, SAMPLE, digest


class PrivateCupsTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.cups = private_cups.PrivateCups()
        cls.addClassCleanup(cls.cups.stop)
        cls.cups.add_queue("Morva", PPD)
        cls.cups.add_queue("Raw")

    def setUp(self):
        self.cups.forget()

    def lp(self, *arguments):
        return subprocess.run(
            ["lp", *arguments], env=self.cups.environment(), capture_output=True, text=True, timeout=PATIENCE, check=False
        )

    def test_jobs_are_recorded_with_and_without_a_ppd(self):
        for queue in ("Morva", "Raw"):
            with self.subTest(queue=queue):
                self.cups.forget()
                options = ["-o", "MVTopMargin=7 landscape nocollate", "-o", 'note="two words, \\"quoted\\" – ü\\\\"']
                sent = self.lp("-d", queue, "-n", "2", "-t", "A title", *options, str(SAMPLE))
                self.assertEqual(sent.returncode, 0, sent.stderr)
                self.cups.wait_for_jobs()
                (record,) = self.cups.records()
                self.assertEqual(record.queue, queue)
                self.assertEqual(record.title, "A title")
                self.assertEqual(record.sha256, digest(SAMPLE))
                self.assertEqual(record.size, SAMPLE.stat().st_size)
                expected = {"MVTopMargin": "7", "landscape": "true", "note": 'two words, "quoted" – ü\\'}
                self.assertEqual({key: record.options.get(key) for key in expected}, expected)

    def test_options_keep_their_order_and_their_escaped_characters(self):
        options = parse_options("b=1 nocollate a=two\\ words\\\\ landscape c=\\\"x=y\\\" d=")
        expected = {"b": "1", "collate": "false", "a": "two words\\", "landscape": "true", "c": '"x=y"', "d": ""}
        self.assertEqual(list(options.items()), list(expected.items()))

    def test_a_printer_can_reject_jobs_be_stopped_and_be_removed(self):
        self.cups.add_queue("Shut", PPD, accepting=False)
        self.assertNotEqual(self.lp("-d", "Shut", str(SAMPLE)).returncode, 0)
        self.cups.add_queue("Stopped", PPD, enabled=False)
        self.assertEqual(self.lp("-d", "Stopped", str(SAMPLE)).returncode, 0)
        self.assertEqual(len(self.cups.jobs("not-completed")), 1)
        self.assertEqual(self.cups.records(), [])
        for queue in ("Shut", "Stopped"):
            self.cups.remove(queue)
            self.assertNotEqual(self.lp("-d", queue, str(SAMPLE)).returncode, 0)
        self.assertEqual(self.cups.jobs("not-completed"), [])

    def test_a_frozen_server_keeps_its_port_open_and_answers_once_thawed(self):
        self.cups.freeze()
        with socket.create_connection(self.cups.address, timeout=PATIENCE) as client:
            client.sendall(b"GET / HTTP/1.0\r\n\r\n")
            client.settimeout(0.2)
            with self.assertRaises(TimeoutError):
                client.recv(1)
            self.cups.thaw()
            client.settimeout(PATIENCE)
            self.assertEqual(client.recv(4), b"HTTP")

    def test_lp_uses_options_that_lpoptions_saved(self):
        command = ["lpoptions", "-p", "Morva", "-o", "MVLeftMargin=3"]
        subprocess.run(command, env=self.cups.environment(), capture_output=True, check=True)
        self.assertEqual(self.lp("-d", "Morva", str(SAMPLE)).returncode, 0)
        self.cups.wait_for_jobs()
        (record,) = self.cups.records()
        self.assertEqual(record.options["MVLeftMargin"], "3")

    def test_the_server_and_its_files_are_removed_afterwards(self):
        with private_cups.PrivateCups() as cups:
            address, folder = cups.address, cups.folder
        self.assertFalse(folder.exists())
        with self.assertRaises(ConnectionRefusedError):
            socket.create_connection(address)

    def test_a_server_whose_port_another_one_took_takes_a_free_port_and_does_not_start_again_there(self):
        with private_cups.PrivateCups() as winner:
            ports = [winner.address[1], cups_daemon.free_port()]
            with unittest.mock.patch("cups_daemon.free_port", side_effect=ports), private_cups.PrivateCups() as loser:
                self.assertEqual(loser.address[1], ports[1])
                winner.kill()
                with unittest.mock.patch("cups_daemon.free_port", return_value=ports[0]), private_cups.PrivateCups():
                    with self.assertRaises(RuntimeError):
                        winner.revive()

    def test_the_server_ends_when_its_program_is_killed(self):
        program = """if True:
            import private_cups, sys
            cups = private_cups.PrivateCups()
            print(*cups.address, cups.folder, flush=True)
            sys.stdin.read()
        """
        with subprocess.Popen(
            [sys.executable, "-c", program],
            cwd=pathlib.Path(private_cups.__file__).parent,
            stdin=subprocess.PIPE,
            stdout=subprocess.PIPE,
            text=True,
        ) as owner:
            host, port, folder = owner.stdout.readline().split()
            owner.kill()

        def removed():
            shutil.rmtree(folder, ignore_errors=True)
            return not pathlib.Path(folder).exists()

        # The server may write files even after its port is closed.
        self.addCleanup(until, removed, "the server's last file")

        def refused():
            with socket.socket() as client:
                return client.connect_ex((host, int(port))) != 0

        until(refused, "the end of the server")

    def test_an_ordinary_user_can_run_it(self):
        folder = pathlib.Path(tempfile.mkdtemp(prefix="private-cups-user-"))
        self.addCleanup(shutil.rmtree, folder)
        folder.chmod(0o755)
        here = pathlib.Path(private_cups.__file__).parent
        for file in (*here.glob("*.py"), *here.parent.glob("*.py"), PPD, SAMPLE):
            shutil.copy(file, folder)
        user = ["setpriv", "--reuid", "nobody", "--regid", "nogroup", "--clear-groups"] if os.geteuid() == 0 else []
        command = ["./private_cups.py", PPD.name, "--", "lp", "-d", "Morva", "-o", "MVTopMargin=9", SAMPLE.name]
        result = subprocess.run([*user, *command], cwd=folder, capture_output=True, text=True, timeout=PATIENCE, check=False)
        self.assertEqual(result.returncode, 0, result.stderr)
        record = json.loads(result.stdout.splitlines()[-1])
        self.assertEqual(record["options"]["MVTopMargin"], "9")
        self.assertEqual(record["sha256"], digest(SAMPLE))


if __name__ == "__main__":
    unittest.main()
