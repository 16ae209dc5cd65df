"""The access keys of the panel's controls."""

import unittest

from dialog_case import DialogCase, title_of, until
from screen_reader import FOCUSED
from test_dialog import PAGES, SPOKEN

# The keys of the margins (top, bottom, left, right), named as in X.
KEYS = {
    "en": ("t", "b", "l", "r"),
    "de": ("o", "u", "l", "r"),
    "it": ("m", "f", "s", "d"),
    "nl": ("b", "o", "l", "r"),
    "ja": ("t", "b", "l", "r"),
    "ar": ("Arabic_ain", "Arabic_feh", "Arabic_seen", "Arabic_noon"),
}
MARGINS = {language: spoken[3:] for language, spoken in SPOKEN.items()} | {
    "en": ("Top Margin", "Bottom Margin", "Left Margin", "Right Margin"),
    "it": ("Margine superiore", "Margine inferiore", "Margine sinistro", "Margine destro"),
    "nl": ("Bovenmarge", "Ondermarge", "Linkermarge", "Rechtermarge"),
}
SWITCH = {"en": "Use Tandem Trim", "it": "Usa Tandem Trim", "nl": "Tandem Trim gebruiken"} | {
    language: spoken[0] for language, spoken in SPOKEN.items()
}


class DialogKeysTest(DialogCase):
    def leads_to(self, dialog, key, margin):
        """Presses the key; returns whether its margin has the focus. A slow machine may lose the first key of another keyboard layout."""
        dialog.keys(f"alt+{key}")
        return dialog.find("entry", margin).has(FOCUSED)

    def test_a_margins_key_works_whichever_page_was_shown_before(self):
        for language, keys in KEYS.items():
            dialog = self.dialog("-d", "Morva", LANG="C.UTF-8", LANGUAGE=language)
            dialog.page(PAGES[language])
            dialog.check(SWITCH[language])
            others = [title for title in map(title_of, dialog.tabs()) if title and title != PAGES[language]]
            for came_from, text in ((others[0], "3"), (others[1], "4")):
                dialog.page(came_from)
                dialog.page(PAGES[language])
                for key, margin in zip(keys, MARGINS[language], strict=True):
                    with self.subTest(language, came_from=came_from, margin=margin):
                        until(lambda: self.leads_to(dialog, key, margin), f"the focus in {margin}")  # noqa: B023
                        dialog.keys("ctrl+a", text)
                        until(lambda: dialog.text(margin) == text, f"{text} in {margin}")  # noqa: B023
            dialog.close()

    def test_the_switch_and_cancel_have_keys_too(self):
        for language, (key, cancel) in {"de": ("t", "a"), "it": ("t", "n"), "nl": ("t", "a")}.items():
            with self.subTest(language):
                dialog = self.dialog("-d", "Morva", LANG="C.UTF-8", LANGUAGE=language)
                dialog.page(PAGES[language])
                dialog.find_live("check box", SWITCH[language])
                dialog.keys(f"alt+{key}")
                until(lambda: dialog.is_checked(SWITCH[language]), "the switch on")  # noqa: B023
                dialog.keys(f"alt+{cancel}")
                self.assertEqual(dialog.ends()[0], 0)


if __name__ == "__main__":
    unittest.main()
