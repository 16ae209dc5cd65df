#!/usr/bin/python3
"""Writes Objective-C++ that makes the objects of a nib: nib_in_code.py FILE.xib >FILE.mm

For bundles that are built without a compiler for nibs; see nib_objects.hpp. An unknown element or attribute is an error.
"""

import json
import pathlib
import sys
import xml.etree.ElementTree as ElementTree

FILES_OWNER = "-2"
CLASSES = {"customView": "NSView", "button": "NSButton", "textField": "NSTextField", "popUpButton": "NSPopUpButton", "stepper": "NSStepper"}
RESIZING = {"widthSizable": "NSViewWidthSizable", "flexibleMaxX": "NSViewMaxXMargin", "flexibleMinY": "NSViewMinYMargin"}
# The values of attributes that a cell leaves out; a new control of the toolkit may have other ones.
LEFT_OUT = {
    "textField": {"alignment": "natural", "borderStyle": "none", "editable": "NO", "selectable": "NO", "drawsBackground": "NO"},
    "button": {"alignment": "natural", "borderStyle": "none"},
}
BORDER = {"textField": "setBezeled:", "button": "setBordered:"}
# Attributes of a cell: the message to the control or, with "cell", to its cell, and the values; None leaves the toolkit's default.
FLAGS = {"YES": "YES", "NO": "NO"}
CELL = {
    "alignment": ("setAlignment:", {"left": "NSTextAlignmentLeft", "right": "NSTextAlignmentRight", "center": "NSTextAlignmentCenter",
                                     "natural": "NSTextAlignmentNatural"}),
    "lineBreakMode": ("cell setLineBreakMode:", {"clipping": "NSLineBreakByClipping", "truncatingTail": "NSLineBreakByTruncatingTail"}),
    "sendsActionOnEndEditing": ("cell setSendsActionOnEndEditing:", FLAGS),
    "scrollable": ("cell setScrollable:", FLAGS),
    "selectable": ("setSelectable:", FLAGS),
    "editable": ("setEditable:", FLAGS),
    "drawsBackground": ("setDrawsBackground:", FLAGS),
    "continuous": ("setContinuous:", FLAGS),
    "valueWraps": ("setValueWraps:", FLAGS),
    "bezelStyle": ("setBezelStyle:", {"rounded": "NSBezelStyleRounded", "regularSquare": "NSBezelStyleRegularSquare"}),
    "imagePosition": ("setImagePosition:", {"left": "NSImageLeft"}),
    "imageScaling": None, "inset": None, "state": None, "selectedItem": None, "type": None, "key": None, "id": None,
}
BUTTON_TYPES = {"check": "NSButtonTypeSwitch", "push": "NSButtonTypeMomentaryPushIn"}
FONTS = {"system": "systemFontOfSize:"}
ACCESSIBILITY = {"title": "setAccessibilityTitleUIElement:"}
# The known elements: their attributes and children.
VIEW = ("id userLabel customClass verticalHuggingPriority horizontalHuggingPriority",
        "rect autoresizingMask subviews connections point buttonCell textFieldCell popUpButtonCell stepperCell")
KNOWN = {
    "document": ("type version toolsVersion targetRuntime propertyAccessControl", "dependencies objects"),
    "objects": ("", "customObject customView"),
    "customObject": ("id userLabel customClass", "connections"),
    "subviews": ("", " ".join(CLASSES)),
    **dict.fromkeys(CLASSES, VIEW),
    "rect": ("key x y width height", ""),
    "autoresizingMask": (" ".join(["key", *RESIZING]), ""),
    **dict.fromkeys(("buttonCell", "textFieldCell", "popUpButtonCell", "stepperCell"),
                    (" ".join(["title", "borderStyle", "increment", "maxValue", *CELL]), "behavior font color menu connections")),
    "font": ("key metaFont size", ""),
    "color": ("key name catalog colorSpace", ""),
    "menu": ("key id", "items"),
    "items": ("", "menuItem"),
    "menuItem": ("title state id", ""),
    "connections": ("", "outlet action accessibilityConnection"),
    "outlet": ("property destination id", ""),
    "action": ("selector target id", ""),
    "accessibilityConnection": ("property destination id", ""),
}
# For the editor only, or given by the type of a button.
IGNORED = {"dependencies", "point", "behavior"}

PROLOGUE = """\
// Generated from {file} by {program}: change one of these instead.
#import "adapters/appkit/control_classes.h"
#import "adapters/appkit/decimal_formatter.h"
#include "adapters/appkit/nib_objects.hpp"
#import "adapters/appkit/view_controller.h"

static NSArray* makeObjects(NSString* name, MorvaTTViewControllerKV2* owner) {{
  if (![name isEqualToString:@{name}]) return nil;
"""
EPILOGUE = """\
  return objects;
}

namespace tandemtrim::platform::appkit {

NSArray* objectsOfNib(NSString* name, ::MorvaTTViewControllerKV2* owner) { return makeObjects(name, owner); }

}  // namespace tandemtrim::platform::appkit
"""


def text(value):
    return "@" + json.dumps(value, ensure_ascii=False)


def number(value):
    return repr(float(value))


