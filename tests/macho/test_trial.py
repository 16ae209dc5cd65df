"""The trial on a Mac, with stand-ins for a Mac's commands."""

import pathlib
import re
import tempfile
import unittest

import mach_o
from mac import Mac

# The Mac's commands as shell scripts, for when all goes well.
COMMANDS = {
    "uname": 'if [ "${1:-}" = -m ]; then echo arm64; else echo Darwin; fi',
    "sw_vers": 'if [ "$1" = -productVersion ]; then echo 14.5; else echo 23F79; fi',
    "git": "echo abc1234",
    "xcrun": 'case $1 in --find) echo /usr/bin/ibtool ;; '
             'clang++) printf "#!/bin/sh\\necho 7 >sent\\n" >"${@: -1}"; chmod +x "${@: -1}" ;; esac',
    "cmake": 'if [ "$1" = --build ]; then mkdir -p build/macos/TandemTrim.bundle; '
             'ln -sf "$(command -v self-test)" build/macos/tandem-trim-self-test; fi',
    "self-test": 'echo "$2 is loaded"',
    "xcodebuild": "echo Xcode 15.4", "ninja": "", "codesign": "", "lipo": "",
    "sudo": 'echo "$*" >>sudo.log',
    # Lists the job of an earlier trial; the new job appears only at the second call after it is sent.
    "lpstat": 'if [ "$1" = -W ]; then echo "TandemTrimTrial-6  user  1024  today"; '
              '[ ! -e arrived ] || echo "TandemTrimTrial-7  user  1024  today"; fi; [ ! -e sent ] || mv sent arrived',
    "sleep": "",
    "ipptool": 'test "${2##*/}" = 7; echo "        MVTopMargin (nameWithoutLanguage) = 12"',
    "log": 'echo "supportedPPDOptionKeys:=NSArray(...)"',
}
# Other commands that every Mac has.
TOOLS = ("bash", "chmod", "dirname", "env", "grep", "ln", "mkdir", "mv", "rm", "sed", "sh", "tail", "tee")
# The check that fails with each command: that of a tool, or one that ends the trial.
OF_TOOLS = {"xcodebuild": "Xcode is installed", "xcrun": "ibtool is installed", "cmake": "cmake is installed"}
ENDING = {
    "codesign": "it is signed for this Mac", "lipo": "it is built for both processors", "sudo": "it is installed",
    "log": "the console is read"}


