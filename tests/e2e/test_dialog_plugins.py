"""The print dialog with plug-ins that do not do their part: it prints without them."""

import re
import shutil
import unittest

from dialog_case import DialogCase
from terminal_case import BUILD, BUNDLE, of_panel

SETTING_INFO = "Resources/TandemTrimKV2-SettingInfo.plist"


class DialogPluginsTest(DialogCase):
    def bundle(self, without=(), texts=()):
        """A folder with the panel's bundle, without some of its files or with others in their place."""
        folder = self.temporary_folder()
        bundle = folder / BUNDLE.name
        shutil.copytree(BUNDLE, bundle)
        for name in without:
            (bundle / "Contents" / name).unlink()
        for name, text in dict(texts).items():
            (bundle / "Contents" / name).write_text(text)
        return folder

    def prints_without_the_panel(self, dialog):
        dialog.says("Tandem Trim settings are not available")
        self.assertFalse(dialog.shows("check box", "Use Tandem Trim"))
        dialog.press("Print")
        self.assertEqual(of_panel(self.printed(dialog).options), {})

    def test_broken_bundles_leave_a_dialog_that_prints(self):
        broken = {
            "no description": {"without": ["Info.plist"]},
            "no module": {"without": ["Linux/TandemTrim"]},
            "no module but a text": {"texts": {"Linux/TandemTrim": "text"}},
            "no setting information": {"without": [SETTING_INFO]},
            "damaged setting information": {"texts": {SETTING_INFO: "<plist>"}},
            "no user interface": {"without": ["Resources/TandemTrim.ui"]},
            "a damaged user interface": {"texts": {"Resources/TandemTrim.ui": "<interface><object"}},
        }
        for what, change in broken.items():
            with self.subTest(what):
                self.prints_without_the_panel(self.dialog("-d", "Morva", "--plugin", str(self.bundle(**change))))

    def misbehaving(self, call, misdeed):
        """The dialog with a plug-in that works but for one call."""
        folder = self.bundle()
        contents = folder / BUNDLE.name / "Contents"
        for module in (contents / "Linux").iterdir():
            module.unlink()
            module.symlink_to(BUILD / "tests/host/tandemtrim_fake_plugin")
        (contents / "Resources/behaviour.txt").write_text(f"{call} {misdeed}")
        info = contents / "Info.plist"
        info.write_text(re.sub(r"(<key>NSPrincipalClass</key>\s*<string>)[^<]*", r"\1FakePrincipal", info.read_text()))
        return self.dialog("-d", "Morva", "--plugin", str(folder))

    def test_a_plugin_may_break_at_any_call(self):
        at_once = {
            "initWithBundle": ("false", "raises"),
            "PDEPanelsForType": ("none", "null-panel", "raises-int"),
            "panelName": ("raises",),
            "panelView": ("none", "other", "raises"),
            "supportedPPDOptionKeys": ("raises",),
            "controls": ("raises",),
        }
        for call, misdeeds in at_once.items():
            for misdeed in misdeeds:
                with self.subTest(call, misdeed=misdeed):
                    self.prints_without_the_panel(self.misbehaving(call, misdeed))

    def test_a_plugin_may_break_when_it_is_looked_at_or_printed(self):
        later = {
            ("willShow", "raises"): lambda dialog: dialog.page("Fake"),
            ("summaryInfo", "raises"): lambda dialog: dialog.page("Summary"),
            ("saveValuesAndReturnError", "raises"): lambda dialog: dialog.press("Print"),
            ("saveValuesAndReturnError", "false"): lambda dialog: dialog.press("Print"),
        }
        for behaviour, act in later.items():
            with self.subTest(behaviour):
                dialog = self.misbehaving(*behaviour)
                dialog.find("label", "Fake")
                act(dialog)
                self.prints_without_the_panel(dialog)


if __name__ == "__main__":
    unittest.main()
