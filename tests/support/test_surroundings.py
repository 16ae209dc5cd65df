"""The surroundings that all tests run in, as programs find them there."""

import itertools
import json
import os
import pathlib
import signal
import subprocess
import unittest

import surroundings
from patience import PATIENCE

LAUNCHER = pathlib.Path(surroundings.__file__)
SCREEN = LAUNCHER.with_name("on_own_screen.py")
LAUNCHERS = ((LAUNCHER,), (SCREEN,), (SCREEN, "TANDEM_TRIM_SCREEN=wayland"))
HOSTILE = LAUNCHER.parents[1] / "hostile_environment.sh"


def output(*command, **variables):
    """The output of the command, run with these variables."""
    return subprocess.run(command, env={"PATH": surroundings.PATH} | variables, capture_output=True, text=True, check=True).stdout


def environment(*command, **variables):
    """The environment of a program that the command starts."""
    return json.loads(output(*command, "/usr/bin/python3", "-c", "import json, os; print(json.dumps(dict(os.environ)))", **variables))


class SurroundingsTest(unittest.TestCase):
    def test_a_hostile_environment_of_the_caller_does_not_reach_a_test(self):
        def comparable(found):
            """Leaves out what differs from run to run."""
            of_run = ("DISPLAY", "DBUS_SESSION_BUS_ADDRESS", "DBUS_SESSION_BUS_PID")
            return {name: value.replace(found["TMPDIR"].removesuffix("/tmp"), "") for name, value in found.items() if name not in of_run}

        for launcher in LAUNCHERS:
            with self.subTest(launcher):
                self.assertEqual(comparable(environment(HOSTILE, *launcher)), comparable(environment(*launcher)))

    def test_the_sanitizers_options_the_seed_and_the_mutant_reach_a_test(self):
        kept = {"ASAN_OPTIONS": "a=1", "LSAN_OPTIONS": "b=2", "TANDEM_TRIM_SEED": "3", "TANDEM_TRIM_MUTANT": "4"}
        self.assertLessEqual(kept.items(), environment(LAUNCHER, **kept).items())

    def test_variables_on_the_command_line_override_all_others(self):
        found = environment(LAUNCHER, "LANG=de_DE.UTF-8", "TANDEM_TRIM_JOBS=5", LANG="C", TANDEM_TRIM_JOBS="6")
        self.assertEqual((found["LANG"], found["TANDEM_TRIM_JOBS"]), ("de_DE.UTF-8", "5"))

    def test_only_the_requested_font_and_dejavu_sans_exist(self):
        def families(*given):
            return set(output(LAUNCHER, *given, "fc-list", ":", "family").split("\n")) - {""}

        def default(*given):
            return output(LAUNCHER, *given, "fc-match", "Helvetica:bold", "family", "style").strip()

        self.assertEqual(families(), {"DejaVu Sans"})
        self.assertEqual(default(), "DejaVu Sans:style=Bold")
        for family in ("Cantarell", "Noto Sans"):
            given = f"TANDEM_TRIM_FONT={family} 11"
            self.assertEqual(families(given), {family, "DejaVu Sans"})
            self.assertEqual(default(given), f"{family}:style=Bold")

    def test_the_home_folder_is_removed_however_the_test_ends(self):
        def starts(launcher, script):
            test = subprocess.Popen([*launcher, "sh", "-c", script], stdout=subprocess.PIPE, text=True, stderr=subprocess.DEVNULL)
            self.addCleanup(test.stdout.close)
            return test, pathlib.Path(test.stdout.readline().strip())

        for launcher in LAUNCHERS:
            with self.subTest(launcher):
                test, home = starts(launcher, "echo $HOME; touch $HOME/file; exit 3")
                self.assertEqual(test.wait(), 3)
                self.assertFalse(home.parent.exists())
                test, home = starts(launcher, "echo $HOME; kill -KILL $$")
                self.assertEqual(test.wait(), 128 + signal.SIGKILL)
                self.assertFalse(home.parent.exists())
                test, home = starts(launcher, "echo $HOME; exec sleep 60")
                test.terminate()
                self.assertEqual(test.wait(), 128 + signal.SIGTERM)
                self.assertFalse(home.parent.exists())

    def test_a_service_that_ignores_the_signal_to_end_is_killed(self):
        script = "trap '' TERM; sleep 1000 >/dev/null 2>&1 & echo $!; exit 3"
        result = subprocess.run([SCREEN, "sh", "-c", script], capture_output=True, text=True, timeout=PATIENCE, check=False)
        self.assertEqual(result.returncode, 3, result.stderr)
        self.assertFalse(pathlib.Path("/proc", result.stdout.strip()).exists())

    def test_the_services_output_is_printed_only_if_the_command_fails(self):
        speak = 'echo Hello >>"$TANDEM_TRIM_SERVICES_LOG"'
        on_bus = "dbus-send --session --print-reply --dest=org.a11y.Bus /org/a11y/bus org.a11y.Bus.GetAddress >/dev/null"
        for launcher, script in ((LAUNCHERS[0], speak), *itertools.product(LAUNCHERS[1:], (speak, on_bus))):
            with self.subTest(launcher=launcher, script=script):
                for status, said in ((0, self.assertNotRegex), (3, self.assertRegex)):
                    command = [*launcher, "sh", "-c", f"{script}; exit {status}"]
                    result = subprocess.run(command, capture_output=True, text=True, check=False)
                    self.assertEqual(result.returncode, status, result.stderr)
                    said(result.stderr, "Hello|dbus-daemon")

    def test_every_test_runs_in_these_surroundings(self):
        listed = json.loads(output("ctest", "--show-only=json-v1", "--test-dir", os.environ["TANDEM_TRIM_BUILD"]))["tests"]
        outside = [test["name"] for test in listed if test["command"][0] not in (str(LAUNCHER), str(SCREEN))]
        self.assertTrue(listed)
        self.assertEqual(outside, [])


if __name__ == "__main__":
    unittest.main()
