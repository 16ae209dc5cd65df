"""Jobs that cannot be sent: each ends with status 1 and a message that says what to do, and nothing is sent."""

import shutil
import socket
import subprocess
import unittest

from cups_daemon import free_port
from terminal_case import BUNDLE, MARGINS, PPD, PROGRAM, SAMPLE, TerminalCase, of_panel

SETTINGS = "Contents/Resources/TandemTrimKV2-SettingInfo.plist"
MODULE = "Contents/Linux/TandemTrim-memory"
INFORMATION = "Contents/Info.plist"
PLIST = '<?xml version="1.0" encoding="UTF-8"?>\n<plist version="1.0">{}</plist>\n'


def remove(path):
    path.unlink()


def write(text):
    return lambda path: path.write_text(text)


def replace(old, new):
    return lambda path: path.write_text(path.read_text().replace(old, new))


# Ways to break a bundle: the file and the change.
BROKEN_BUNDLES = {
    "no information": (INFORMATION, remove),
    "no class named": (INFORMATION, replace("NSPrincipalClass", "NSOther")),
    "a class that the module lacks": (INFORMATION, replace("MorvaTTPdePluginKV2", "MorvaTTPdePluginKV3")),
    "no module": (MODULE, remove),
    "a module that is a shell script": (MODULE, write("#!/bin/sh\n")),
    "no settings": (SETTINGS, remove),
    "settings that are not a property list": (SETTINGS, write("MarginMin = 0")),
    "settings cut off": (SETTINGS, lambda path: path.write_bytes(path.read_bytes()[:900])),
    "settings that are a list": (SETTINGS, write(PLIST.format("<array/>"))),
    "settings that are empty": (SETTINGS, write(PLIST.format("<dict/>"))),
    "settings without keywords": (SETTINGS, replace("TicketKey", "OtherKey")),
    "settings without defaults": (SETTINGS, replace("DefaultValue", "OtherValue")),
    "settings without a margin's default": (SETTINGS, replace("MarginTop", "MarginOther")),
    "a default that is not a number": (SETTINGS, replace("<integer>5</integer>", "<string>5</string>")),
}


