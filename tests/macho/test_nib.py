"""The nib, checked without a Mac: it keeps to the part of the .xib format that Xcode writes for it, and fits the bundle's classes."""

import re
import unittest
import xml.etree.ElementTree as ElementTree

import mach_o

COMMON = {"id", "userLabel", "customClass"}
CONTROL = COMMON | {"verticalHuggingPriority", "horizontalHuggingPriority"}
VIEW_PARTS = {"rect", "autoresizingMask", "connections"}
CELL = {"key", "id", "title", "alignment", "lineBreakMode", "borderStyle", "bezelStyle", "imagePosition", "imageScaling", "inset", "state",
        "type"}
# Each element: its attributes, its children.
SCHEMA = {
    "document": ({"type", "version", "toolsVersion", "targetRuntime", "propertyAccessControl"}, {"dependencies", "objects"}),
    "dependencies": (set(), {"deployment", "plugIn"}),
    "deployment": ({"identifier"}, set()),
    "plugIn": ({"identifier", "version"}, set()),
    "objects": (set(), {"customObject", "customView"}),
    "customObject": (COMMON, {"connections"}),
    "customView": (COMMON, VIEW_PARTS | {"subviews", "point"}),
    "subviews": (set(), {"button", "textField", "popUpButton", "stepper"}),
    "button": (CONTROL, VIEW_PARTS | {"buttonCell"}),
    "textField": (CONTROL, VIEW_PARTS | {"textFieldCell"}),
    "popUpButton": (CONTROL, VIEW_PARTS | {"popUpButtonCell"}),
    "stepper": (CONTROL, VIEW_PARTS | {"stepperCell"}),
    "rect": ({"key", "x", "y", "width", "height"}, set()),
    "point": ({"key", "x", "y"}, set()),
    "autoresizingMask": ({"key", "widthSizable", "flexibleMinX", "flexibleMaxX", "flexibleMinY", "flexibleMaxY"}, set()),
    "buttonCell": (CELL, {"behavior", "font"}),
    "popUpButtonCell": (CELL | {"selectedItem"}, {"behavior", "font", "menu"}),
    "textFieldCell": (CELL | {"scrollable", "selectable", "editable", "drawsBackground", "sendsActionOnEndEditing"}, {"font", "color"}),
    "stepperCell": (CELL | {"continuous", "increment", "minValue", "maxValue", "valueWraps"}, {"font", "connections"}),
    "behavior": ({"key", "changeContents", "doesNotDimImage", "lightByContents", "lightByBackground", "lightByGray", "pushIn"}, set()),
    "font": ({"key", "metaFont", "size"}, set()),
    "color": ({"key", "name", "catalog", "colorSpace"}, set()),
    "menu": ({"key", "id"}, {"items"}),
    "items": (set(), {"menuItem"}),
    "menuItem": ({"title", "state", "id"}, set()),
    "connections": (set(), {"outlet", "action", "accessibilityConnection"}),
    "outlet": ({"property", "destination", "id"}, set()),
    "action": ({"selector", "target", "id"}, set()),
    "accessibilityConnection": ({"property", "destination", "id"}, set()),
}
# The attributes that the compiler requires.
REQUIRED = {
    "document": {"type", "version", "targetRuntime"}, "customObject": {"id"}, "customView": {"id"},
    "rect": {"key", "x", "y", "width", "height"}, "outlet": {"property", "destination", "id"}, "action": {"selector", "target", "id"},
    "accessibilityConnection": {"property", "destination", "id"}, "menuItem": {"id"}, "font": {"key", "metaFont"}}
# The toolkit's class of each element without a custom class.
TOOLKIT_CLASSES = {"customView": "NSView", "customObject": "NSObject", "button": "NSButton",
                   "textField": "NSTextField", "popUpButton": "NSPopUpButton", "stepper": "NSStepper"}
# The toolkit's outlets that the nib uses.
TOOLKIT_OUTLETS = {"nextKeyView", "formatter"}
FILES_OWNER, FIRST_RESPONDER, APPLICATION = "-2", "-1", "-3"


class TheNib(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.document = ElementTree.parse(mach_o.SOURCES / "resources/TandemTrim.xib").getroot()
        cls.by_id = {element.get("id"): element for element in cls.document.iter() if element.get("id")}
        cls.owners = {connection: parent for parent in cls.document.iter() for connections in parent.findall("connections")
                      for connection in connections}
        cls.classes = mach_o.metadata("arm64").classes

    def selectors_of(self, element):
        return self.classes[element.get("customClass")].selectors

    def test_has_only_elements_and_attributes_that_the_compiler_knows(self):
        for element in self.document.iter():
            attributes, children = SCHEMA[element.tag]
            self.assertLessEqual(set(element.keys()), attributes, element.tag)
            self.assertLessEqual(REQUIRED.get(element.tag, set()), set(element.keys()), element.tag)
            self.assertLessEqual({child.tag for child in element}, children, element.tag)

    def test_identifies_each_object_once_and_as_xcode_does(self):
        ids = [element.get("id") for element in self.document.iter() if element.get("id")]
        self.assertEqual(len(ids), len(set(ids)))
        for name in set(ids) - {FILES_OWNER, FIRST_RESPONDER, APPLICATION}:
            self.assertRegex(name, "^[0-9A-Za-z]{3}-[0-9A-Za-z]{2}-[0-9A-Za-z]{3}$")

    def test_has_custom_classes_that_the_bundle_derives_from_the_toolkits_classes(self):
        for element in self.document.iter():
            name = element.get("customClass")
            if name and element.get("id") not in (FIRST_RESPONDER, APPLICATION):
                ancestor = self.classes[name].superclass
                self.assertTrue(ancestor == TOOLKIT_CLASSES[element.tag] or element.tag == "customObject", name)

    def test_connects_outlets_and_actions_that_their_objects_have(self):
        for connection, owner in self.owners.items():
            end = self.by_id[connection.get("destination") or connection.get("target")]
            if connection.tag == "outlet" and connection.get("property") not in TOOLKIT_OUTLETS:
                name = connection.get("property")
                self.assertIn(f"set{name[0].upper()}{name[1:]}:", self.selectors_of(owner))
            elif connection.tag == "action":
                self.assertIn(connection.get("selector"), self.selectors_of(end))

    def test_connects_every_outlet_of_its_owner_to_an_object_of_the_declared_class(self):
        declaration = (mach_o.SOURCES / "adapters/appkit/view_controller.h").read_text()
        declared = {}
        for kind, name in re.findall(r"IBOutlet (\w+)\* *(\w+(?:##Side)?);", declaration):
            for side in ("Top", "Bottom", "Left", "Right") if "##" in name else ("",):
                declared[name.replace("##Side", side)] = kind
        connected = {connection.get("property"): self.by_id[connection.get("destination")]
                     for connection in self.by_id[FILES_OWNER].find("connections")}
        self.assertEqual(connected.keys(), declared.keys())
        for name, kind in declared.items():
            made = connected[name].get("customClass", TOOLKIT_CLASSES[connected[name].tag])
            self.assertIn(kind, (made, getattr(self.classes.get(made), "superclass", None)), name)


if __name__ == "__main__":
    unittest.main()
