"""Runs the program that tests an installed bundle, as a user of a Mac does."""

import os
import pathlib
import re
import shutil
import subprocess
import tempfile
import unittest

PROGRAM = os.environ["TANDEM_TRIM_SELF_TEST"]
BUNDLE = pathlib.Path(os.environ["TANDEM_TRIM_BUILD"], "TandemTrim.bundle")
REFUSED = 3


def run(bundle, cases="*"):
    return subprocess.run([PROGRAM, "-bundle", bundle], env=os.environ | {"GTEST_FILTER": cases}, capture_output=True, text=True)


class TheSelfTest(unittest.TestCase):
    def copy_of_bundle(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        return shutil.copytree(BUNDLE, pathlib.Path(folder.name, BUNDLE.name))

    def test_loads_a_good_bundle_and_passes_every_case_of_the_suite(self):
        done = run(BUNDLE, "-HugeText*")  # these are slow, and conformance_appkit_test runs them
        self.assertEqual(done.returncode, 0, done.stdout + done.stderr)
        self.assertIn(f"{BUNDLE} is loaded\n", done.stdout)
        cases = int(re.search(r"(\d+) tests from \d+ test suites ran", done.stdout)[1])
        self.assertIn(f"[  PASSED  ] {cases} tests.", done.stdout)
        self.assertGreater(cases, 100)

    def test_distinguishes_a_bundle_that_is_not_loaded_from_one_that_fails(self):
        damaged = self.copy_of_bundle()
        (damaged / "Contents/MacOS/TandemTrim").write_text("no code")
        for bundle in (damaged, damaged.with_name("nowhere.bundle")):
            with self.subTest(bundle):
                done = run(bundle)
                self.assertEqual(done.returncode, REFUSED)
                self.assertIn(f"{bundle} is not loaded: ", done.stderr)
                self.assertNotIn("RUN", done.stdout)
        without_nib = self.copy_of_bundle()
        (without_nib / "Contents/Resources/TandemTrim.xib").unlink()
        done = run(without_nib, "PanelView*")
        self.assertEqual(done.returncode, 1)
        self.assertIn("is loaded\n", done.stdout)
        self.assertIn("FAILED", done.stdout)

    def test_shows_its_usage_without_a_bundle(self):
        done = subprocess.run([PROGRAM], capture_output=True, text=True)
        self.assertEqual(done.returncode, 2)
        self.assertIn("-bundle PATH", done.stderr)


if __name__ == "__main__":
    unittest.main()
