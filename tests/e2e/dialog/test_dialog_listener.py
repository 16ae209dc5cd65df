"""What a user hears from the panel's page: as much as from the toolkit's own controls, in the order on the screen."""

import dataclasses
import pathlib
import unittest

from dialog_case import INSIDE, DialogCase, title_of, until
from listener import Listener, is_heard, words
from screen_reader import FOCUSED
from terminal_case import MARGINS, VALID
from test_dialog import PAGES, SPOKEN

PEER = pathlib.Path(__file__).with_name("peer_page.py")
TOP = "Top Margin:"
MENU = "Print Position:"
SWITCH = "Use Tandem Trim"
NUMBER = "spin button"
SAME_ROW = 16  # the largest vertical distance, in pixels, between the middles of controls in a row
CONTROLS = 18  # the number of controls on the page, with a warning shown, and below the page in the dialog


def text(value):
    return "text", NUMBER, words(TOP, value)


def described(value):
    return "description", NUMBER, words(TOP, value)


@dataclasses.dataclass
class Act:
    """What a user does: `do` is keys or a function. `ends` is the last thing heard from either page, `more` is heard only from the panel;
    `of_panel` marks what the toolkit's controls cannot do."""

    what: str
    do: object
    ends: tuple
    more: tuple = ()
    of_panel: bool = False


