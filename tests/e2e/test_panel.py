"""What a user sets in the panel by --set and --restore-defaults."""

import json
import unittest

from terminal_case import (
    ACTS_THAT_CHANGE,
    CHANGED,
    DEFAULTS,
    DIRECTION,
    LARGEST,
    MARGINS,
    POSITION,
    SAMPLE,
    VALID,
    TerminalCase,
    each,
    of_panel,
)


class PanelTest(TerminalCase):
    def test_a_typed_margin_changes_its_own_side_only(self):
        for side, keyword in MARGINS.items():
            with self.subTest(side=side):
                options = self.options_of("--set", "Valid=On", "--set", f"{side}={LARGEST[side]}")
                self.assertEqual(of_panel(options), DEFAULTS | {VALID: "On", keyword: str(LARGEST[side])})

    def test_every_choice_of_the_menus_can_be_made(self):
        for name, keyword, choices in (
            ("Direction", DIRECTION, ("LongEdgeFeed", "ShortEdgeFeed")),
            ("Position", POSITION, ("Left", "Center", "Right")),
        ):
            for choice in choices:
                with self.subTest(choice=choice):
                    options = self.options_of("--set", "Valid=On", "--set", f"{name}={choice}")
                    self.assertEqual(of_panel(options), DEFAULTS | {VALID: "On", keyword: choice})

    def test_the_check_box_is_clicked_only_when_its_state_differs(self):
        for stored in ("On", "Off", "Maybe"):
            for wanted in ("On", "Off"):
                with self.subTest(stored=stored, wanted=wanted):
                    options = self.options_of("-o", f"{VALID}={stored}", "--set", f"Valid={wanted}")
                    self.assertEqual(options[VALID], wanted)

    def test_a_corrected_value_is_reported_with_what_was_typed_the_new_value_and_the_range(self):
        for side, largest in LARGEST.items():
            corrected = {f"{largest + 1}": (largest, []), "9" * 20: (largest, []), "007": (7, [])}
            made = {"12.5": largest, "12,5": largest, "1a2": 12, "-5": 5, " 3": 3, "abc": 0, "": 0}
            corrected |= {typed: (value, ["--lenient"]) for typed, value in made.items()}
            for typed, (value, how) in corrected.items():
                with self.subTest(side=side, typed=typed):
                    result = self.trim("-d", "Morva", "--json", *how, "--set", "Valid=On", "--set", f"{side}={typed}")
                    self.assertEqual(json.loads(result.stdout)["settings"][MARGINS[side]], str(value))
                    self.assertRegex(result.stderr, rf'{side}: "{typed}" was typed.* {value} .*0 to {largest}\b')

    def test_a_margin_of_anything_but_digits_is_refused(self):
        for side, largest in LARGEST.items():
            for typed in ("12.7", "12,7", "1a2", "-5", "+5", " 3", "5mm", "1e1", "٣", "abc", ""):
                with self.subTest(side=side, typed=typed):
                    words = [f'--set {side}={typed}: "{typed}"', f"from 0 to {largest}", "--lenient", "nothing was sent"]
                    self.refuses("-d", "Morva", "--set", "Valid=On", "--set", f"{side}={typed}", SAMPLE, status=2, words=words)

    def test_a_value_that_is_taken_as_typed_is_not_reported(self):
        result, _ = self.prints("-d", "Morva", *each("--set", ACTS_THAT_CHANGE), SAMPLE)
        self.assertEqual(result.stderr, "")

    def test_acts_are_carried_out_from_left_to_right(self):
        acts = ["--set", "Valid=On", "--set", "Top=3", "--set", "Top=4"]
        self.assertEqual(self.options_of(*acts)[MARGINS["Top"]], "4")
        acts = ["--set", "Valid=On", "--set", "Top=12", "--set", "Valid=Off"]
        self.assertEqual(of_panel(self.options_of(*acts)), DEFAULTS | {MARGINS["Top"]: "12"})

    def test_restoring_defaults_restores_all_settings_but_the_check_box(self):
        changed = each("--set", ACTS_THAT_CHANGE)
        options = self.options_of(*changed, "--restore-defaults")
        self.assertEqual(of_panel(options), DEFAULTS | {VALID: "On"})
        options = self.options_of(*changed, "--restore-defaults", "--set", "Left=2")
        self.assertEqual(of_panel(options), DEFAULTS | {VALID: "On", MARGINS["Left"]: "2"})
        options = self.options_of("--set", "Valid=On", "--restore-defaults", *changed)
        self.assertEqual(of_panel(options), CHANGED)

    def test_setting_a_greyed_control_is_refused_and_nothing_is_sent(self):
        for act in (["--set", "Top=12"], ["--set", "Direction=ShortEdgeFeed"], ["--set", "Position=Left"]):
            for arguments in (act, [*act, "--set", "Valid=On"], ["--set", "Valid=Off", *act]):
                with self.subTest(arguments):
                    words = [act[1], "Valid is off", "--set Valid=On"]
                    self.refuses("-d", "Morva", *arguments, SAMPLE, words=words)
        words = ["--restore-defaults", "Valid is off", "--set Valid=On"]
        self.refuses("-d", "Morva", "--restore-defaults", SAMPLE, words=words)


if __name__ == "__main__":
    unittest.main()
