"""What is installed works from where it is, and goes without a trace."""

import os
import subprocess
import unittest

from terminal_case import BUILD, MARGINS, PPD, TerminalCase


class InstallationTest(TerminalCase):
    def assert_works(self, prefix):
        shown = subprocess.run(
            [prefix / "bin/tandem-trim", "--ppd", PPD, "--set", "Valid=On", "--set", "Top=12"],
            env={"PATH": "/usr/bin", "HOME": str(prefix)} | {k: v for k, v in os.environ.items() if "SAN_" in k},
            capture_output=True,
            text=True,
            check=False,
        )
        self.assertEqual((shown.returncode, shown.stderr), (0, ""))
        self.assertIn(f"-o {MARGINS['Top']}=12", shown.stdout)
        for name in ("man/man1/tandem-trim.1", "applications/com.morva.tandemtrim.desktop"):
            self.assertTrue(list(prefix.glob(f"share/{name}*")), name)

    def test_the_installed_program_finds_its_plugin(self):
        prefix = self.temporary_folder() / "usr"
        subprocess.run(["cmake", "--install", BUILD, "--prefix", prefix], check=True, capture_output=True)
        self.assert_works(prefix)

    def test_the_package_installs_works_and_goes(self):
        folder = self.temporary_folder()
        subprocess.run(["cpack", "-B", folder / "made"], cwd=BUILD, check=True, capture_output=True)
        (package,) = (folder / "made").glob("tandem-trim_*.deb")
        root = folder / "root"
        for name in ("info", "updates", "triggers"):
            (root / "var/lib/dpkg" / name).mkdir(parents=True)
        (root / "var/lib/dpkg/status").touch()

        def dpkg(*arguments):
            # The root is empty, so that what the package depends on is not there.
            command = ["fakeroot", "dpkg", f"--root={root}", "--force-depends", "--force-not-root"]
            without_sanitizers = {"PATH": "/usr/sbin:/usr/bin:/sbin:/bin", "HOME": str(folder)}
            subprocess.run([*command, f"--log={folder}/log", *arguments], check=True, capture_output=True, env=without_sanitizers)

        dpkg("--install", package)
        self.assert_works(root / "usr")
        dpkg("--purge", "tandem-trim")
        self.assertEqual([path.name for path in root.iterdir()], ["var"])

        def told(*arguments):
            return subprocess.run(["dpkg-deb", *arguments], capture_output=True, text=True, check=True).stdout

        libraries = ["libcups2", "libplist3"]
        if "tandem-trim-dialog" in told("--contents", package):
            libraries.append("libgtkmm-4.0-0")
        for library in libraries:
            self.assertIn(library, told("--field", package, "Depends"))


if __name__ == "__main__":
    unittest.main()
