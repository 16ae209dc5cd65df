"""The archive for Macs without Xcode: its contents, and its scripts with stand-ins for a Mac's commands."""

import hashlib
import pathlib
import re
import shutil
import subprocess
import tarfile
import tempfile
import unittest

import mach_o
from mac import Mac

# Replaces the Mac's folder in a command's arguments by one beside the scripts.
MAC_IS_HERE = 'asked="$*"; set -- "${@//\\/Library\\/Printers/$PWD/installed}"'
# The Mac's commands as shell scripts, for when all goes well.
COMMANDS = {
    "uname": 'if [ "${1:-}" = -m ]; then echo arm64; else echo Darwin; fi',
    "sw_vers": "echo 14.5",
    "plutil": 'if [ "$1" = -extract ]; then sed -n "/$2/{n;s/.*<string>\\(.*\\)<.*/\\1/p;}" "${@: -1}"; else test -s "${@: -1}"; fi',
    "file": 'echo "Mach-O universal binary with 2 architectures: [x86_64] [arm64]"',
    "shasum": 'sha256sum "${@: -2}"',
    "find": 'echo "find $asked" >>commands.log',
    # Like the Mac's, it fails when there is nothing to remove.
    "xattr": 'echo "xattr $asked" >>commands.log; if [ "$1" = -dr ]; then echo "No such xattr: $2" >&2; exit 1; fi',
    "codesign": 'echo "codesign $asked" >>commands.log',
    "sudo": 'echo "sudo $asked" >>commands.log; "$@"',
    "chown": "",
}
TOOLS = ("bash", "chmod", "cp", "dirname", "head", "mkdir", "mktemp", "rm", "sed", "sha256sum", "sort", "test")
# Other scripts for each command that make the check fail, and the check's message.
FAILURES = {
    "sw_vers": [("echo 12.1", "failed  this macOS is new enough"), ("echo 9.9", "failed  this macOS is new enough"),
                ("exit 1", "failed  this macOS is new enough")],
    "plutil": [("exit 1", "failed  the bundle's description can be read"), ("exit 1", "failed  this macOS is new enough"),
               ('if [ "$1" = -lint ]; then exit 0; fi', "failed  this macOS is new enough")],
    "file": [('echo "Mach-O 64-bit bundle ppc64"', "failed  the code is for this Mac's processor"),
             ("exit 1", "failed  the code is for this Mac's processor")],
    "shasum": [("exit 1", "failed  every file is as it was packed")],
    "codesign": [('if [ "$1" = --verify ]; then exit 3; fi', "failed  the bundle is signed")],
    # More than a pipe's buffer: a reader that stops early must not take the writer's SIGPIPE for "not marked".
    "xattr": [('if [ "$1" = -r ]; then for n in {1..9999}; do echo "TandemTrim.bundle: com.apple.quarantine"; done; fi',
               "failed  the bundle is not marked as downloaded"),
              ("exit 1", "failed  the bundle is not marked as downloaded")],
    "find": [('echo "$1"', "failed  the bundle belongs to root and all users can read it"),
             ("exit 1", "failed  the bundle belongs to root and all users can read it")],
}


