"""Shared by the tests of the print dialog: the dialog on a screen, and a user who reads it through accessibility."""

import gettext
import os
import re
import subprocess

import hands
import patience
import surroundings
from private_cups import PrivateCups
from screen_reader import CHECKED, SELECTED, SENSITIVE, Gone, Program
from terminal_case import CHANGED, MARGINS, PPD, PROGRAM, SAMPLE, TerminalCase, complaints


def until(look, what):
    """Calls `look` until its result is true, and returns it. A node that is gone counts as false."""

    def found():
        try:
            return look()
        except Gone:
            return None

    return patience.until(found, what)


def title_of(node):
    """The title that a user reads: the toolkit names a button with a mnemonic "_Print Print"."""
    name = node.name.replace("_", "")
    half = name[: len(name) // 2]
    return half if name == f"{half} {half}" else name


def of_pages(options):
    """The options that belong to the dialog's own pages."""
    return {keyword: value for keyword, value in options.items() if keyword in PAGES}


INSIDE = 12  # pixels from the edge of an entry to a click in it
RANGES = "Specify one or more page ranges"  # the name of the entry for page ranges
# The options of the dialog's own pages.
PAGES = ("PageSize", "media", "orientation-requested", "landscape", "OutputOrder", "Collate", "number-up", "page-set")
PAGES += ("number-up-layout", "page-ranges", "copies", "Duplex", "sides")
# The roles that look() finds as "entry": those of controls in which a user types.
ENTRIES = {"text", "spin button"}


class PrintDialog:
    """A running dialog as a user operates it: controls are found by role and name."""

    def __init__(self, command, environment, content=b""):
        pipes = dict.fromkeys(("stdin", "stdout", "stderr"), subprocess.PIPE)
        self.process = subprocess.Popen(command, env=environment, text=True, **pipes)
        self.said = None
        self.hands = hands.of_this_screen()
        with self.process.stdin as pipe:
            pipe.buffer.write(content)
        self.process.stdin = None
        self.program = until(self._program, "the dialog")
        self.window = until(self.program.windows, "the dialog's window")[0]

    def _program(self):
        if self.process.poll() is not None:
            raise AssertionError(f"the program ended: {self.process.communicate()}")
        return Program.of_process(self.process.pid)

    def nodes(self):
        """All visible nodes, from top to bottom."""
        return [node for window in self.program.windows() for node in window.all()]

    def look(self, role, name):
        """The node of this role with this name, else the first whose name contains it, else whose description does, else None."""
        roles = ENTRIES if role == "entry" else {role}
        nodes = [node for node in self.nodes() if node.role in roles]
        named = (node for node in nodes if title_of(node) == name)
        containing = (node for node in nodes if name in title_of(node))
        described = (node for node in nodes if name in node.description)
        return next(named, None) or next(containing, None) or next(described, None)

    def find(self, role, name):
        return until(lambda: self.look(role, name), f"{role} {name!r}")

    def find_live(self, role, name):
        """Waits until the node of this role and name is sensitive, and returns it."""

        def live():
            node = self.look(role, name)
            return node and node.has(SENSITIVE) and node

        return until(live, f"{role} {name!r} that can be used")

    def click_tab(self, title):
        self.click(until(lambda: next((node for node in self.tabs() if node.name == title), None), f"the page {title!r}"))

    def wait_for_tab(self, title):
        """Waits until there is a page of this title, in front or not. The panel's page appears once its printer is known."""
        until(lambda: self.has_tab(title), f"the page {title!r}")

    def has_tab(self, title):
        return any(node.name == title for node in self.tabs())

    def tabs(self):
        """All visible nodes in the tabs of pages."""
        return [node for tab in self.nodes() if tab.role == "page tab" for node in tab.all()]

    def page(self, title):
        """Goes to the page of this title. Tabs move while the dialog appears, so a click can miss and is repeated."""
        until(lambda: self.is_in_front(title) or self.click_tab(title), f"the page {title!r} in front")

    def look_at_page(self, title):
        """Goes to the page of this title, which may disappear as soon as it is in front."""
        until(lambda: not self.has_tab(title) or self.is_in_front(title) or self.click_tab(title), f"a look at the page {title!r}")

    def middle(self, node):
        """The node's middle on the screen."""

        def place():
            left, top, width, height = self.program.place(node)
            return width > 0 and (left + width // 2, top + height // 2)

        return until(place, "a place on the screen")

    def width(self):
        return self.program.place(self.window)[2]

    def save_picture(self, path):
        """Saves a picture of the dialog as a PNG file."""
        path.parent.mkdir(parents=True, exist_ok=True)
        left, top, width, height = self.program.place(self.window)
        of_x = ("scrot", "--overwrite", "--autoselect", f"{left},{top},{width},{height}")
        of_wayland = ("grim", "-g", f"{left},{top} {width}x{height}")
        command = of_wayland if "WAYLAND_DISPLAY" in os.environ else of_x
        subprocess.run([*command, path], check=True, timeout=patience.PATIENCE)

    def click(self, node):
        self.hands.click(*self.middle(node))

    def press(self, name):
        """Presses the button of this name."""
        self.program.press(self.find_live("push button", name))

    def check(self, name):
        self.click(self.find("check box", name))

    def type(self, name, text):
        """Replaces the text of an entry."""
        self.program.replace_text(self.find_live("entry", name), text)

    def change_panel(self):
        """Sets the sample printer's panel to the values in CHANGED."""
        self.page("Tandem Trim")
        self.check("Use Tandem Trim")
        self.choose("Image Direction", 1)
        self.choose("Print Position", 0)
        for side, keyword in MARGINS.items():
            self.type(f"{side} Margin", CHANGED[keyword])

    def go_to(self, name):
        """Clicks into an entry near its label, as the other end may have buttons."""
        entry = self.find_live("entry", name)
        x, y = self.middle(entry)
        left, _, width, _ = self.program.place(entry)
        is_label_left = self.program.place(self.find("label", name))[0] < left
        to_edge = width // 2 - INSIDE
        self.hands.click(x - to_edge if is_label_left else x + to_edge, y)

    def text(self, name):
        return self.program.text(self.find("entry", name))

    def keys(self, *names):
        """Presses keys, named as in X."""
        self.hands.press(*names)

    def is_live(self, role, name):
        return self.find(role, name).has(SENSITIVE)

    def is_in_front(self, title):
        tabs = [node for node in self.nodes() if node.role == "page tab" and node.has(SELECTED)]
        return any(title in map(title_of, tab.all()) for tab in tabs)

    def wait_for_page(self, title):
        until(lambda: self.is_in_front(title), f"the page {title!r} in front")

    def answer(self, title):
        """Presses the button of this title in the newest window, which asks a question."""

        def button():
            windows = self.program.windows()
            return len(windows) > 1 and next((node for node in windows[-1].all() if title_of(node) == title), None)

        self.program.press(until(button, f"a question with the answer {title!r}"))

    def shows(self, role, name):
        return self.look(role, name) is not None

    def is_checked(self, name):
        return self.find("check box", name).has(CHECKED)

    def labels(self):
        """The texts of all visible labels."""
        return [node.name for node in self.nodes() if node.role == "label"]

    def says(self, words):
        """Waits until a label contains these words, and returns its text."""
        return until(lambda: next((label for label in self.labels() if words in label), None), f"the words {words!r}")

    def choose(self, name, index):
        self.choose_by_keys(name, "Home", *["Down"] * index)

    def choose_by_keys(self, name, *keys):
        """Opens the menu of this name, moves in it by these keys and takes the choice."""
        self.click(self._menu(name))
        self.keys(*keys, "Return")

    def chosen(self, page, name):
        """The choice that the menu of this name shows, on the page of this title."""
        self.page(page)
        # The first label is empty.
        return [node.name for node in self._menu(name).all() if node.role == "label"][-1]

    def _menu(self, name):
        return until(lambda: self.look("combo box", name) or self.look_past(name, "combo box"), f"menu {name!r}")

    def look_past(self, label, role):
        """The first node of this role after a label. Finds the controls that the toolkit makes for a PPD, which have no names."""
        nodes = self.nodes()
        for place, node in enumerate(nodes):
            if node.role == "label" and node.name == f"{label}:":
                return next((later for later in nodes[place:] if later.role == role), None)
        return None

    def spin(self, name, text):
        """Replaces the number in a spin button, by the keyboard."""
        left, top, _, height = self.program.place(self.find_live("spin button", name))
        self.hands.click(left + INSIDE, top + height // 2)
        self.keys("ctrl+a", *text, "Tab")

    def select_printer(self, name):
        self.click(self.find("label", name))

    def ends(self):
        """Waits for the program's end and returns its exit status, output and error output."""
        out, self.said = self.process.communicate(timeout=patience.PATIENCE)
        return self.process.returncode, out, self.said

    def close(self):
        """Ends the program if it still runs. Fails if its error output contains complaints of the toolkit."""
        if self.said is None:
            self.process.terminate()
            self.ends()
        found, self.said = complaints(self.said), ""
        if found:
            raise AssertionError("\n".join(["the dialog's program complained:", *found]))


class DialogCase(TerminalCase):
    """Each test has its own print server, as some tests stop it."""

    @classmethod
    def setUpClass(cls):
        pass

    def setUp(self):
        self.cups = PrivateCups(self.server_settings)
        self.addCleanup(self.cups.stop)
        self.cups.add_queue("Morva", PPD)

    def run_command(self, *command):
        subprocess.run(command, env=self.environment(), check=True, capture_output=True)

    def dialog(self, *arguments, documents=(SAMPLE,), content=b"", program=PROGRAM, **variables):
        environment = self.environment(**surroundings.of_this_test(surroundings.SCREEN)) | variables
        shown = PrintDialog([program, *arguments, *documents], environment, content)
        self.addCleanup(shown.close)
        return shown

    def of_gtk(self, text, language):
        """The toolkit's translation of a text."""
        return gettext.translation("gtk40", "/usr/share/locale", [language], fallback=True).gettext(text)

    def remembered_file(self, state):
        """The file with the settings that the next dialog for Morva starts with."""
        host, port = self.cups.address
        return state / f"tandem-trim/Morva@{host}:{port}.conf"

    def printed(self, dialog, printer="Morva"):
        """The record of the job that the dialog sent."""
        status, out, said = dialog.ends()
        self.assertEqual(status, 0, out + said)
        confirmation = re.search(rf"job (\d+) on {printer}: (\d+) of \2 options confirmed", out)
        self.assertIsNotNone(confirmation, out + said)
        self.cups.wait_for_jobs()
        (record,) = [record for record in self.cups.records() if record.job == int(confirmation[1])]
        return record

    def panel(self, *arguments, **variables):
        dialog = self.dialog("-d", "Morva", *arguments, **variables)
        dialog.page("Tandem Trim")
        return dialog

    def live_panel(self, *arguments, **variables):
        dialog = self.panel(*arguments, **variables)
        dialog.check("Use Tandem Trim")
        return dialog

    def add_other(self, *changes):
        """Adds the printer Other, whose PPD is the sample's with these (old, new) texts replaced."""
        text = PPD.read_text()
        for old, new in changes:
            self.assertIn(old, text)
            text = text.replace(old, new)
        ppd = self.temporary_folder() / "other.ppd"
        ppd.write_text(text)
        self.cups.add_queue("Other", ppd)

    def see_limit(self, dialog, largest):
        """Waits until the panel shows this limit of the top margin, and goes back to the printers."""
        dialog.page("Tandem Trim")
        dialog.says(f"(0 to {largest})")
        dialog.page("General")

    def freeze_at_other(self, dialog, see_other):
        """Shows Other, waits with `see_other` until the dialog knows it, goes back to Morva, freezes the server and chooses Other again."""
        dialog.select_printer("Other")
        see_other()
        dialog.select_printer("Morva")
        self.see_limit(dialog, 20)
        self.cups.freeze()
        self.addCleanup(self.cups.thaw)
        dialog.select_printer("Other")
        until(lambda: not dialog.look("label", "(0 to 20)"), "the panel of the first printer to go")

    def assert_nothing_was_sent(self):
        self.assertEqual(self.cups.jobs(), [])
        self.assertEqual(self.cups.records(), [])
