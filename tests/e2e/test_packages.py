"""The Debian packages in build/release/package: their contents, and their installation by dpkg in an empty root."""

import configparser
import re
import shutil
import subprocess
import unittest

from terminal_case import BUILD, PROGRAM, TerminalCase

BACKEND = "/usr/libexec/tandem-trim-portal"
FORMER = """\
Package: tandem-trim
Version: 0.1.0
Architecture: all
Maintainer: Nobody <nobody@morva.example>
Description: one package with the files of both
"""


def output(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


class Root:
    """An empty root for dpkg, without the packages' dependencies."""

    def __init__(self, folder):
        self.folder = folder / "root"
        for name in ("info", "updates", "triggers"):
            (self.folder / "var/lib/dpkg" / name).mkdir(parents=True)
        (self.folder / "var/lib/dpkg/status").touch()

    def dpkg(self, *arguments):
        forced = ["--force-depends", "--force-not-root", f"--log={self.folder.parent}/log"]
        # Like apt, with --auto-deconfigure.
        command = ["fakeroot", "dpkg", f"--root={self.folder}", *forced, "--auto-deconfigure", *arguments]
        done = subprocess.run(command, env={"PATH": "/usr/sbin:/usr/bin:/sbin:/bin"}, capture_output=True, text=True, check=False)
        if done.returncode != 0:
            raise AssertionError(done.stdout + done.stderr)

    def files(self):
        return sorted(path for path in self.folder.rglob("*") if "var" not in path.relative_to(self.folder).parts)


class PackagesTest(TerminalCase):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.version = output(PROGRAM, "--version").split()[1]
        cls.terminal, cls.gtk = cls.packages = [
            next((BUILD / "package").glob(f"{name}_{cls.version}_*.deb")) for name in ("tandem-trim", "tandem-trim-gtk")
        ]

    def contents(self, package):
        """The mode, owner and path of each file and folder of the package."""
        lines = output("dpkg-deb", "--contents", package).splitlines()
        return [(mode, owner, path) for mode, owner, _, _, _, path in (line.split(maxsplit=5) for line in lines)]

    def files(self, package):
        return {path for mode, _, path in self.contents(package) if not mode.startswith("d")}

    def depends(self, package):
        """The names of the packages that it depends on."""
        return set(re.findall(r"(?:^|, )([^ ,]+)", output("dpkg-deb", "--field", package, "Depends")))

    def test_lintian_finds_neither_errors_nor_warnings(self):
        found = subprocess.run(
            ["lintian", "--allow-root", "--fail-on=error,warning", *self.packages], capture_output=True, text=True, check=False
        )
        self.assertEqual((found.returncode, found.stdout), (0, ""), found.stderr)

    def test_each_installed_file_is_in_exactly_one_package(self):
        prefix = self.temporary_folder()
        output("cmake", "--install", BUILD, "--prefix", prefix)
        installed = {f"./usr/{path.relative_to(prefix)}" for path in prefix.rglob("*") if not path.is_dir()}
        packed = [path for package in self.packages for path in self.files(package)]
        for_packages_alone = {"./usr/share/lintian/overrides/tandem-trim-gtk", "./usr/share/zsh/vendor-completions/_tandem-trim"}
        never_packed = {"./usr/share/zsh/site-functions/_tandem-trim"}
        self.assertEqual(sorted(packed), sorted(installed - never_packed | for_packages_alone))

    def test_the_dialogs_files_are_only_in_its_package(self):
        of_dialog = r"/dialog/|/libexec/|/xdg-desktop-portal/|/dbus-1/|/systemd/|/Linux/TandemTrim$|TandemTrim\.ui$|/applications/|/icons/|/metainfo/|/man8/|tandem-trim-gtk"
        everything = set().union(*(self.files(package) for package in self.packages))
        self.assertEqual({path for path in everything if re.search(of_dialog, path)}, self.files(self.gtk))

    def test_the_portal_the_bus_and_systemd_find_the_print_backend(self):
        folder = self.temporary_folder()
        output("dpkg-deb", "--extract", self.gtk, folder)

        def entries(path, group):
            file = configparser.ConfigParser(interpolation=None)
            file.read_string((folder / "usr" / path).read_text())
            return file[group]

        portal = entries("share/xdg-desktop-portal/portals/tandemtrim.portal", "portal")
        service = entries(f"share/dbus-1/services/{portal['DBusName']}.service", "D-BUS Service")
        unit = entries(f"lib/systemd/user/{service['SystemdService']}", "Service")
        self.assertEqual((portal["Interfaces"], portal["UseIn"]), ("org.freedesktop.impl.portal.Print;", "TandemTrim;"))
        self.assertEqual((service["Name"], unit["Type"], unit["BusName"]), (portal["DBusName"], "dbus", portal["DBusName"]))
        self.assertEqual((service["Exec"], unit["ExecStart"]), (BACKEND, BACKEND))
        self.assertIn("." + BACKEND, self.files(self.gtk))

    def test_the_terminal_program_and_the_print_backend_have_manual_pages_in_their_packages(self):
        self.assertIn("./usr/share/man/man1/tandem-trim.1.gz", self.files(self.terminal))
        self.assertIn("./usr/share/man/man8/tandem-trim-portal.8.gz", self.files(self.gtk))

    def test_everything_belongs_to_root_and_is_readable_by_all(self):
        for package in self.packages:
            for mode, owner, path in self.contents(package):
                executable = mode.startswith("d") or re.search("/bin/|/libexec/|/dialog/tandem-trim-page$", path)
                with self.subTest(path):
                    self.assertEqual((mode[1:], owner), ("rwxr-xr-x" if executable else "rw-r--r--", "root/root"))

    def test_the_terminal_package_depends_on_no_toolkit(self):
        self.assertEqual(self.depends(self.terminal), {"libc6", "libcups2", "libgcc-s1", "libstdc++6", "zlib1g"})
        self.assertEqual({name for name in self.depends(self.gtk) if "gtk" in name}, {"libgtk-4-1", "libgtkmm-4.0-0"})

    def test_the_dialogs_package_depends_on_the_libraries_that_render_pages(self):
        self.assertLessEqual({"libpoppler-glib8", "libseccomp2"}, self.depends(self.gtk))

    def test_the_dialogs_package_depends_on_the_terminal_package_of_its_version(self):
        self.assertIn(f"tandem-trim (= {self.version})", output("dpkg-deb", "--field", self.gtk, "Depends"))

    def test_the_packages_can_be_installed_used_and_removed(self):
        root = Root(self.temporary_folder())
        root.dpkg("--install", *self.packages)
        self.assert_prints_with_the_panel(root.folder / "usr")
        root.dpkg("--purge", "tandem-trim-gtk")
        self.assert_prints_with_the_panel(root.folder / "usr")
        root.dpkg("--purge", "tandem-trim")
        self.assertEqual(root.files(), [])

    def former(self):
        """The former single package, with the files of both."""
        folder = self.temporary_folder()
        for package in self.packages:
            output("dpkg-deb", "--extract", package, folder / "tree")
        (folder / "tree/DEBIAN").mkdir()
        (folder / "tree/DEBIAN/control").write_text(FORMER)
        output("dpkg-deb", "--root-owner-group", "--build", folder / "tree", folder / "former.deb")
        shutil.rmtree(folder / "tree")
        return folder / "former.deb"

    def test_the_packages_replace_the_former_single_package(self):
        former = self.former()
        for order in (self.packages, self.packages[::-1]):
            with self.subTest([package.name for package in order]):
                root = Root(self.temporary_folder())
                root.dpkg("--install", former)
                before = root.files()
                root.dpkg("--install", *order)
                self.assertEqual(root.files(), before)
                root.dpkg("--purge", "tandem-trim", "tandem-trim-gtk")
                self.assertEqual(root.files(), [])

    def test_the_terminal_package_alone_replaces_the_former_single_package(self):
        root = Root(self.temporary_folder())
        root.dpkg("--install", self.former())
        root.dpkg("--install", self.terminal)
        self.assert_prints_with_the_panel(root.folder / "usr")
        files = {f"./{path.relative_to(root.folder)}" for path in root.files() if not path.is_dir()}
        self.assertEqual(files, self.files(self.terminal))


if __name__ == "__main__":
    unittest.main()