def plus(dialog):
    """Clicks the button at the right end of the box."""
    left, top, width, height = dialog.program.place(dialog.find(NUMBER, TOP))
    dialog.hands.click(left + width - INSIDE, top + height // 2)


ACTS = (
    Act("goes to a number", ("Tab",), ("focused", NUMBER, words(TOP, "12"))),
    Act("types a digit", ("ctrl+a", "7"), text("7")),
    Act("undoes it", ("ctrl+z",), text(""), (text("12"), described("12 mm"))),
    Act("types beyond the limit and leaves the box", ("ctrl+a", "9", "9", "Tab"), ("focused", NUMBER, words("Bottom Margin:", "5")), (text("20"), described("20 mm"))),
    Act("goes back", ("shift+Tab",), ("focused", NUMBER, words(TOP, "20"))),
    Act("steps down", ("Down",), text("19"), (described("19 mm"),)),
    Act("steps down by a page", ("Page_Down",), text("9"), (described("9 mm"),)),
    Act("goes to the limit", ("ctrl+Page_Down",), text("0"), (described("0 mm"),)),
    Act("clicks plus", plus, text("1"), (described("1 mm"),)),
    Act("opens a menu", ("shift+Tab", "space"), ("focused", "list item", words()), (("focused", "list item", words("Center")),)),
    Act("goes to the last item", ("End",), ("selected", "list item", words()), (("focused", "list item", words("Right")),)),
    Act("chooses it", ("Return",), ("focused", "push button", words()), (("description", "push button", words(MENU, "Right")),)),
    Act("types the first letter of a title", ("l",), ("description", "push button", words(MENU, "Left")), of_panel=True),
    Act("turns the switch off", ("shift+Tab", "shift+Tab", "space"), ("not checked", "check box", words(SWITCH))),
    Act("turns it on", ("space",), ("checked", "check box", words(SWITCH))),
    Act("restores the defaults", lambda dialog: dialog.press("Restore Defaults"), text("5")),
)


class DialogListenerTest(DialogCase):
    def heard_of(self, dialog, is_panel):
        """Does each act, and returns what is heard from it."""
        dialog.find_live(NUMBER, TOP)
        dialog.go_to(TOP)
        dialog.keys("shift+Tab")
        until(lambda: any(node.has(FOCUSED) and node.role == "push button" for node in dialog.nodes()), "the menu")
        listener = Listener(dialog.program)
        heard = {}
        for act in ACTS:
            if act.of_panel and not is_panel:
                continue
            needed = (act.ends, *(act.more if is_panel else ()))
            listener.hears()
            act.do(dialog) if callable(act.do) else dialog.keys(*act.do)
            said = heard[act.what] = set()
            until(lambda: said.update(listener.hears()) or all(is_heard(one, said) for one in needed), f"{needed} of {act.what!r}")  # noqa: B023
            if is_panel:
                top = dialog.find(NUMBER, TOP)
                self.assertEqual(listener.texts[top.path], dialog.program.text(top), act.what)
        return heard

    def test_a_user_hears_as_much_from_the_panel_as_from_the_toolkits_own_controls(self):
        peer = self.dialog(str(PEER), documents=(), program="/usr/bin/python3")
        least = self.heard_of(peer, False)
        peer.process.terminate()
        heard = self.heard_of(self.panel("-o", f"{VALID}=On {MARGINS['Top']}=12"), True)
        for what, said in least.items():
            with self.subTest(what):
                missing = [one for one in said if one[2] and not is_heard(one, heard[what])]
                self.assertEqual(missing, [], heard[what])

    def go_back_to_presets(self, dialog):
        """Moves the focus back to the presets' control, whose name ends with a colon and the preset."""
        while not any(node.has(FOCUSED) and ": " in node.name for node in dialog.nodes()):
            now = [node.path for node in dialog.nodes() if node.has(FOCUSED)]
            dialog.keys("shift+Tab")
            until(lambda: [node.path for node in dialog.nodes() if node.has(FOCUSED)] not in ([], now), "the previous stop")  # noqa: B023

    def stops(self, dialog):
        """The paths of the controls that Tab visits, each once, beginning with the one that has the focus."""
        found = []
        while (now := until(lambda: [node.path for node in dialog.nodes() if node.has(FOCUSED)], "the focus")[0]) not in found:
            found.append(now)
            dialog.keys("Tab")
            until(lambda: [node.path for node in dialog.nodes() if node.has(FOCUSED)] not in ([], [now]), "the next stop")  # noqa: B023
        return found

    def as_seen(self, dialog, nodes, is_from_right):
        """The paths of these nodes from top to bottom and, within a row, in reading direction."""
        places = {node.path: dialog.program.place(node) for node in nodes}

        def middle(path):
            _, top, _, height = places[path]
            return top + height / 2

        rows = []
        for path in sorted(places, key=middle):
            if not rows or middle(path) - middle(rows[-1][0]) > SAME_ROW:
                rows.append([])
            rows[-1].append(path)
        return [path for row in rows for path in sorted(row, key=lambda path: places[path][0], reverse=is_from_right)]

    def test_the_keyboard_and_a_screen_reader_follow_the_order_on_the_screen(self):
        for language, switch in {"en": SWITCH, "de": SPOKEN["de"][0], "ar": SPOKEN["ar"][0]}.items():
            dialog = self.dialog("-d", "Morva", "-o", f"{MARGINS['Left']}=18", LANG="C.UTF-8", LANGUAGE=language)
            dialog.page(PAGES.get(language, "Tandem Trim"))
            dialog.check(switch)
            until(lambda: any(node.role == "alert" for node in dialog.nodes()), "the warning")  # noqa: B023
            self.go_back_to_presets(dialog)
            visited = self.stops(dialog)
            # Tab also stops at the toolkit's frame around the pages.
            controls = [node for node in dialog.nodes() if node.path in visited and node.role != "panel"]
            names = {node.path: title_of(node) or node.role for node in controls}
            seen = [names[path] for path in self.as_seen(dialog, controls, language == "ar")]
            with self.subTest(language, by="the keyboard"):
                self.assertEqual([names[path] for path in visited if path in names], seen)
            with self.subTest(language, by="a reader"):
                self.assertEqual([names[node.path] for node in controls], seen)
            self.assertEqual(len(seen), CONTROLS, f"CONTROLS must be the number of these: {seen}")
            with self.subTest(language, by="their names"):
                # The last two controls are the toolkit's.
                for name in [node.name for node in controls][:-2]:
                    self.assertRegex(name, r"^[^_]+$")
            dialog.close()


if __name__ == "__main__":
    unittest.main()