class RefusalsTest(TerminalCase):
    def broken_bundle(self, file, break_it):
        bundle = self.temporary_folder() / "TandemTrim.bundle"
        shutil.copytree(BUNDLE, bundle)
        break_it(bundle / file)
        return bundle

    def test_a_printer_that_does_not_exist_is_refused_with_a_list_of_those_that_do(self):
        self.cups.add_queue("Second")
        self.addCleanup(self.cups.remove, "Second")
        self.refuses("-d", "Nowhere", SAMPLE, words=['"Nowhere"', "Morva", "Second", "-d"])
        self.refuses("-d", "Nowhere", words=['"Nowhere"', "Morva", "Second"])

    def test_without_a_default_printer_one_must_be_named(self):
        self.refuses(SAMPLE, words=["no default printer", "Morva", "-d"])

    def test_a_server_that_does_not_run_is_named(self):
        server = f"127.0.0.1:{free_port()}"
        self.refuses("-h", server, "-d", "Morva", SAMPLE, words=[server, "start CUPS", "-h"])
        self.refuses("-d", "Morva", SAMPLE, CUPS_SERVER=server, words=[server, "start CUPS", "-h"])

    def test_a_server_behind_a_socket_is_named_by_its_path_alone(self):
        path = str(self.temporary_folder() / "none.sock")
        self.refuses("-d", "Morva", SAMPLE, words=[f"no print server answers at {path};"], CUPS_SERVER=path)

    def test_a_server_that_is_not_a_print_server_is_named(self):
        with socket.create_server(("127.0.0.1", 0)) as listener:
            server = f"127.0.0.1:{listener.getsockname()[1]}"
            self.refuses("-h", server, "-d", "Morva", SAMPLE, words=[server], TANDEM_TRIM_TIMEOUT="1")

    def test_a_queue_that_accepts_no_jobs_is_named_with_the_command_that_opens_it(self):
        self.cups.add_queue("Shut", PPD, accepting=False)
        self.addCleanup(self.cups.remove, "Shut")
        self.refuses("-d", "Shut", SAMPLE, words=["Shut", "cupsaccept Shut"])

    def test_a_document_that_cannot_be_read_is_named(self):
        folder = self.temporary_folder()
        empty, lost = folder / "empty.pdf", folder / "lost.pdf"
        empty.touch()
        lost.symlink_to(folder / "gone.pdf")
        for file in (folder / "missing.pdf", folder, empty, lost, SAMPLE / "inside"):
            for arguments in ([file], [file, SAMPLE], [SAMPLE, file]):
                with self.subTest(file=file):
                    self.refuses("-d", "Morva", *arguments, words=[file.name])
        self.refuses("-d", "Morva", "-", words=["standard input", "empty"])

    def test_a_ppd_that_cannot_be_read_is_named_with_the_line_of_the_mistake(self):
        folder = self.temporary_folder()
        malformed = folder / "malformed.ppd"
        lines = PPD.read_text(encoding="latin-1").splitlines()
        lines[30] = "this is not a line of a PPD"
        malformed.write_text("\n".join(lines) + "\n", encoding="latin-1")
        self.refuses("--ppd", malformed, words=[str(malformed), "line 31", "--ppd"])
        self.refuses("--ppd", malformed, "-d", "Morva", SAMPLE, words=[str(malformed), "line 31"])
        for file in (folder / "missing.ppd", folder):
            self.refuses("--ppd", file, words=[str(file)])
        empty = folder / "empty.ppd"
        empty.touch()
        self.refuses("--ppd", empty, words=[str(empty)])

    def test_a_queues_malformed_ppd_is_named_with_the_line_of_the_mistake(self):
        self.cups.add_queue("Damaged", PPD)
        self.addCleanup(self.cups.remove, "Damaged")
        ppd = self.cups.ppd_of("Damaged")
        lines = ppd.read_text(encoding="latin-1").splitlines()
        lines[30] = "this is not a line of a PPD"
        ppd.write_text("\n".join(lines) + "\n", encoding="latin-1")
        self.refuses("-d", "Damaged", SAMPLE, words=["Damaged", "line 31"])

    def test_without_a_working_bundle_nothing_is_printed(self):
        for what, (file, break_it) in BROKEN_BUNDLES.items():
            with self.subTest(what):
                bundle = self.broken_bundle(file, break_it)
                words = [str(bundle), "--plugin", "--without-panel"]
                self.refuses("--plugin", bundle, "-d", "Morva", SAMPLE, words=words)
        empty = self.temporary_folder()
        for plugin in (empty, empty / "missing"):
            words = [str(plugin), "--plugin", "--without-panel"]
            self.refuses("--plugin", plugin, "-d", "Morva", SAMPLE, words=words)

    def test_a_plugin_that_others_could_change_is_refused(self):
        folder = self.temporary_folder()
        bundle = shutil.copytree(BUNDLE, folder / BUNDLE.name)
        for open_path in (folder, bundle, (bundle / MODULE).parent, bundle / MODULE):
            before = open_path.stat().st_mode
            open_path.chmod(0o777)
            words = [str(bundle), f"everybody can write to {open_path} ", "chmod o-w", "--plugin", "--without-panel"]
            self.refuses("--plugin", bundle, "-d", "Morva", SAMPLE, words=words)
            open_path.chmod(before)
        folder.chmod(0o1777)
        self.assertEqual(of_panel(self.options_of("--plugin", bundle))["MVTopMargin"], "5")

    def test_settings_that_cannot_be_read_are_named_with_the_reason(self):
        reasons = {b"bplist00": ": a property list in binary form", b"<plist>\n<dict>": ":2: not a valid XML property list"}
        for content, reason in reasons.items():
            with self.subTest(reason):
                bundle = self.broken_bundle(SETTINGS, lambda path, content=content: path.write_bytes(content))
                self.refuses("--plugin", bundle, "-d", "Morva", SAMPLE, words=[f"{bundle / SETTINGS}{reason}"])

    def test_unread_settings_a_long_file_and_utf_16_make_no_difference(self):
        unread = "<dict>" + "<key>Unread</key><dict>" * 100 + "</dict>" * 100
        odd = {
            "a deep one": replace("<dict>", unread),
            "a hexadecimal number": replace("<dict>", "<dict><key>Unread</key><integer>0x10</integer>"),
            "one that cannot be read": replace("<dict>", "<dict><key>Unread</key><unknown/>"),
            "a long one": replace("</plist>", " " * (1 << 20) + "</plist>"),
            "in UTF-16": lambda path: path.write_bytes(path.read_text().encode("utf-16")),
        }
        expected = of_panel(self.options_of("--set", "Valid=On"))
        for what, change in odd.items():
            with self.subTest(what):
                bundle = self.broken_bundle(SETTINGS, change)
                self.assertEqual(of_panel(self.options_of("--plugin", bundle, "--set", "Valid=On")), expected)

    def test_without_panel_prints_the_job_as_given(self):
        for what, (file, break_it) in BROKEN_BUNDLES.items():
            with self.subTest(what):
                arguments = ["--plugin", self.broken_bundle(file, break_it), "-d", "Morva", "--without-panel"]
                result, (record,) = self.prints(*arguments, "-o", "MVTopMargin=7 x-note=yes", SAMPLE)
                self.assertEqual(of_panel(record.options), {MARGINS["Top"]: "7"})
                self.assertEqual(record.options["x-note"], "yes")
                self.assertIn("warning", result.stderr)

    def test_without_panel_refuses_settings_of_the_panel(self):
        bundle = self.broken_bundle(SETTINGS, remove)
        arguments = ["--plugin", bundle, "-d", "Morva", "--without-panel", SAMPLE]
        for act in (["--set", "Valid=On"], ["--restore-defaults"]):
            self.refuses(*arguments, *act, words=["--set", str(bundle)])

    def test_values_that_cups_would_lose_are_refused(self):
        for what, argument in {
            "brace": 'x-note="{Trim}"',
            "carriage return": 'x-note="one\rtwo"',
            "32768 bytes": "x-note=" + "z" * 32768,
        }.items():
            with self.subTest(what):
                self.refuses("-d", "Morva", "-o", argument, SAMPLE, words=["x-note", what, "-o x-note="])

    def test_values_that_cups_would_misread_are_refused(self):
        for option in ("job-priority=200", "job-priority=abc", "printer-resolution=banana", "orientation-requested=sideways", "landscape=perhaps"):
            with self.subTest(option):
                keyword, value = option.split("=")
                self.refuses("-d", "Morva", "-o", option, SAMPLE, words=[f'{keyword} is "{value}"', f"-o {keyword}="])

    def test_values_of_the_panels_settings_that_cups_would_lose_are_refused_too(self):
        self.refuses("-d", "Morva", "--force", "-o", 'MVTopMargin="{5}"', SAMPLE, words=["MVTopMargin", "brace"])

    def test_a_full_disk_at_standard_output_is_an_error(self):
        with open("/dev/full", "wb") as full:
            result = subprocess.run(
                [PROGRAM, "-d", "Morva"], stdout=full, stderr=subprocess.PIPE, env=self.environment(), check=False
            )
        self.assertEqual(result.returncode, 1)
        self.assertIn(b"standard output", result.stderr)

    def test_reaching_the_limit_of_file_sizes_is_an_error(self):
        self.refuses("--fsize=1000", PROGRAM, "-d", "Morva", SAMPLE, program="prlimit", words=["File too large"])

    def test_an_empty_file_name_is_reported_as_such(self):
        self.refuses("-d", "Morva", "", words=["tandem-trim: the name of a file is empty; nothing was sent. Name a file"])


if __name__ == "__main__":
    unittest.main()
