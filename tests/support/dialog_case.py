"""What the tests of the print dialog have in common: the dialog on a screen, and a user who sees it by accessibility."""

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
    """What `look` gives as soon as it is true; what it looks at may go meanwhile."""

    def found():
        try:
            return look()
        except Gone:
            return None

    return patience.until(found, what)


def meant(node):
    """Its name as it is meant: the toolkit gives the name of a button with a mnemonic as "_Print Print"."""
    name = node.name.replace("_", "")
    half = name[: len(name) // 2]
    return half if name == f"{half} {half}" else name


def of_pages(options):
    """Those of the options that the dialog's own pages are for."""
    return {keyword: value for keyword, value in options.items() if keyword in PAGES}


INSIDE = 12  # pixels
# The name of the entry for page ranges, and the options that the dialog's own pages are for.
RANGES = "Specify one or more page ranges"
PAGES = ("PageSize", "media", "orientation-requested", "landscape", "OutputOrder", "Collate", "number-up", "page-set")
PAGES += ("number-up-layout", "page-ranges", "copies", "Duplex", "sides")
# What "entry" stands for: where a user types.
ENTRIES = {"text", "spin button"}


class PrintDialog:
    """A running dialog as a user uses it: everything is found by its role and its name."""

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
        """All that shows now, from top to bottom."""
        return [node for window in self.program.windows() for node in window.all()]

    def look(self, role, name):
        """The thing of this role and this name, else the first one whose name or description holds this text, or none."""
        roles = ENTRIES if role == "entry" else {role}
        nodes = [node for node in self.nodes() if node.role in roles]
        named = (node for node in nodes if meant(node) == name)
        holding = (node for node in nodes if name in meant(node) or name in node.description)
        return next(named, None) or next(holding, None)

    def find(self, role, name):
        return until(lambda: self.look(role, name), f"{role} {name!r}")

    def find_live(self, role, name):
        """The thing of this role and this name, once it can be used."""

        def live():
            node = self.look(role, name)
            return node and node.has(SENSITIVE) and node

        return until(live, f"{role} {name!r} that can be used")

    def click_tab(self, title):
        """Clicks the tab of this page."""

        self.click(until(lambda: next((node for node in self.tabs() if node.name == title), None), f"the page {title!r}"))

    def wait_for_tab(self, title):
        """Waits until there is a page of this title, in front or not: the panel's is there once its printer is known."""
        until(lambda: self.has_tab(title), f"the page {title!r}")

    def has_tab(self, title):
        return any(node.name == title for node in self.tabs())

    def tabs(self):
        """All that shows in the tabs of pages."""
        return [node for tab in self.nodes() if tab.role == "page tab" for node in tab.all()]

    def page(self, title):
        """Goes to the page of this title. Tabs move while the dialog comes up, so a click can miss."""
        until(lambda: self.is_in_front(title) or self.click_tab(title), f"the page {title!r} in front")

    def look_at_page(self, title):
        """Goes to the page of this title, which may go when it is looked at."""
        until(lambda: not self.has_tab(title) or self.is_in_front(title) or self.click_tab(title), f"a look at the page {title!r}")

    def middle(self, node):
        """The middle of it on the screen."""

        def place():
            left, top, width, height = self.program.place(node)
            return width > 0 and (left + width // 2, top + height // 2)

        return until(place, "a place on the screen")

    def width(self):
        return self.program.place(self.window)[2]

    def save_picture(self, path):
        """Saves what the dialog looks like as a PNG file."""
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
        """Replaces what an entry holds."""
        self.program.replace_text(self.find_live("entry", name), text)

    def change_panel(self):
        """Sets all of the sample printer's panel as CHANGED has it."""
        self.page("Tandem Trim")
        self.check("Use Tandem Trim")
        self.choose("Image Direction", 1)
        self.choose("Print Position", 0)
        for side, keyword in MARGINS.items():
            self.type(f"{side} Margin", CHANGED[keyword])

    def go_to(self, name):
        """Clicks into an entry on the side of its label: there may be buttons at its other end."""
        entry = self.find_live("entry", name)
        x, y = self.middle(entry)
        left, _, width, _ = self.program.place(entry)
        is_label_left = self.program.place(self.find("label", name))[0] < left
        to_edge = width // 2 - INSIDE
        self.hands.click(x - to_edge if is_label_left else x + to_edge, y)

    def text(self, name):
        return self.program.text(self.find("entry", name))

    def keys(self, *names):
        """Presses keys, by the names that X gives them."""
        self.hands.press(*names)

    def is_live(self, role, name):
        return self.find(role, name).has(SENSITIVE)

    def is_in_front(self, title):
        """Whether the page of this title is in front."""
        tabs = [node for node in self.nodes() if node.role == "page tab" and node.has(SELECTED)]
        return any(title in map(meant, tab.all()) for tab in tabs)

    def wait_for_page(self, title):
        until(lambda: self.is_in_front(title), f"the page {title!r} in front")

    def answer(self, title):
        """Presses the button of this title in the question that is asked, which is the youngest window."""

        def button():
            windows = self.program.windows()
            return len(windows) > 1 and next((node for node in windows[-1].all() if meant(node) == title), None)

        self.program.press(until(button, f"a question with the answer {title!r}"))

    def shows(self, role, name):
        return self.look(role, name) is not None

    def is_checked(self, name):
        return self.find("check box", name).has(CHECKED)

    def labels(self):
        """All texts that stand on what shows now."""
        return [node.name for node in self.nodes() if node.role == "label"]

    def says(self, words):
        """Waits until a text on the screen holds these words."""
        return until(lambda: next((label for label in self.labels() if words in label), None), f"the words {words!r}")

    def choose(self, name, index):
        self.choose_by_keys(name, "Home", *["Down"] * index)

    def choose_by_keys(self, name, *keys):
        """Opens the menu of this name and goes through it by these keys."""
        self.click(until(lambda: self.look("combo box", name) or self.look_behind(name, "combo box"), f"menu {name!r}"))
        self.keys(*keys, "Return")

    def look_behind(self, label, role):
        """The thing of this role right behind a label: the toolkit gives no names to what it makes for a PPD."""
        nodes = self.nodes()
        for place, node in enumerate(nodes):
            if node.role == "label" and node.name == f"{label}:":
                return next((later for later in nodes[place:] if later.role == role), None)
        return None

    def spin(self, name, text):
        """Replaces what the box of a number holds, by the keyboard."""
        left, top, _, height = self.program.place(self.find_live("spin button", name))
        self.hands.click(left + INSIDE, top + height // 2)
        self.keys("ctrl+a", *text, "Tab")

    def select_printer(self, name):
        self.click(self.find("label", name))

    def ends(self):
        """Waits for the program's end and gives its exit status and what it said."""
        out, self.said = self.process.communicate(timeout=patience.PATIENCE)
        return self.process.returncode, out, self.said

    def close(self):
        """Ends the program if it is still there; what it said must hold no complaint of the toolkit."""
        if self.said is None:
            self.process.terminate()
            self.ends()
        found, self.said = complaints(self.said), ""
        if found:
            raise AssertionError("\n".join(["the dialog's program complained:", *found]))


class DialogCase(TerminalCase):
    """Each test has a server of its own: some stop it."""

    @classmethod
    def setUpClass(cls):
        pass

    def setUp(self):
        self.cups = PrivateCups()
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
        """A text of the toolkit's in this language."""
        return gettext.translation("gtk40", "/usr/share/locale", [language], fallback=True).gettext(text)

    def memories(self, state):
        """The file in which the next dialog for Morva finds what the last one was set to."""
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
        """Adds the printer Other, whose PPD differs from the sample by these (old, new) texts."""
        text = PPD.read_text()
        for old, new in changes:
            self.assertIn(old, text)
            text = text.replace(old, new)
        ppd = self.temporary_folder() / "other.ppd"
        ppd.write_text(text)
        self.cups.add_queue("Other", ppd)

    def see_limit(self, dialog, largest):
        """Waits until the panel shows this largest value for the top margin, and goes back to the printers."""
        dialog.page("Tandem Trim")
        dialog.says(f"(0 to {largest})")
        dialog.page("General")

    def freeze_at_other(self, dialog, see_other):
        """Freezes the server when Other is chosen, which the dialog has seen before: `see_other` waits for that."""
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
