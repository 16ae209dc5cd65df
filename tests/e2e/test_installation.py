"""The installed program works from any place, and without the print dialog, too."""

import os
import pathlib
import re
import subprocess
import unittest

from terminal_case import BUILD, SAMPLE, TerminalCase

SOMEBODY = 54321  # a user other than root and the one who runs the tests


class InstallationTest(TerminalCase):
    def installed(self, *arguments):
        prefix = self.temporary_folder() / "usr"
        subprocess.run(["cmake", "--install", BUILD, "--prefix", prefix, *arguments], check=True, capture_output=True)
        return prefix

    def test_the_installed_program_finds_its_plugin(self):
        self.assert_prints_with_the_panel(self.installed())

    def test_the_terminal_component_works_alone(self):
        self.assert_prints_with_the_panel(self.installed("--component", "terminal"))

    def test_a_program_in_a_folder_that_everybody_may_write_to_loads_no_bundle_beside_it(self):
        prefix = self.installed("--component", "terminal")
        around = {"program": prefix / "bin/tandem-trim", "TANDEM_TRIM_PLUGIN_PATH": ""}
        (bundle,) = prefix.glob("lib/**/TandemTrim.bundle")
        for folder, remedies in ((prefix, []), (prefix / "lib", []), (bundle, ["--without-panel"])):
            folder.chmod(0o777)
            words = [f"everybody can write to {folder} ", "chmod o-w", "nothing was sent", *remedies]
            self.refuses("-d", "Morva", SAMPLE, words=words, **around)
            folder.chmod(0o755)

    def test_a_program_whose_module_others_could_change_refuses_to_run(self):
        prefix, module = self.installed_with_its_module()
        module.chmod(0o777)
        self.refuses_itself(prefix, f"everybody can write to {module} ", "chmod o-w")

    def test_a_program_whose_module_is_of_another_build_refuses_to_run(self):
        prefix, module = self.installed_with_its_module()
        for other in self.of_other_builds(module):
            module.write_bytes(other)
            self.refuses_itself(prefix, f"{module} is from another build")

    def test_a_program_without_its_module_says_what_to_install(self):
        prefix, module = self.installed_with_its_module()
        module.unlink()
        self.refuses_itself(prefix, "tandem-trim-terminal is missing", "install the package tandem-trim again")

    def installed_with_its_module(self):
        prefix = self.installed("--component", "terminal")
        (module,) = prefix.glob("lib/**/tandem-trim-terminal")
        return prefix, module

    def refuses_itself(self, prefix, *reasons):
        words = ["the program cannot start", "nothing was sent", *reasons]
        self.refuses("-d", "Morva", SAMPLE, program=prefix / "bin/tandem-trim", words=words)

    def of_other_builds(self, module):
        """Contents of modules of other builds: one with another build mark, one without."""
        content, marks = re.subn(rb"(?<![0-9a-f])[0-9a-f]{64}(?=\0)", lambda mark: mark[0][::-1], module.read_bytes())
        self.assertEqual(marks, 1)
        return content, (BUILD / "tests/host/tandemtrim_fake_plugin").read_bytes()

    def test_a_program_started_through_a_link_finds_its_parts(self):
        prefix = self.installed("--component", "terminal")
        link = self.temporary_folder() / "print"
        link.symlink_to(prefix / "bin/tandem-trim")
        self.prints("-d", "Morva", SAMPLE, program=link)

    def test_files_that_only_the_programs_owner_may_write_are_trusted(self):
        prefix = self.installed("--component", "terminal")
        owner = SOMEBODY if os.geteuid() == 0 else os.geteuid()
        for path in (prefix, *prefix.rglob("*")):
            os.chown(path, owner, -1)
        self.assert_prints_with_the_panel(prefix)

    def test_only_a_program_in_a_build_folder_takes_the_bundle_from_the_folder_above(self):
        prefix = self.installed("--component", "terminal")
        (bundle,) = prefix.glob("lib/**/TandemTrim.bundle")
        bundle.rename(prefix / bundle.name)
        around = {"program": prefix / "bin/tandem-trim", "TANDEM_TRIM_PLUGIN_PATH": ""}
        self.refuses("-d", "Morva", SAMPLE, words=["TandemTrim.bundle is not installed"], **around)
        (prefix / "CMakeCache.txt").touch()
        result = self.trim("-d", "Morva", "--summary", **around)
        self.assertEqual(result.returncode, 0, result.stderr)

    def test_without_the_dialog_the_package_to_install_is_named(self):
        program = self.installed("--component", "terminal") / "bin/tandem-trim"
        missing = ["the print dialog is not installed", "tandem-trim-gtk", "nothing was sent", "--no-dialog"]
        self.refuses("-d", "Morva", "--dialog", SAMPLE, program=program, words=missing)

    def test_a_dialog_of_another_build_is_refused(self):
        prefix = self.installed()
        for module in self.modules_of_the_dialog(prefix):
            own = module.read_bytes()
            for other in self.of_other_builds(module):
                module.write_bytes(other)
                self.refuses_the_dialog(prefix, f"{module} is from another build")
            module.write_bytes(own)

    def test_a_dialog_that_others_could_change_is_refused(self):
        prefix = self.installed()
        for module in self.modules_of_the_dialog(prefix):
            module.chmod(0o777)
            self.refuses_the_dialog(prefix, f"everybody can write to {module} ", "chmod o-w")
            module.chmod(0o755)

    def test_a_dialog_that_lacks_a_module_counts_as_not_installed(self):
        prefix = self.installed()
        for module in self.modules_of_the_dialog(prefix):
            hidden = module.rename(module.with_suffix(".hidden"))
            missing = ["the print dialog is not installed", "tandem-trim-gtk", "nothing was sent", "--no-dialog"]
            self.refuses("-d", "Morva", "--dialog", SAMPLE, program=prefix / "bin/tandem-trim", words=missing)
            hidden.rename(module)

    def modules_of_the_dialog(self, prefix):
        (folder,) = prefix.glob("lib/**/tandem-trim/dialog")
        files = {path.name: path for path in folder.iterdir() if path.is_file()}
        self.assertEqual(set(files), {"tandem-trim-toolkit", "tandem-trim-dialog", "tandem-trim-page"})
        return [files["tandem-trim-toolkit"], files["tandem-trim-dialog"]]

    def test_only_the_program_that_renders_pages_loads_poppler_and_it_loads_no_toolkit(self):
        links = {}
        for path in self.installed().rglob("*"):
            if path.is_file() and path.read_bytes()[:4] == b"\x7fELF":
                links[path.name] = subprocess.run(["ldd", path], check=True, capture_output=True, text=True).stdout
        self.assertGreater(len(links), 4)
        self.assertEqual({name for name, libraries in links.items() if "libpoppler" in libraries}, {"tandem-trim-page"})
        self.assertNotRegex(links["tandem-trim-page"], "libgtk|libgdk|libwayland|libcups")

    def refuses_the_dialog(self, prefix, *reasons):
        words = ["the print dialog cannot be shown", *reasons, "nothing was sent", "--no-dialog"]
        self.refuses("-d", "Morva", "--dialog", SAMPLE, program=prefix / "bin/tandem-trim", words=words)

    def test_without_the_dialog_a_job_is_printed_with_a_note_if_the_environment_names_a_screen(self):
        program = self.installed("--component", "terminal") / "bin/tandem-trim"
        result, (record,) = self.prints("-d", "Morva", SAMPLE, program=program, DISPLAY=":none")
        self.assertEqual(record.size, pathlib.Path(SAMPLE).stat().st_size)
        (note,) = result.stderr.splitlines()
        for words in ("the print dialog is not installed", "tandem-trim-gtk", "printing without it"):
            self.assertIn(words, note)


if __name__ == "__main__":
    unittest.main()
