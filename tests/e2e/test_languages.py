"""The panel's texts are in the user's language; what it stores is the same in every language."""

import json
import re
import subprocess
import unittest

import surroundings
from terminal_case import ACTS_THAT_CHANGE, BUNDLE, CHANGED, LARGEST, MARGINS, PROJECT, TerminalCase, each, of_panel

LANGUAGES = sorted(path.stem for path in PROJECT.glob("resources/*.lproj"))
NO_LANGUAGE = {"LANG": "C.UTF-8", "LANGUAGE": "", "LC_ALL": "", "LC_MESSAGES": ""}

# A user's variables, and the language of the string table that they select.
CHOICES = (
    ({"LANGUAGE": "de"}, "de"),
    ({"LANGUAGE": "de_AT"}, "de"),
    ({"LANGUAGE": "fr_CA.UTF-8"}, "fr"),
    ({"LANGUAGE": "zh_CN"}, "zh-Hans"),
    ({"LANGUAGE": "sw:ko:de"}, "ko"),
    ({"LANGUAGE": "sw"}, "en"),
    ({"LANGUAGE": "en_GB:de"}, "en"),
    ({"LANGUAGE": "de", "LANG": "C"}, "en"),
    ({"LANGUAGE": "de", "LC_ALL": "POSIX"}, "en"),
    ({"LANG": "it_IT.UTF-8"}, "it"),
    ({"LANG": "it_IT.UTF-8", "LC_MESSAGES": "nl_NL.UTF-8"}, "nl"),
    ({"LANG": "it_IT.UTF-8", "LC_MESSAGES": "nl_NL.UTF-8", "LC_ALL": "es_ES.UTF-8"}, "es"),
    ({"LANG": "it_IT.UTF-8", "LANGUAGE": "ja"}, "ja"),
    ({"LANG": "C"}, "en"),
)


def table(language):
    text = (BUNDLE / f"Contents/Resources/{language}.lproj/Localizable.strings").read_text(encoding="utf-8-sig")
    return dict(re.findall(r'^"(.*)" = "(.*)";$', text, re.MULTILINE))


def summary(language):
    """The rows of the panel's summary for the settings in CHANGED."""
    texts = table(language)
    rows = [
        (texts["ImageDirection"], texts["ShortEdgeFeed"]),
        (texts["InformPrintingPosition"], texts["Left"]),
    ]
    return rows + [(texts[f"{side}Margin"], CHANGED[keyword]) for side, keyword in MARGINS.items()]


class LanguagesTest(TerminalCase):
    def shown(self, *arguments, **variables):
        result = self.trim("-d", "Morva", "--json", *arguments, **(NO_LANGUAGE | variables))
        self.assertEqual(result.returncode, 0, result.stderr)
        shown = json.loads(result.stdout)
        return shown, [(row["title"], row["value"]) for row in shown["summary"]]

    def test_the_summary_is_translated_and_the_settings_are_not(self):
        for language in LANGUAGES:
            with self.subTest(language=language):
                variables = {"LANGUAGE": language.replace("-Hans", "_CN")}
                shown, rows = self.shown(*each("--set", ACTS_THAT_CHANGE), **variables)
                self.assertEqual(of_panel(shown["settings"]), CHANGED)
                self.assertEqual(shown["limits"]["Top"], {"keyword": MARGINS["Top"], "min": 0, "max": LARGEST["Top"]})
                self.assertEqual(rows, summary(language))

    def test_the_printed_options_are_the_same_in_every_language(self):
        for language in LANGUAGES:
            with self.subTest(language=language):
                variables = NO_LANGUAGE | {"LANGUAGE": language.replace("-Hans", "_CN")}
                options = self.options_of(*each("--set", ACTS_THAT_CHANGE), **variables)
                self.assertEqual(of_panel(options), CHANGED)

    def test_the_desktop_names_the_program_in_every_language(self):
        entry = "packaging/desktop/com.morva.tandemtrim.desktop"
        names = re.findall(r"^Name\[(.*)\]=", (PROJECT / entry).read_text(encoding="utf-8"), re.MULTILINE)
        others = {language.replace("-Hans", "_CN") for language in LANGUAGES} - {"en"}
        self.assertEqual(set(names), others, f"{entry} has a line Name[language]= for each")

    def test_the_comma_locale_of_the_tests_has_a_decimal_comma(self):
        variables = self.environment(**surroundings.LANGUAGES["comma"])
        shown = subprocess.run(["/usr/bin/printf", "%.1f", "2,5"], env=variables, capture_output=True, check=True)
        self.assertEqual(shown.stdout, b"2,5")

    def test_the_users_variables_choose_the_language(self):
        for variables, language in CHOICES:
            with self.subTest(variables):
                texts = table(language)
                _, rows = self.shown(**variables)
                self.assertEqual(rows, [(texts["EnableTandemTrim"], texts["Off"])])


if __name__ == "__main__":
    unittest.main()
