"""The bundle as it is built for macOS, for each processor."""

import functools
import plistlib
import re
import tempfile
import unittest

import mach_o

KEYWORDS = ["MVTandemTrim", "MVImageDirectionPriority", "MVPrintPosition", "MVTopMargin", "MVBottomMargin", "MVLeftMargin", "MVRightMargin"]
SIDES = ("Top", "Bottom", "Left", "Right")
OUTLETS = [
    "labelDirection", "labelPosition", "tandemTrimValid", "directionPopUp", "positionPopUp", "defaultButton", "tandemTrimView",
    *(outlet + side for outlet in ("labelMargin", "labelMarginLimit", "textBoxMargin", "stepperMargin") for side in SIDES)]


def setter(name):
    return f"set{name[0].upper()}{name[1:]}:"


def accessors(names):
    return {selector for name in names for selector in (name, setter(name))}


# Selectors that the compiler adds for C++ instance variables.
CXX = {".cxx_construct", ".cxx_destruct"}
COMPONENT = {"changeState:", "component"} | CXX
# Each class: superclass, protocols, selectors. The bundle's own code uses the selectors that no host or nib calls.
CLASSES = {
    "MorvaTTPdePluginKV2": ("NSObject", set(), {"initWithBundle:", "PDEPanelsForType:withHostInfo:", "bundle", "dealloc"}),
    "MorvaTTPdePanelKV2": ("NSObject", set(), {
        "initWithCallback:bundle:", "panelName", "panelKind", "panelView", "summaryInfo", "willShow", "shouldHide", "shouldShowHelp",
        "supportedPPDOptionKeys", "shouldPrint", "saveValuesAndReturnError:", "restoreValuesAndReturnError:", "viewController",
        "commonInfo", "initWithCore:", "dealloc"} | CXX),
    "MorvaTTPdeCallbackKV2": ("NSObject", set(), set()),
    "MorvaTTCommonInfoKV2": ("NSObject", set(), {
        "initWithCallback:bundle:", "localizedString:", "defaultValid", "defaultImageDirection", "defaultPosition",
        "defaultMarginValue:", "defaultMarginMin", "defaultMarginMax", "defaultMarginLimit", "marginLimit:", "panelKindID",
        "ticketKeyValid", "ticketKeyImageDirection", "ticketKeyPosition", "ticketKeyMargin:", "minLabelForIntegerValueRange",
        "maxLabelForIntegerValueRange", "currentPrintSettings", "isReady", "settingInfoDictionary", "marginInfoDictionary", "bundle",
        "callback", "initWithCore:", "core", "dealloc"} | CXX),
    "MorvaTTMarginInfoKV2": ("NSMutableDictionary", set(), {
        "count", "objectForKey:", "keyEnumerator", "setObject:forKey:", "removeObjectForKey:", "initWithCore:"} | CXX),
    "MorvaTTViewControllerKV2": ("NSObject", set(), {
        "initWithCommonInfo:", "panelViewWithNibName:", "updateView", "restoreNonPPDSettingsFromPrintSettings",
        "saveNonPPDSettingsToPrintSettings", "summaryInfoWithDispOrderKey:", "changeTandemTrimValid:", "setDefaultValue:",
        "controlTextDidChange:", "commonInfo", "initWithCore:commonInfo:", "keep:", "dealloc"}
        | accessors(["viewIsInited", *OUTLETS]) | CXX),
    "MorvaTTCheckBoxKV2": ("NSButton", {"MorvaTTComponentKV2"}, COMPONENT),
    "MorvaTTPopUpButtonKV2": ("NSPopUpButton", {"MorvaTTComponentKV2"}, COMPONENT),
    "MorvaTTButtonKV2": ("NSButton", {"MorvaTTComponentKV2"}, COMPONENT),
    "MorvaTTStepperKV2": ("NSStepper", {"MorvaTTComponentKV2"}, COMPONENT),
    "MorvaTTTextLabelKV2": ("NSTextField", {"MorvaTTComponentKV2"}, COMPONENT),
    "MorvaTTTextBoxKV2": ("NSTextField", {"MorvaTTComponentKV2"},
                          COMPONENT | {"setValueRange:max:", "verifyValue:", "takeIntValueFrom:"} | accessors(["min", "max"])),
    "MorvaTTPanelViewKV2": ("NSView", set(), {"awakeFromNib", "isOpaque", "drawRect:"}),
    "MorvaTTDecimalFormatterKV2": ("NSNumberFormatter", set(), {
        "stringForObjectValue:", "getObjectValue:forString:errorDescription:"}),
}


