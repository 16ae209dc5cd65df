"""tandem-trim --applications: switches the desktop portal's settings on and off, and shows their status.

Debian 12's portal has no settings files, so stand_in.py replaces it except in the last tests. The print backend is the real one.
"""

import configparser
import contextlib
import json
import os
import pathlib
import signal
import subprocess
import unittest

import surroundings
from terminal_case import BUILD, PROGRAM, TerminalCase

STAND_IN = pathlib.Path(__file__).with_name("stand_in.py")
REAL_PORTAL = "/usr/libexec/xdg-desktop-portal"
PRINT = "org.freedesktop.impl.portal.Print"
BACKEND = "org.freedesktop.impl.portal.desktop.tandemtrim"
PORTAL = "org.freedesktop.portal.Desktop"
DESKTOPS_OWN = "# of the desktop\n[preferred]\ndefault=gnome;gtk;\norg.freedesktop.impl.portal.Settings=gtk\n"
UNTIL_NEXT_LOGIN = "until the next login, GTK applications may still use the desktop portal"
ON, OFF, STATUS = (["--applications", word] for word in ("on", "off", "status"))


class SwitchingTest(TerminalCase):
    @classmethod
    def setUpClass(cls):
        pass

    def setUp(self):
        self.folder = self.temporary_folder()
        for name in ("home", "run", "data/dbus-1/services", "etc", "share"):
            (self.folder / name).mkdir(parents=True)
        self.settings = self.folder / "home/.config/xdg-desktop-portal/portals.conf"
        self.choices = self.folder / "choices"
        self.bus = {}
        self.version = "1.22.0"
        self.desktop = "Special:GNOME"
        self.more = {}
        self.add_service(PORTAL, STAND_IN)
        self.add_backend()

    def environment(self, **more):
        own = {
            "HOME": self.folder / "home",
            "XDG_RUNTIME_DIR": self.folder / "run",
            "XDG_DATA_HOME": self.folder / "data",
            "XDG_DATA_DIRS": self.folder / "share",
            "XDG_CONFIG_DIRS": self.folder / "etc",
            "XDG_CURRENT_DESKTOP": self.desktop,
            "STAND_IN_VERSION": self.version,
            "STAND_IN_CHOICES": self.choices,
        }
        return surroundings.of_this_test(surroundings.SHARED) | {name: str(value) for name, value in own.items()} | self.bus | self.more | more

    # The installed services and their settings.

    def add_service(self, name, *command):
        words = " ".join(map(str, command))
        (self.folder / f"data/dbus-1/services/{name}.service").write_text(f"[D-BUS Service]\nName={name}\nExec={words}\n")

    def add_backend(self, folder="data/xdg-desktop-portal/portals"):
        (self.folder / folder).mkdir(parents=True)
        (self.folder / folder / "tandemtrim.portal").write_text(f"[portal]\nDBusName={BACKEND}\nInterfaces={PRINT};\nUseIn=TandemTrim;\n")
        self.add_service(BACKEND, BUILD / "host/tandem-trim-portal")

    def write_desktops_settings(self, text, name="gnome-portals.conf"):
        file = self.folder / "share/xdg-desktop-portal" / name
        file.parent.mkdir(exist_ok=True)
        file.write_text(text)

    def write_users_settings(self, text):
        self.settings.parent.mkdir(parents=True)
        self.settings.write_bytes(text.encode())

    @contextlib.contextmanager
    def session(self):
        """Runs a session bus for the duration of a `with` statement. It starts the installed services, which end with it."""
        self.bus = {}
        daemon = subprocess.Popen(
            ["dbus-daemon", "--session", "--nofork", "--print-address"],
            env=self.environment(), stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True, start_new_session=True,
        )  # fmt: skip
        self.bus = {"DBUS_SESSION_BUS_ADDRESS": daemon.stdout.readline().strip()}
        try:
            yield
        finally:
            self.bus = {}
            os.killpg(daemon.pid, signal.SIGTERM)
            daemon.communicate()

    # Runs of the program.

    def succeeds(self, *arguments, notes=()):
        """Runs the program, which must succeed and write one line with each of these notes to standard error; returns its output."""
        result = self.trim(*arguments)
        self.assertEqual(result.returncode, 0, result.stdout + result.stderr)
        said = result.stderr.splitlines()
        self.assertEqual(len(said), len(notes), said)
        for line, note in zip(said, notes):
            self.assertIn(note, line)
        return result.stdout

    def fails(self, *arguments, words):
        result = self.trim(*arguments)
        self.assertEqual(result.returncode, 1, result.stdout + result.stderr)
        for word in words:
            self.assertIn(word, result.stderr)
        return result

    def files(self):
        home = self.folder / "home"
        return {str(path.relative_to(home)): path.read_bytes() if path.is_file() else None for path in home.rglob("*")}

    # Switching on and off.

    def test_on_makes_the_portal_use_the_backend_and_keeps_the_desktops_choice_of_all_others(self):
        self.write_desktops_settings(DESKTOPS_OWN)
        self.assertEqual(self.succeeds(*ON), f"written: {self.settings}\n")
        with self.session():
            shown = self.succeeds(*STATUS)
        self.assertEqual(json.loads(self.choices.read_text()), {"Print": "tandemtrim", "FileChooser": "gnome", "Settings": "gtk"})
        for words in ("desktop portal: 1.22, running\n", f"print backend: tandemtrim, named by {self.settings}\n", "applications print with this dialog\n"):
            self.assertIn(words, shown)

    def test_off_removes_all_that_on_wrote(self):
        (self.folder / "home/.config").mkdir()
        before = self.files()
        self.write_desktops_settings(DESKTOPS_OWN)
        self.succeeds(*ON, "--all-gtk", notes=["those for files"])
        self.assertNotEqual(self.files(), before)
        gtk = self.folder / "home/.config/environment.d/60-tandem-trim.conf"
        self.assertEqual(self.succeeds(*OFF, notes=[UNTIL_NEXT_LOGIN]), f"removed: {self.settings}\nremoved: {gtk}\n")
        self.assertEqual(self.files(), before)
        self.succeeds(*OFF, notes=["no lines of tandem-trim; nothing was changed"])
        self.assertEqual(self.files(), before)

    def test_on_keeps_the_users_lines_and_off_restores_the_file(self):
        for text in ("# mine\r\n[preferred]\r\ndefault=kde\r\n", f"[preferred]\n{PRINT}=gtk\ndefault=kde", "", "\n\n[other]\na=b\n"):
            with self.subTest(text):
                self.write_users_settings(text)
                before = self.files()
                self.succeeds(*ON)
                self.assertTrue(self.settings.read_bytes().startswith(text.encode()))
                with self.session():
                    self.succeeds(*STATUS)
                self.assertEqual(json.loads(self.choices.read_text())["FileChooser"], "kde" if "kde" in text else None)
                self.assertEqual(self.succeeds(*OFF), f"written: {self.settings}\n")
                self.assertEqual(self.files(), before)
                self.settings.unlink()
                self.settings.parent.rmdir()

    def test_on_changes_the_users_file_for_the_desktop_if_there_is_one(self):
        self.write_users_settings("")
        own = self.settings.with_name("gnome-portals.conf")
        own.write_text("[preferred]\ndefault=gtk\n")
        self.succeeds(*ON)
        self.assertEqual(self.settings.read_text(), "")
        with self.session():
            self.assertIn(str(own), self.succeeds(*STATUS))
        self.succeeds(*OFF)
        self.assertEqual(own.read_text(), "[preferred]\ndefault=gtk\n")

    def test_a_second_on_changes_only_what_the_desktop_has_changed(self):
        self.write_desktops_settings(DESKTOPS_OWN)
        self.succeeds(*ON)
        once = self.settings.read_bytes()
        self.assertEqual(self.succeeds(*ON), f"unchanged: {self.settings}\n")
        self.assertEqual(self.settings.read_bytes(), once)
        self.write_desktops_settings(DESKTOPS_OWN.replace("gnome;", "kde;"))
        self.succeeds(*ON)
        self.assertEqual(self.settings.read_bytes(), once.replace(b"gnome;", b"kde;"))

    def test_on_changes_nothing_if_the_user_has_named_the_backend(self):
        self.write_users_settings(f"[preferred]\n{PRINT}=tandemtrim;gtk\n")
        before = self.files()
        self.assertEqual(self.succeeds(*ON), f"unchanged: {self.settings}\n")
        self.assertEqual(self.files(), before)

    def test_all_gtk_programs_use_the_portal_only_with_the_option_for_it(self):
        file = self.folder / "home/.config/environment.d/60-tandem-trim.conf"
        self.succeeds(*ON)
        self.assertFalse(file.exists())
        self.succeeds(*ON, "--all-gtk", notes=["those for files"])
        with self.session():
            self.assertIn(f"GTK applications that use the portal: all from the next login on, because of {file}\n", self.succeeds(*STATUS))
            self.more = {"GTK_USE_PORTAL": "1"}
            self.assertIn(f"GTK applications that use the portal: all, because of {file}\n", self.succeeds(*STATUS))
            self.more = {}
        lines = [line for line in file.read_text().splitlines() if not line.startswith("#")]
        self.assertEqual(lines, ["GTK_USE_PORTAL=1", "GDK_DEBUG=portals${GDK_DEBUG:+:$GDK_DEBUG}"])
        self.succeeds(*OFF, notes=[UNTIL_NEXT_LOGIN])
        self.assertFalse(file.parent.exists())

    def test_a_link_stays_a_link(self):
        kept = self.folder / "kept"
        kept.write_text("[preferred]\ndefault=kde\n")
        self.settings.parent.mkdir(parents=True)
        self.settings.symlink_to(kept)
        self.succeeds(*ON)
        self.assertTrue(self.settings.is_symlink())
        self.assertIn("tandemtrim", kept.read_text())
        self.succeeds(*OFF)
        self.assertTrue(self.settings.is_symlink())
        self.assertEqual(kept.read_text(), "[preferred]\ndefault=kde\n")
        kept.unlink()
        self.fails(*ON, words=[f"{self.settings} is a link to {kept}, which does not exist"])

    def test_a_settings_file_that_cannot_be_understood_is_reported_and_not_changed(self):
        end = "# End of the lines of tandem-trim\n"
        for text, word in (("default=gnome\n", "line 1"), ("[preferred]\nwhat\n", "line 2"), ("#" * 70000, "more than 65536 bytes"), (end, "is missing")):
            with self.subTest(word):
                self.write_users_settings(text)
                self.fails(*ON, words=[str(self.settings), word])
                self.assertEqual(self.settings.read_text(), text)
                self.settings.unlink()
                self.settings.parent.rmdir()
        self.settings.mkdir(parents=True)
        self.fails(*ON, words=[f"{self.settings}"])

    def test_a_folder_that_cannot_be_written_is_named(self):
        (self.folder / "home/.config").write_text("a file")
        self.fails(*ON, words=[str(self.settings.parent), "create it"])
        (self.folder / "home/.config").unlink()
        self.write_users_settings("[preferred]\ndefault=kde\n")
        before = self.files()
        # A limit of file sizes acts like a full disk.
        command = ["prlimit", "--fsize=30", "--", PROGRAM, *ON]
        result = subprocess.run(command, env=self.environment(), capture_output=True, text=True, check=False)
        self.assertEqual(result.returncode, 1)
        self.assertIn(f"{self.settings} cannot be written", result.stderr)
        self.assertEqual(self.files(), before)

    # Missing parts and their remedies.

    def test_a_running_portal_must_be_restarted(self):
        with self.session():
            self.fails(*STATUS, words=["the desktop portal uses", "run tandem-trim --applications on"])
            self.succeeds(*ON, notes=["systemctl --user restart xdg-desktop-portal"])
            self.fails(*STATUS, words=["started before its settings changed; restart it with systemctl --user restart"])
            self.succeeds(*OFF, notes=["systemctl --user restart xdg-desktop-portal"])
        self.succeeds(*ON)
        with self.session():
            self.succeeds(*STATUS)

    def test_settings_are_written_where_the_running_portal_reads_them(self):
        self.more = {"XDG_CONFIG_HOME": str(self.folder / "elsewhere")}
        with self.session():
            self.fails(*STATUS, words=["run tandem-trim"])  # Starts the portal.
            self.more = {}
            self.assertIn(str(self.folder / "elsewhere/xdg-desktop-portal/portals.conf"), self.succeeds(*ON, notes=["restart"]))
            self.fails(*STATUS, words=["started before its settings changed"])
            self.succeeds(*OFF, notes=["restart"])
        self.assertEqual(list((self.folder / "elsewhere").rglob("*")), [])

    def test_a_missing_session_bus_is_reported(self):
        self.succeeds(*ON)
        self.fails(*STATUS, words=["there is no session bus"])
        self.more = {"DBUS_SESSION_BUS_ADDRESS": "unix:path=/nonexistent"}
        self.fails(*STATUS, words=["the session bus does not answer", "/nonexistent"])

    def test_a_portal_that_is_not_installed_is_named(self):
        (self.folder / f"data/dbus-1/services/{PORTAL}.service").unlink()
        self.succeeds(*ON, notes=["install the package xdg-desktop-portal"])
        with self.session():
            result = self.fails(*STATUS, words=["install the package xdg-desktop-portal"])
        self.assertIn("desktop portal: not installed\n", result.stdout)

    def test_a_backend_that_is_not_installed_is_named(self):
        (self.folder / f"data/dbus-1/services/{BACKEND}.service").unlink()
        (self.folder / "data/xdg-desktop-portal/portals/tandemtrim.portal").unlink()
        missing = "finds no tandemtrim.portal in"
        self.succeeds(*ON, notes=[missing])
        with self.session():
            result = self.fails(*STATUS, words=[missing, "the print backend of tandem-trim does not answer", "install the package tandem-trim-gtk"])
        # The switch is already on.
        self.assertNotIn("--applications on", result.stderr)

    def test_a_backend_that_ends_at_once_is_reported(self):
        (self.folder / f"data/dbus-1/services/{BACKEND}.service").write_text(f"[D-BUS Service]\nName={BACKEND}\nExec=/bin/false\n")
        self.succeeds(*ON)
        with self.session():
            result = self.fails(*STATUS, words=["does not offer printing to applications", "the print backend of tandem-trim does not answer"])
        self.assertIn("journalctl --user -u tandem-trim-portal", result.stderr)

    def test_on_suggests_a_link_for_a_portal_that_reads_another_folder(self):
        self.version = "1.18.4"
        result = self.trim(*ON)
        own = self.folder / "data/xdg-desktop-portal/portals/tandemtrim.portal"
        if not pathlib.Path("/usr/share/xdg-desktop-portal/portals/tandemtrim.portal").exists():
            self.assertIn(f"ln -s {own} /usr/share/xdg-desktop-portal/portals", result.stderr)

    def test_on_writes_nothing_while_the_environment_sets_the_portals_folder_of_backends(self):
        self.more = {"XDG_DESKTOP_PORTAL_DIR": str(self.folder)}
        self.fails(*ON, words=["XDG_DESKTOP_PORTAL_DIR", str(self.folder), f"{PRINT}=tandemtrim"])
        self.assertEqual(self.files(), {})

    # The installed files.

    def test_the_portal_and_the_session_bus_find_the_backend_by_the_installed_files(self):
        prefix = self.folder / "usr"
        subprocess.run(["cmake", "--install", BUILD, "--prefix", prefix, "--component", "gtk"], check=True, capture_output=True)
        (self.folder / f"data/dbus-1/services/{BACKEND}.service").unlink()
        (self.folder / "data/xdg-desktop-portal/portals/tandemtrim.portal").unlink()
        self.more = {"XDG_DATA_DIRS": str(prefix / "share")}
        self.succeeds(*ON)
        with self.session():
            self.assertIn("applications print with this dialog\n", self.succeeds(*STATUS))
        service, unit = configparser.ConfigParser(), configparser.ConfigParser()
        service.read(prefix / f"share/dbus-1/services/{BACKEND}.service")
        unit.read(prefix / "lib/systemd/user" / service["D-BUS Service"]["SystemdService"])
        entries = unit["Service"]
        self.assertEqual((entries["Type"], entries["BusName"], entries["ExecStart"]), ("dbus", BACKEND, service["D-BUS Service"]["Exec"]))

    # Debian 12's own portal.

    def real_portal(self, desktop):
        self.desktop = desktop
        self.more = {"XDG_DESKTOP_PORTAL_DIR": str(self.folder / "data/xdg-desktop-portal/portals")}
        self.add_service(PORTAL, REAL_PORTAL)
        portals = self.folder / "data/xdg-desktop-portal/portals"
        (portals / "gtk.portal").write_text(f"[portal]\nDBusName=org.morva.Nothing\nInterfaces={PRINT};\nUseIn=gnome;\n")
        return self.session()

    def test_a_portal_without_settings_files_chooses_the_backend_by_the_desktops_name(self):
        with self.real_portal("TandemTrim:GNOME"):
            shown = self.succeeds(*STATUS)
            self.assertIn("desktop portal: 1.16, running", shown)
            self.assertIn("print backend: tandemtrim, which is made for the desktop TandemTrim\n", shown)
            self.succeeds(*ON)
        self.assertFalse((self.folder / "home/.config").exists())

    def test_for_a_portal_without_settings_files_the_program_says_how_to_choose_the_backend(self):
        remedy = "XDG_CURRENT_DESKTOP=TandemTrim:GNOME"
        with self.real_portal("GNOME"):
            self.fails(*STATUS, words=["uses the print backend gtk", "before 1.17 have no portals.conf", remedy])
            self.fails(*ON, "--all-gtk", words=[remedy, "nothing was written"])
        self.assertFalse((self.folder / "home/.config").exists())


if __name__ == "__main__":
    unittest.main()
