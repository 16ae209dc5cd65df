"""The print dialog with plug-ins that fail: it prints without them."""

import pathlib
import re
import shlex
import shutil
import unittest

from dialog_case import DialogCase
from terminal_case import BUILD, BUNDLE, DEFAULTS, of_panel

SETTING_INFO = "Resources/TandemTrimKV2-SettingInfo.plist"


class DialogPluginsTest(DialogCase):
    def bundle(self, without=(), texts=()):
        """A folder with a copy of the panel's bundle, without some files or with other texts in them."""
        folder = self.temporary_folder()
        bundle = folder / BUNDLE.name
        shutil.copytree(BUNDLE, bundle)
        for name in without:
            (bundle / "Contents" / name).unlink()
        for name, text in dict(texts).items():
            (bundle / "Contents" / name).write_text(text)
        return folder

    def prints_without_the_panel(self, dialog):
        dialog.says("own settings are not available")
        self.assertFalse(dialog.shows("check box", "Use Tandem Trim"))
        dialog.press("Print")
        self.assertEqual(of_panel(self.printed(dialog).options), {})

    def test_the_installed_desktop_file_shows_the_installed_panel(self):
        prefix = self.temporary_folder() / "usr"
        self.run_command("cmake", "--install", BUILD, "--prefix", prefix)
        (entry,) = prefix.glob("share/applications/*.desktop")
        (command,) = re.findall("^Exec=(.*)", entry.read_text(), re.MULTILINE)
        program, *arguments, documents = shlex.split(command)
        self.assertEqual(documents, "%F")
        dialog = self.dialog(*arguments, program=prefix / "bin" / program, LPDEST="Morva", TANDEM_TRIM_PLUGIN_PATH="")
        dialog.page("Tandem Trim")
        dialog.check("Use Tandem Trim")
        loaded = pathlib.Path(f"/proc/{dialog.process.pid}/maps").read_text()
        self.assertIn(f"{prefix}/lib", loaded)
        self.assertNotIn(str(BUILD), loaded)
        dialog.press("Print")
        self.assertEqual(of_panel(self.printed(dialog).options)["MVTandemTrim"], "On")

    def test_with_a_broken_bundle_the_dialog_prints_without_the_panel(self):
        broken = {
            "no module": {"without": ["Linux/TandemTrim"]},
            "a text instead of a module": {"texts": {"Linux/TandemTrim": "text"}},
            "no setting information": {"without": [SETTING_INFO]},
            "damaged setting information": {"texts": {SETTING_INFO: "<plist>"}},
        }
        for what, change in broken.items():
            with self.subTest(what):
                self.prints_without_the_panel(self.dialog("-d", "Morva", "--plugin", str(self.bundle(**change))))

    def test_with_a_broken_user_interface_the_dialog_prints_without_the_panel(self):
        broken = {
            "no user interface": {"without": ["Resources/TandemTrim.ui"]},
            "a damaged user interface": {"texts": {"Resources/TandemTrim.ui": "<interface><object"}},
        }
        for what, change in broken.items():
            with self.subTest(what):
                dialog = self.dialog("-d", "Morva", "--plugin", str(self.bundle(**change)))
                dialog.wait_for_tab("Tandem Trim")
                dialog.look_at_page("Tandem Trim")
                self.prints_without_the_panel(dialog)

    def test_with_a_bundle_without_information_the_dialog_prints_without_the_panel(self):
        dialog = self.dialog("-d", "Morva", "--plugin", str(self.bundle(without=["Info.plist"])))
        dialog.says("own settings are not available")
        dialog.press("Print")
        self.assertEqual(of_panel(self.printed(dialog).options), DEFAULTS)

    def test_setting_information_that_cannot_be_read_is_named_with_the_reason(self):
        dialog = self.dialog("-d", "Morva", "--plugin", str(self.bundle(texts={SETTING_INFO: "bplist00"})))
        dialog.says(f"{SETTING_INFO}: a property list in binary form")

    def misbehaving_bundle(self, call, fault):
        """A bundle whose plug-in works, except that one call misbehaves."""
        bundle = self.bundle() / BUNDLE.name
        contents = bundle / "Contents"
        for module in (contents / "Linux").iterdir():
            module.unlink()
            module.symlink_to(BUILD / "tests/host/tandemtrim_fake_plugin")
        (contents / "Resources/behaviour.txt").write_text(f"{call} {fault}")
        info = contents / "Info.plist"
        info.write_text(re.sub(r"(<key>NSPrincipalClass</key>\s*<string>)[^<]*", r"\1FakePrincipal", info.read_text()))
        return bundle

    def misbehaving(self, call, fault):
        return self.dialog("-d", "Morva", "--plugin", str(self.misbehaving_bundle(call, fault).parent))

    def test_a_bundle_needs_no_module_for_terminals(self):
        dialog = self.dialog("-d", "Morva", "--plugin", str(self.bundle(without=["Linux/TandemTrim-memory"])))
        dialog.page("Tandem Trim")
        dialog.check("Use Tandem Trim")
        dialog.press("Print")
        self.assertEqual(of_panel(self.printed(dialog).options)["MVTandemTrim"], "On")

    def test_a_job_without_the_panel_does_not_change_the_panels_remembered_settings(self):
        state = {"XDG_STATE_HOME": str(self.temporary_folder())}
        dialog = self.live_panel(**state)
        dialog.type("Top Margin", "17")
        dialog.press("Print")
        self.printed(dialog)
        dialog = self.dialog("-d", "Morva", "--plugin", str(self.temporary_folder()), **state)
        dialog.says("own settings are not available")
        dialog.press("Print")
        # Without a bundle, no option is known as a panel's, so the PPD's options are sent as the dialog's pages show them.
        self.assertEqual(of_panel(self.printed(dialog).options), DEFAULTS)
        dialog = self.panel(**state)
        self.assertEqual(dialog.text("Top Margin"), "17")

    def test_the_dialog_survives_a_plugin_that_fails_in_any_call_at_its_start(self):
        at_once = {
            "initWithBundle": ("false", "raises"),
            "PDEPanelsForType": ("none", "null-panel", "raises-int"),
            "panelName": ("raises",),
            "supportedPPDOptionKeys": ("raises",),
            "settings": ("raises",),
        }
        for call, faults in at_once.items():
            for fault in faults:
                with self.subTest(call, fault=fault):
                    self.prints_without_the_panel(self.misbehaving(call, fault))

    def test_the_dialog_survives_a_plugin_that_fails_when_it_is_shown_or_printed(self):
        later = {
            ("willShow", "raises"): lambda dialog: dialog.look_at_page("Fake"),
            ("panelView", "none"): lambda dialog: dialog.look_at_page("Fake"),
            ("panelView", "other"): lambda dialog: dialog.look_at_page("Fake"),
            ("panelView", "raises"): lambda dialog: dialog.look_at_page("Fake"),
            ("saveValuesAndReturnError", "false"): lambda dialog: dialog.look_at_page("Fake"),
            ("saveValuesAndReturnError", "raises"): lambda dialog: dialog.press("Print"),
            ("summaryInfo", "raises"): lambda dialog: dialog.look_at_page("Summary"),
            ("shouldHide", "raises"): lambda dialog: (dialog.page("Fake"), dialog.look_at_page("General")),
            ("shouldPrint", "raises"): lambda dialog: dialog.press("Print"),
        }
        for behaviour, act in later.items():
            with self.subTest(behaviour):
                dialog = self.misbehaving(*behaviour)
                dialog.find("label", "Fake")
                act(dialog)
                self.prints_without_the_panel(dialog)

    def test_the_dialog_survives_a_plugin_that_fails_when_its_printer_is_chosen(self):
        self.add_other(("TandemTrim.bundle", "Broken.bundle"))
        folder = self.bundle()
        self.misbehaving_bundle("willShow", "raises").rename(folder / "Broken.bundle")
        dialog = self.dialog("-d", "Morva", "--plugin", str(folder))
        self.freeze_at_other(dialog, lambda: dialog.wait_for_tab("Fake"))
        dialog.page("Tandem Trim")
        dialog.says("details are being read")
        self.cups.thaw()
        dialog.says("own settings are not available")
        dialog.press("Print")
        self.assertEqual(of_panel(self.printed(dialog, "Other").options), {})

    def test_the_notice_disappears_when_a_printer_with_a_working_panel_is_chosen(self):
        self.add_other(("TandemTrim.bundle", "Missing.bundle"))
        dialog = self.dialog("-d", "Other")
        dialog.says("own settings are not available")
        dialog.select_printer("Morva")
        dialog.page("Tandem Trim")
        dialog.says("(0 to 20)")
        self.assertFalse(any("own settings are not available" in label for label in dialog.labels()))

    def test_a_panel_can_keep_its_page_in_front(self):
        dialog = self.misbehaving("shouldHide", "false")
        dialog.page("Fake")
        dialog.wait_for_page("Fake")
        dialog.click_tab("General")
        dialog.wait_for_page("Fake")

    def test_a_panel_can_prevent_printing(self):
        dialog = self.misbehaving("shouldPrint", "false")
        dialog.find("label", "Fake")
        dialog.press("Print")
        dialog.page("Fake")
        dialog.wait_for_page("Fake")
        self.assert_nothing_was_sent()


if __name__ == "__main__":
    unittest.main()
