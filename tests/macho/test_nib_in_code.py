"""The code that is generated from the nib: the parts that GNUstep cannot check. Tests on GNUstep compare the rest with the nib."""

import pathlib
import re
import subprocess
import tempfile
import unittest

import mach_o

XIB = mach_o.SOURCES / "resources/TandemTrim.xib"
# What the nib has, what it has instead, and the place and name of what is unknown.
FORMS = {"an attribute of the document": ('version="3.0"', 'version="3.0" useAutolayout="YES"', "document", "useAutolayout"),
         "an object": ("<objects>", '<objects><userDefaultsController id="use-rd-efa"/>', "objects", "userDefaultsController"),
         "a view": ("<subviews>", '<subviews><slider userLabel="slider"><rect key="frame" x="0" y="0" width="9" height="9"/></slider>',
                    "subviews", "slider"),
         "a part of a view": ("<subviews>", "<constraints/><subviews>", "customView 712-ad-f72", "constraints"),
         "an attribute of a view": ('userLabel="labelDirection"', 'userLabel="labelDirection" hidden="YES"', "textField ce5-63-993", "hidden"),
         "a way to resize": ('widthSizable="YES"', 'heightSizable="YES"', "autoresizingMask", "heightSizable"),
         "a part of a cell": ("<behavior ", '<string key="title"/><behavior ', "buttonCell fb8-34-f8f", "string"),
         "an attribute of a cell": ('increment="1"', 'increment="1" minValue="2"', "stepperCell 99e-43-511", "minValue"),
         "a value of an attribute": ('bezelStyle="rounded"', 'bezelStyle="bevel"', "popUpButtonCell d1f-de-409", "bevel"),
         "a font": ('metaFont="system"', 'metaFont="systemBold"', "font", "systemBold"),
         "an attribute of a font": ('size="13"', 'size="13" weight="bold"', "font", "weight"),
         "an attribute of a colour": ('name="controlColor"', 'name="controlColor" alpha="0.5"', "color", "alpha"),
         "a part of a menu item": ('<menuItem title="Short Edge" id="53b-a0-2a7"/>', '<menuItem title="Short Edge" id="53b-a0-2a7"><menu/></menuItem>',
                                   "menuItem 53b-a0-2a7", "menu"),
         "an attribute of a menu item": ('title="Short Edge"', 'title="Short Edge" keyEquivalent="s"', "menuItem 53b-a0-2a7", "keyEquivalent"),
         "a target": ('target="-2"', 'target="gon-e0-000"', "action fc1-9c-6d0", "gon-e0-000"),
         "a kind of connection": ("<outlet ", '<binding id="bin-di-ng0"/><outlet ', "connections", "binding"),
         "a connection for accessibility": ('accessibilityConnection property="title"', 'accessibilityConnection property="link"',
                                            "accessibilityConnection eff-06-75b", "link")}


def made_of(text):
    with tempfile.TemporaryDirectory() as folder:
        nib = pathlib.Path(folder, "TandemTrim.xib")
        nib.write_text(text)
        return subprocess.run([mach_o.SOURCES / "cmake/macos/nib_in_code.py", nib], capture_output=True, text=True)


class TheNibInCode(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.made = made_of(XIB.read_text())
        cls.lines = [line.strip() for line in cls.made.stdout.splitlines()]

    def arguments(self, selector):
        """Receiver to argument, for all messages with this selector."""
        return {found[1]: found[2] for line in self.lines if (found := re.fullmatch(rf"\[(\w+) {selector}:?(\w*)\];", line))}

    def test_gives_every_control_without_a_title_the_name_of_its_label(self):
        sides = ("Top", "Bottom", "Left", "Right")
        self.assertEqual(self.arguments("setAccessibilityTitleUIElement"), {
            "directionPopUp": "labelDirection", "positionPopUp": "labelPosition",
            **{control + side: "labelMargin" + side for control in ("textBoxMargin", "stepperMargin") for side in sides}})

    def test_has_labels_that_no_click_selects_and_no_key_edits(self):
        labels = {name for name in re.findall(r"MorvaTTTextLabelKV2\* (\w+)", self.made.stdout)}
        self.assertEqual(len(labels), 10)
        for selector in ("setEditable", "setSelectable", "setBezeled", "setDrawsBackground"):
            self.assertEqual({name for name, flag in self.arguments(selector).items() if flag == "NO"}, labels)

    def test_wakes_every_object_once_all_are_connected(self):
        # In awakeFromNib the panel's view gets its light appearance.
        woken = self.arguments("awakeFromNib")
        self.assertEqual(woken.keys(), {"owner", *re.findall(r"^  \w+\* (\w+) = \[\[\[Morva", self.made.stdout, re.MULTILINE)})
        self.assertIn("tandemTrimView", woken)
        first = next(index for index, line in enumerate(self.lines) if "awakeFromNib" in line)
        self.assertFalse([line for line in self.lines[first:] if line.startswith("[") and "awakeFromNib" not in line])

    def test_is_not_generated_from_a_nib_with_unknown_contents(self):
        for what, (known, other, place, unknown) in FORMS.items():
            with self.subTest(what):
                done = made_of(XIB.read_text().replace(known, other, 1))
                self.assertEqual(done.returncode, 1)
                self.assertRegex(done.stderr, rf"^\S+/TandemTrim[.]xib: '{unknown}' in <{place}> has no code; add it to \S+\n$")


if __name__ == "__main__":
    unittest.main()