class TheTrial(unittest.TestCase):
    def setUp(self):
        self.mac = Mac(self, COMMANDS, TOOLS)
        self.project = self.mac.project()

    def run_trial(self, *arguments):
        return self.mac.run(self.project / "packaging/macos/trial/trial.sh", *arguments)

    def report(self):
        return (self.project / "build/macos/report.txt").read_text()

    def test_reports_every_check_and_the_options_of_the_job(self):
        done = self.run_trial()
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        report = self.report()
        self.assertIn("macOS 14.5 (23F79), arm64, abc1234", report)
        self.assertNotIn("failed", report)
        self.assertIn("/Library/Printers/Morva/PDEs/TandemTrim.bundle is loaded", report)
        for expected in ("ok      a job is sent from the print dialog", "MVTopMargin (nameWithoutLanguage) = 12", "supportedPPDOptionKeys"):
            self.assertIn(expected, report)

    def checks_if_it_fails(self, name):
        """The report's checks and their results, in a trial where this command fails."""
        self.mac.command(name, "echo no luck; exit 9")
        done = self.run_trial()
        self.mac.mend(name)
        self.assertEqual(done.returncode, 1)
        self.assertNotIn("All is done", done.stdout)
        self.assertIn("make mac-clean", done.stdout)
        return [(check, result) for result, check in re.findall(r"^(ok|failed) +(.+?)(?: \(status \d+\))?$", self.report(), re.MULTILINE)]

    def test_stops_at_the_first_failure_and_reports_which(self):
        for name, check in ENDING.items():
            with self.subTest(name):
                *before, last = self.checks_if_it_fails(name)
                self.assertEqual(last, (check, "failed"))
                self.assertEqual({result for _, result in before}, {"ok"})

    def test_stops_after_the_last_tool_if_one_fails(self):
        for name, check in OF_TOOLS.items():
            with self.subTest(name):
                checks = self.checks_if_it_fails(name)
                self.assertIn((check, "failed"), checks)
                self.assertEqual(checks[-1], ("ninja is installed", "ok"))

    def test_reads_the_console_even_if_the_job_has_no_options(self):
        for name in ("ipptool", "lpstat"):
            with self.subTest(name):
                self.assertEqual(self.checks_if_it_fails(name)[-2:],
                                 [("the job has the panel's options", "failed"), ("the console is read", "ok")])

    def test_lists_all_missing_tools_at_once_and_how_to_get_them(self):
        for name in ("xcodebuild", "cmake", "ninja"):
            self.mac.remove(name)
        done = self.run_trial()
        self.assertEqual(done.returncode, 1)
        for remedy in ("from the App Store", "brew install cmake", "brew install ninja"):
            self.assertIn(remedy, self.report())
            self.assertIn(remedy, done.stdout)
        self.assertFalse((self.project / "sudo.log").exists())

    def test_says_how_to_get_xcode_when_only_its_placeholder_commands_exist(self):
        # A Mac without Xcode has these commands, too; they only report that Xcode is missing.
        self.mac.command("xcodebuild", "echo 'requires Xcode, but active developer directory is a command line tools instance' >&2; exit 1")
        done = self.run_trial()
        self.assertEqual(done.returncode, 1)
        self.assertIn("requires Xcode, but", done.stdout)
        self.assertNotIn("the bundle is configured", done.stdout)
        self.assertIn("from the App Store", done.stdout)

    def test_tries_the_dialog_even_if_the_self_test_fails(self):
        self.mac.command("self-test", "echo no luck; exit 3")
        done = self.run_trial()
        self.assertEqual(done.returncode, 1)
        self.assertIn("failed  it loads and passes the self-test (status 3)\n        no luck\n", self.report())
        self.assertIn("ok      the job has the panel's options", self.report())
        self.assertNotIn("All is done", done.stdout)

    def test_installs_a_bundle_that_all_users_can_read_and_adds_a_queue_that_is_not_shared(self):
        self.run_trial()
        place = "/Library/Printers/Morva/PDEs"
        self.assertEqual((self.project / "sudo.log").read_text().splitlines(), [
            f"mkdir -p {place}", f"rm -rf {place}/TandemTrim.bundle", f"cp -R build/macos/TandemTrim.bundle {place}/TandemTrim.bundle",
            f"chmod -R u=rwX,go=rX {place}/TandemTrim.bundle", f"chown -R root:wheel {place}/TandemTrim.bundle",
            "lpadmin -p TandemTrimTrial -E -v ipp://localhost:9/none -P build/macos/MorvaTandemKV2.ppd -o printer-is-shared=false"])

    def test_does_not_mistake_the_job_of_an_earlier_trial_for_its_own(self):
        self.mac.command("xcrun", COMMANDS["xcrun"].replace("echo 7 >sent", "true"))
        self.assertEqual(self.run_trial().returncode, 1)
        self.assertIn("no new job waits in the queue", self.report())

    def test_shows_its_usage_for_a_wrong_argument_and_does_nothing(self):
        done = self.run_trial("clear")
        self.assertEqual(done.returncode, 2)
        self.assertIn("usage: ", done.stderr)
        self.assertFalse((self.project / "build").exists())

    def test_reports_a_dialog_that_was_cancelled_and_a_job_without_options(self):
        self.mac.command("xcrun", COMMANDS["xcrun"].replace("echo 7 >sent", "exit 3"))
        self.run_trial()
        self.assertIn("failed  a job is sent from the print dialog (status 3)", self.report())
        self.assertNotIn("the panel's options", self.report())
        self.mac.mend("xcrun")
        self.mac.command("ipptool", "echo job-id = 7")
        self.run_trial()
        self.assertIn("job 7 has none of the panel's options", self.report())

    def test_clean_removes_everything_that_the_trial_made(self):
        self.run_trial()
        log = self.project / "sudo.log"
        log.unlink()
        done = self.run_trial("clean")
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        self.assertEqual(log.read_text().splitlines(), [
            "lpadmin -x TandemTrimTrial", "rm -rf /Library/Printers/Morva/PDEs/TandemTrim.bundle",
            "rmdir /Library/Printers/Morva/PDEs /Library/Printers/Morva"])
        self.assertFalse((self.project / "build/macos").exists())
        self.mac.command("sudo", "exit 9")
        self.assertEqual(self.run_trial("clean").returncode, 1)

    def test_prints_with_an_application_that_compiles_for_macos(self):
        page = mach_o.SOURCES / "packaging/macos/trial/print_page.mm"
        self.assertEqual(mach_o.errors_of("appkit/nib.mm", lambda command: command.replace(command.split()[-1], str(page))), "")

    def test_tests_the_installed_bundle_with_a_program_that_compiles_for_macos(self):
        headers = pathlib.Path(tempfile.mkdtemp(dir=self.project))
        for name in ("gtest", "gmock"):
            (headers / name).symlink_to(f"/usr/include/{name}")
        for name in ("AvailabilityMacros.h", "TargetConditionals.h"):  # GoogleTest includes them
            (headers / name).touch()
        more = f"-Wno-deprecated-declarations -isystem {headers} -include {mach_o.SOURCES}/tests/macho/self_test.h"
        appkit = mach_o.SOURCES / "tests/adapters/appkit"
        suite = mach_o.SOURCES / "tests/conformance"
        for source in (appkit / "self_test/main.mm", appkit / "self_test/hands.mm", appkit / "support/host.mm",
                       suite / "appkit_platform.mm", suite / "scene.cpp", *sorted(suite.glob("*_test.cpp"))):
            with self.subTest(source):
                errors = mach_o.errors_of("appkit/nib.mm", lambda command: command.replace(command.split()[-1], f"{more} {source}"))
                self.assertEqual(errors, "")

    def test_is_refused_on_any_other_system(self):
        self.mac.command("uname", "echo Linux")
        done = self.run_trial()
        self.assertEqual(done.returncode, 1)
        self.assertIn("needs a Mac", done.stderr)


if __name__ == "__main__":
    unittest.main()
