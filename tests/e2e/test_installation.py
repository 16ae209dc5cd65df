"""What `make install` puts in place works from there."""

import pathlib
import subprocess
import unittest

from terminal_case import BUILD, MARGINS, PPD, TerminalCase


class InstallationTest(TerminalCase):
    def test_the_installed_program_finds_its_plugin(self):
        prefix = self.temporary_folder() / "usr"
        subprocess.run(["cmake", "--install", BUILD, "--prefix", prefix], check=True, capture_output=True)
        shown = subprocess.run(
            [prefix / "bin/tandem-trim", "--ppd", PPD, "--set", "Valid=On", "--set", "Top=12"],
            env={"PATH": "/usr/bin", "HOME": str(prefix)},
            capture_output=True,
            text=True,
            check=False,
        )
        self.assertEqual((shown.returncode, shown.stderr), (0, ""))
        self.assertIn(f"-o {MARGINS['Top']}=12", shown.stdout)
        self.assertTrue(list(pathlib.Path(prefix, "share/man/man1").glob("tandem-trim.1*")))


if __name__ == "__main__":
    unittest.main()
