"""The script that makes the installer package on a Mac, with stand-ins for a Mac's commands."""

import unittest

from mac import Mac

# The Mac's commands as shell scripts, for when all goes well.
COMMANDS = {
    "uname": "echo Darwin",
    "cmake": 'if [ "$1" = --install ]; then mkdir -p "$4/PDEs/TandemTrim.bundle/Contents"; '
             'umask >"$4/PDEs/TandemTrim.bundle/Contents/Info.plist"; fi',
    "plutil": 'echo "plutil $*" >>asked.log; if [ "$1" = -extract ]; then echo 1.2.3; fi',
    "lipo": "", "codesign": 'echo "codesign $*" >>asked.log',
    "pkgbuild": 'echo "pkgbuild $*" >>asked.log; '
                'test "$1" = --analyze || { cat "$2"/Library/Printers/Morva/PDEs/*/Contents/Info.plist >umask.log; echo >"${@: -1}"; }',
    "xcrun": 'echo "xcrun $*" >>asked.log',
}
TOOLS = ("bash", "cat", "dirname", "mkdir", "mktemp", "rm")
MADE = "build/macos/TandemTrim-1.2.3.pkg"
IDENTITIES = {"SIGN_AS": "Developer ID Application: A", "INSTALLER_AS": "Developer ID Installer: A", "NOTARY": "profile"}


class ThePackage(unittest.TestCase):
    def setUp(self):
        self.mac = Mac(self, COMMANDS, TOOLS)
        self.project = self.mac.project()
        (self.project / "build/macos").mkdir(parents=True)

    def make(self, **options):
        return self.mac.run(self.project / "packaging/macos/package.sh", **options)

    def asked(self):
        return (self.project / "asked.log").read_text()

    def test_is_signed_for_this_mac_alone_by_default(self):
        done = self.make(umask=0o077)
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        self.assertEqual(done.stdout.splitlines()[-1], MADE)
        self.assertTrue((self.project / MADE).exists())
        self.assertEqual((self.project / "umask.log").read_text(), "0022\n")
        asked = self.asked()
        self.assertRegex(asked, r"codesign --force --options runtime --sign - \S+/Library/Printers/Morva/PDEs/TandemTrim[.]bundle\n")
        self.assertRegex(asked, r"\npkgbuild --root .* --install-location / --ownership recommended --version 1[.]2[.]3 ")
        # A relocatable bundle would be installed over any copy that the installer finds.
        self.assertRegex(asked, r"\nplutil -replace 0[.]BundleIsRelocatable -bool NO \S+/components[.]plist\n"
                                r".*\n.*--component-plist \S+/components[.]plist ")
        for elsewhere in ("--timestamp", "notarytool", "stapler"):
            self.assertNotIn(elsewhere, asked)

    def test_is_signed_and_notarised_for_other_macs_when_identities_are_set(self):
        self.assertEqual(self.make(env=IDENTITIES).returncode, 0)
        asked = self.asked()
        self.assertIn("--sign Developer ID Application: A --timestamp ", asked)
        self.assertIn(f"--sign Developer ID Installer: A {MADE}\n", asked)
        self.assertTrue(asked.endswith(f"xcrun notarytool submit {MADE} --keychain-profile profile --wait\nxcrun stapler staple {MADE}\n"))

    def test_is_reported_only_when_every_step_succeeds(self):
        for name in ("cmake", "plutil", "lipo", "codesign", "pkgbuild", "xcrun"):
            with self.subTest(name):
                self.mac.command(name, "exit 9")
                done = self.make(env=IDENTITIES)
                self.mac.mend(name)
                self.assertEqual(done.returncode, 9)
                self.assertNotIn(MADE, done.stdout)

    def test_is_made_only_on_a_mac(self):
        self.mac.command("uname", "echo Linux")
        done = self.make()
        self.assertEqual(done.returncode, 1)
        self.assertIn("needs a Mac", done.stderr)


class Uninstalling(unittest.TestCase):
    def setUp(self):
        # The real commands would remove a folder of this machine.
        log = 'echo "${0##*/} $*" >>asked.log'
        self.mac = Mac(self, {"uname": "echo Darwin", "rm": log, "rmdir": log + "; exit 1", "pkgutil": log + "; exit 1"},
                       ("bash", "dirname"))
        self.script = self.mac.project() / "packaging/macos/uninstall.sh"

    def test_removes_the_bundle_even_if_no_package_installed_it(self):
        self.assertEqual(self.mac.run(self.script, cwd=self.mac.folder).returncode, 0)
        self.assertEqual((self.mac.folder / "asked.log").read_text().splitlines(), [
            "rm -rf /Library/Printers/Morva/PDEs/TandemTrim.bundle",
            "rmdir /Library/Printers/Morva/PDEs /Library/Printers/Morva",
            "pkgutil --forget com.morva.printing.pde.tandemtrim"])

    def test_fails_when_the_bundle_cannot_be_removed(self):
        self.mac.command("rm", "exit 1")
        self.assertEqual(self.mac.run(self.script, cwd=self.mac.folder).returncode, 1)


if __name__ == "__main__":
    unittest.main()