def for_each_processor(test):
    @functools.wraps(test)
    def for_all(self):
        for processor in mach_o.PROCESSORS:
            with self.subTest(processor):
                test(self, processor)
    return for_all


class TheExecutable(unittest.TestCase):
    def test_is_for_both_processors_and_no_other(self):
        self.assertEqual(sorted(mach_o.output_of("llvm-lipo", "-archs").split()), sorted(mach_o.PROCESSORS))

    @for_each_processor
    def test_is_a_bundle_with_a_two_level_namespace(self, processor):
        header = mach_o.output_of("llvm-otool", "-arch", processor, "-hv")
        self.assertRegex(header, r"\bBUNDLE\b.*\bTWOLEVEL\b")

    @for_each_processor
    def test_has_exactly_the_listed_classes_protocols_and_selectors(self, processor):
        metadata = mach_o.metadata(processor)
        self.assertEqual(metadata.protocols, {"ViewComponent", "MorvaTTComponentKV2"})
        classes = metadata.classes
        self.assertEqual(classes.keys(), CLASSES.keys())
        for name, (superclass, protocols, selectors) in CLASSES.items():
            self.assertEqual(classes[name].superclass, superclass, name)
            self.assertEqual(classes[name].protocols, protocols, name)
            self.assertEqual(classes[name].selectors, selectors, name)
            self.assertEqual(classes[name].class_selectors, set(), name)

    @for_each_processor
    def test_has_no_class_whose_name_another_plug_in_may_have(self, processor):
        for name in mach_o.metadata(processor).classes:
            self.assertRegex(name, "^MorvaTT.*KV2$")

    @for_each_processor
    def test_adds_nothing_to_classes_of_the_system(self, processor):
        self.assertNotIn("__objc_catlist", mach_o.metadata(processor).sections)
        self.assertNotIn("__objc_catlist", mach_o.output_of("llvm-otool", "-arch", processor, "-l"))

    @for_each_processor
    def test_exports_nothing(self, processor):
        # The system finds the principal class by its name.
        self.assertEqual(mach_o.output_of("llvm-nm", f"--arch={processor}", "--extern-only", "--defined-only").strip(), "")

    @for_each_processor
    def test_takes_from_the_system_exactly_the_symbols_in_the_stubs(self, processor):
        taken, offered = mach_o.imports(processor), mach_o.stubs(processor)
        self.assertEqual(taken - offered, set())
        # The stubs offer a class with its metaclass, which only a subclass needs.
        unused = {(library, name.replace("_METACLASS_", "_CLASS_")) for library, name in offered - taken}
        self.assertEqual(unused - taken, set())

    @for_each_processor
    def test_contains_no_path_but_those_of_its_libraries(self, processor):
        slice_ = mach_o.BUILD / processor / "TandemTrim.bundle/Contents/MacOS/TandemTrim"
        paths = {path.decode() for path in re.findall(rb"/[\w.+-]+(?:/[\w.+-]+)+", slice_.read_bytes())}
        self.assertEqual(paths - set(mach_o.libraries(processor)), set())

    @for_each_processor
    def test_runs_on_the_oldest_macos_that_the_bundle_declares(self, processor):
        info = plistlib.loads((mach_o.CONTENTS / "Info.plist").read_bytes())
        commands = mach_o.output_of("llvm-otool", "-arch", processor, "-l")
        self.assertEqual(re.findall(r"\bminos (\S+)", commands), [info["LSMinimumSystemVersion"]])