class Unpacked(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(folder.cleanup)
        made = subprocess.run([mach_o.SOURCES / "packaging/macos/archive/archive.sh"], capture_output=True, text=True, check=True).stdout
        cls.path = mach_o.SOURCES / made.strip()
        with tarfile.open(cls.path) as archive:
            cls.members = archive.getmembers()
            archive.extractall(folder.name)
        (cls.unpacked,) = pathlib.Path(folder.name).iterdir()


class TheArchive(Unpacked):
    def test_contains_the_whole_bundle_its_scripts_and_a_printers_ppd(self):
        bundle = {path.relative_to(mach_o.CONTENTS): path.read_bytes() for path in mach_o.CONTENTS.rglob("*") if path.is_file()}
        packed = self.unpacked / "TandemTrim.bundle/Contents"
        self.assertEqual({path.relative_to(packed): path.read_bytes() for path in packed.rglob("*") if path.is_file()}, bundle)
        self.assertEqual({path.name for path in self.unpacked.iterdir()}, {
            "TandemTrim.bundle", "MorvaTandemKV2.ppd", "LICENSE", "SHA256SUMS", "install.sh", "check.sh", "uninstall.sh"})

    def test_belongs_to_root_and_is_the_same_each_time(self):
        self.assertEqual({(member.uid, member.gid) for member in self.members}, {(0, 0)})
        self.assertEqual({member.mode & 0o446 for member in self.members}, {0o444})
        committed = subprocess.run(["git", "log", "-1", "--format=%ct"], cwd=mach_o.SOURCES, capture_output=True, text=True,
                                   check=True).stdout
        self.assertEqual({member.mtime for member in self.members}, {int(committed)})
        before = hashlib.sha256(self.path.read_bytes()).hexdigest()
        subprocess.run([mach_o.SOURCES / "packaging/macos/archive/archive.sh"], capture_output=True, check=True, umask=0o077)
        self.assertEqual(hashlib.sha256(self.path.read_bytes()).hexdigest(), before)


class ItsScripts(Unpacked):
    def setUp(self):
        self.mac = Mac(self, COMMANDS, TOOLS, MAC_IS_HERE)
        self.here = shutil.copytree(self.unpacked, self.mac.folder / "unpacked")
        self.installed = self.here / "installed/Morva/PDEs/TandemTrim.bundle"

    def install(self, *, by=(), **options):
        return self.mac.run(*by, self.here / "install.sh", **options)

    def test_install_the_bundle_signed_for_this_mac_and_check_it(self):
        done = self.install()
        self.assertEqual((done.returncode, done.stderr), (0, ""), done.stdout)
        self.assertTrue((self.installed / "Contents/MacOS/TandemTrim").exists())
        self.assertNotIn("failed", done.stdout)
        self.assertIn("Installed.", done.stdout)
        place = r"/Library/Printers/Morva/PDEs/TandemTrim[.]bundle"
        asked = (self.here / "commands.log").read_text()
        ready = re.search(r"^xattr -dr com[.]apple[.]quarantine (\S+)$", asked, re.MULTILINE)[1]
        self.assertRegex(asked, rf"(?s)\ncodesign --force --sign - {ready}\n.*sudo cp -R {ready} \S+\nsudo chown -R root:wheel {place}\n")
        self.assertRegex(asked, rf"\ncodesign --verify --strict {place}\n")
        self.assertRegex(asked, rf"\nfind {place} ! -user root -o ! -group wheel -o ! -perm -444\n")
        self.assertFalse(pathlib.Path(ready).exists())

    def test_install_a_bundle_that_all_users_can_read_even_from_unpacked_files_that_only_their_owner_can(self):
        for path in self.here.rglob("*"):
            path.chmod(path.stat().st_mode & 0o700)
        self.assertEqual(self.install(umask=0o077).returncode, 0)
        for path in (self.here / "installed").rglob("*"):
            self.assertEqual(path.stat().st_mode & 0o444, 0o444, path)

    def test_keep_the_installed_bundle_until_another_is_ready(self):
        self.installed.mkdir(parents=True)
        self.mac.command("codesign", "exit 3")
        self.assertNotEqual(self.install().returncode, 0)
        self.assertTrue(self.installed.exists())
        self.assertNotIn("sudo", (self.here / "commands.log").read_text())

    def test_run_each_other_even_when_the_browser_left_them_without_execute_permission(self):
        (self.here / "check.sh").chmod(0o644)
        done = self.install(by=("bash",))
        self.assertEqual((done.returncode, done.stderr), (0, ""), done.stdout)

    def test_replace_another_version_of_the_bundle(self):
        self.install()
        (self.installed / "of another version").touch()
        done = self.install()
        self.assertEqual((done.returncode, done.stderr), (0, ""), done.stdout)
        self.assertFalse((self.installed / "of another version").exists())

    def test_show_their_usage_for_a_wrong_argument(self):
        done = self.mac.run(self.here / "check.sh", "instaled", self.here)
        self.assertEqual(done.returncode, 2)
        self.assertIn("usage: ", done.stderr)

    def test_name_the_failed_check_and_claim_no_success(self):
        for name, does, expected in [(name, *failure) for name, failures in FAILURES.items() for failure in failures]:
            with self.subTest(name, does=does):
                self.mac.command(name, does)
                done = self.install()
                self.mac.mend(name)
                self.assertNotEqual(done.returncode, 0)
                self.assertIn(expected, done.stdout)
                self.assertNotIn("Installed", done.stdout)

    def test_install_nothing_of_a_damaged_archive(self):
        with (self.here / "TandemTrim.bundle/Contents/Resources/en.lproj/Localizable.strings").open("ab") as table:
            table.write(b"x")
        done = self.install()
        self.assertEqual(done.returncode, 1)
        self.assertIn("failed  every file is as it was packed", done.stdout)
        self.assertFalse((self.here / "commands.log").exists())

    def test_are_refused_on_any_other_system(self):
        self.mac.command("uname", "echo Linux")
        done = self.install()
        self.assertEqual(done.returncode, 1)
        self.assertIn("needs a Mac", done.stderr)


if __name__ == "__main__":
    unittest.main()