class Writer:
    def __init__(self, document):
        self.document = document
        self.names = {FILES_OWNER: "owner"}
        self.lines = []
        self.element = document  # what is being translated

    def add(self, line):
        self.lines.append(f"  {line};")

    def send(self, receiver, selector, argument):
        if selector.startswith("cell "):
            receiver, selector = f"[{receiver} cell]", selector.removeprefix("cell ")
        self.add(f"[{receiver} {selector}{argument}]")

    def check(self, element):
        """KeyError for an unknown attribute or child of the element or of those in it."""
        self.element = element
        attributes, children = (known.split() for known in KNOWN[element.tag])
        for unknown in [key for key in element.attrib if key not in attributes] + [child.tag for child in element if child.tag not in children]:
            raise KeyError(unknown)
        for child in element:
            if child.tag not in IGNORED:
                self.check(child)

    def name_of(self, element):
        """A variable for the object, named by its userLabel."""
        name = self.names[element.get("id")] = element.get("userLabel")
        return name

    def view(self, element):
        name, frame = self.name_of(element), element.find("rect").attrib
        place = ", ".join(number(frame[key]) for key in ("x", "y", "width", "height"))
        made = element.get("customClass") or CLASSES[element.tag]
        more = " pullsDown:NO" if element.tag == "popUpButton" else ""
        self.add(f"{made}* {name} = [[[{made} alloc] initWithFrame:NSMakeRect({place}){more}] autorelease]")
        mask = element.find("autoresizingMask").attrib
        self.send(name, "setAutoresizingMask:", " | ".join(RESIZING[key] for key in mask if key != "key"))
        for cell in element:
            if cell.tag.endswith("Cell"):
                self.cell(name, element, cell)
        for child in element.findall("subviews/*"):
            self.send(name, "addSubview:", self.view(child))
        return name

    def cell(self, name, control, cell):
        self.element = cell
        if control.tag == "button":
            self.send(name, "setButtonType:", BUTTON_TYPES[cell.get("type")])
        for key, value in (LEFT_OUT.get(control.tag, {}) | cell.attrib).items():
            if key == "title":
                if control.tag != "popUpButton":
                    self.send(name, "setTitle:" if control.tag == "button" else "setStringValue:", text(value))
            elif key == "borderStyle":
                if control.tag in BORDER:
                    self.send(name, BORDER[control.tag], {"none": "NO", "bezel": "YES", "border": "YES"}[value])
            elif key in ("increment", "maxValue"):
                self.send(name, f"set{key[0].upper()}{key[1:]}:", number(value))
            elif (known := CELL[key]) is not None:
                self.send(name, known[0], known[1][value])
        font = self.element = cell.find("font")
        self.send(name, "setFont:", f"[NSFont {FONTS[font.get('metaFont')]}{number(font.get('size'))}]")
        for color in cell.findall("color"):
            self.send(name, f"set{color.get('key')[0].upper()}{color.get('key')[1:]}:", f"[NSColor {color.get('name')}]")
        for item in cell.findall("menu/items/menuItem"):
            self.send(name, "addItemWithTitle:", text(item.get("title")))

    def connect(self, element, source):
        """Writes the connections of the element whose object is `source`."""
        for connection in element.findall("connections/*"):
            self.element = connection
            other = self.names[connection.get("destination") or connection.get("target")]
            if connection.tag == "action":
                self.send(source, "setTarget:", other)
                self.send(source, "setAction:", f"@selector({connection.get('selector')})")
            elif connection.tag == "accessibilityConnection":
                self.lines.append("#if !defined(GNUSTEP)")
                self.send(source, ACCESSIBILITY[connection.get("property")], other)
                self.lines.append("#endif")
            else:
                key = connection.get("property")
                self.send(source, f"set{key[0].upper()}{key[1:]}:", other)

    def write(self):
        self.check(self.document)
        top = []
        for element in self.document.find("objects"):
            if element.tag == "customView":
                top.append(self.view(element))
            elif not element.get("id").startswith("-"):
                name, made = self.name_of(element), element.get("customClass")
                self.add(f"{made}* {name} = [[[{made} alloc] init] autorelease]")
                top.append(name)
        self.add("NSMutableArray* objects = [NSMutableArray array]")
        for name in top:
            self.send("objects", "addObject:", name)
        for element in self.document.iter():
            if element.get("id") in self.names:
                self.connect(element, self.names[element.get("id")])
                for cell in element:
                    if cell.tag.endswith("Cell"):
                        self.connect(cell, self.names[element.get("id")])
        self.lines += ["#if !defined(GNUSTEP)", *(f"  [{name} awakeFromNib];" for name in self.names.values()), "#endif"]


def main():
    file = pathlib.Path(sys.argv[1])
    writer = Writer(ElementTree.parse(file).getroot())
    try:
        writer.write()
    except KeyError as unknown:
        place = " ".join(filter(None, (writer.element.tag, writer.element.get("id"))))
        sys.exit(f"{file}: {unknown} in <{place}> has no code; add it to {sys.argv[0]}")
    print(PROLOGUE.format(file=file.name, program=pathlib.Path(__file__).name, name=json.dumps(file.stem)) + "\n".join(writer.lines) + "\n" + EPILOGUE, end="")


if __name__ == "__main__":
    main()