class TheBundle(unittest.TestCase):
    def test_has_the_files_that_the_system_looks_for_and_no_others(self):
        languages = [path.stem for path in mach_o.SOURCES.glob("resources/*.lproj")]
        files = {str(path.relative_to(mach_o.CONTENTS)) for path in mach_o.CONTENTS.rglob("*") if path.is_file()}
        self.assertEqual(files, {
            "Info.plist", "MacOS/TandemTrim", "Resources/TandemTrimKV2-SettingInfo.plist",
            *(f"Resources/{language}.lproj/Localizable.strings" for language in languages)})

    def test_describes_itself_as_hosts_expect_of_a_plug_in(self):
        info = plistlib.loads((mach_o.CONTENTS / "Info.plist").read_bytes())
        languages, version = info.pop("CFBundleLocalizations"), info.pop("CFBundleVersion")
        self.assertEqual({f"{language}.lproj" for language in languages}, {path.name for path in mach_o.CONTENTS.glob("Resources/*.lproj")})
        self.assertRegex(version, r"^\d+\.\d+\.\d+$")
        self.assertRegex(info.pop("LSMinimumSystemVersion"), r"^\d+\.\d+$")
        self.assertEqual(info, {
            "CFBundleDevelopmentRegion": "en", "CFBundleExecutable": "TandemTrim",
            "CFBundleIdentifier": "com.morva.printing.pde.tandemtrim", "CFBundleInfoDictionaryVersion": "6.0",
            "CFBundleName": "TandemTrim", "CFBundlePackageType": "BNDL", "CFBundleShortVersionString": version,
            "NSPrincipalClass": "MorvaTTPdePluginKV2", "PMSandboxCompatiblePDEs": True, "PrintOptionKeywords": KEYWORDS})

    def test_has_a_sample_printer_beside_it_that_needs_no_filter(self):
        sample = (mach_o.SOURCES / "resources/sample/MorvaTandemKV2.ppd").read_text().splitlines()
        filters = [line for line in sample if line.startswith("*cupsFilter")]
        without = [re.sub(r' \S+"$', ' -"', line) for line in filters]
        self.assertEqual([dict(zip(filters, without)).get(line, line) for line in sample],
                         (mach_o.BUILD / "arm64/MorvaTandemKV2.ppd").read_text().splitlines())
        self.assertEqual(len(filters), 2)

    def test_names_no_file_of_the_machine_that_built_it(self):
        for path in mach_o.CONTENTS.rglob("*"):
            if path.is_file():
                self.assertNotIn(bytes(mach_o.SOURCES), path.read_bytes(), path)


class TheStandIns(unittest.TestCase):
    """The stand-ins for the SDK's headers refuse what the real SDK refuses."""

    def test_refuse_what_is_newer_than_the_oldest_system(self):
        minimum = "-mmacosx-version-min="
        now = re.search(minimum + r"\S+", (mach_o.BUILD / "arm64/compile_commands.json").read_text())[0]
        for source, version, name in [
                ("platform/object.cpp", "13.3", "to_chars"),
                ("appkit/nib_file.mm", "10.7", "instantiateWithOwner:topLevelObjects:"),
                ("appkit/control_classes.mm", "10.8", "NSAppearance"),
                ("appkit/controls.mm", "10.6", "setIdentifier:")]:
            with self.subTest(name):
                self.assertRegex(mach_o.errors_of(source, lambda command: command.replace(now, minimum + version)),
                                 f"error: '{name}' is (only |un)available")

    def test_have_the_numbers_of_apples_documentation(self):
        # The bundle contains these numbers. Some differ between processors, as the documentation says.
        numbers = {"NSViewWidthSizable": 2, "NSViewMaxXMargin": 4, "NSViewMinYMargin": 8, "NSLineBreakByClipping": 2,
                   "NSLineBreakByTruncatingTail": 4,
                   "NSTextAlignmentLeft": 0, "NSTextAlignmentCenter": 1, "NSTextAlignmentRight": 2, "NSTextAlignmentNatural": 4,
                   "NSButtonTypeMomentaryPushIn": 7, "NSButtonTypeSwitch": 3, "NSBezelStyleRounded": 1, "NSBezelStyleRegularSquare": 2,
                   "NSImageLeft": 2, "NSUTF8StringEncoding": 4,
                   "sizeof(NSInteger)": 8, "sizeof(CGFloat)": 8, "sizeof(unichar)": 2, "sizeof(BOOL)": 1}
        for processor, more in {"arm64": {}, "x86_64": {"NSTextAlignmentCenter": 2, "NSTextAlignmentRight": 1}}.items():
            with self.subTest(processor), tempfile.NamedTemporaryFile("w", suffix=".mm") as source:
                print("#import <Cocoa/Cocoa.h>", *(f"static_assert({name} == {number});" for name, number in (numbers | more).items()),
                      sep="\n", file=source, flush=True)
                errors = mach_o.errors_of("appkit/nib.mm", lambda command: command.replace(command.split()[-1], source.name), processor)
                self.assertEqual(errors, "")

    def test_refuse_what_is_deprecated(self):
        allowed = "-Wno-deprecated-declarations"
        self.assertIn("error: 'ppdFindAttr' is deprecated",
                      mach_o.errors_of("ppd_attribute.cpp", lambda command: command.replace(allowed, "")))


if __name__ == "__main__":
    unittest.main()
